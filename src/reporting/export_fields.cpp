#include "reporting/export_fields.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>

#include "platform/code_page.h"

namespace zorvel {

std::vector<const ReportColumn*> ColumnsOfFields(const Report& report) {
    const std::vector<std::string>& fields = report.rows().fields();
    std::vector<const ReportColumn*> shown(fields.size(), nullptr);
    for (const ReportColumn& column : report.definition().columns) {
        const auto found = std::find_if(fields.begin(), fields.end(), [&](const std::string& field) {
            return EqualIgnoringCase(field, column.field);
        });
        const auto field = static_cast<std::size_t>(found - fields.begin());
        if (field < fields.size() && shown[field] == nullptr) shown[field] = &column;
    }
    return shown;
}

std::vector<std::string> MadeUnique(std::vector<std::string> names) {
    std::set<std::string> taken;
    for (std::string& name : names) {
        std::string attempt = name;
        for (int number = 2; !taken.insert(UpperCase(attempt)).second; ++number)
            attempt = name + '_' + std::to_string(number);
        name = attempt;
    }
    return names;
}

std::vector<std::string> FieldKeys(const Report& report) {
    return MadeUnique(report.rows().fields());
}

std::vector<std::string> FieldHeadings(const Report& report) {
    std::vector<std::string> headings = FieldKeys(report);
    const std::vector<const ReportColumn*> columns = ColumnsOfFields(report);
    // How often each text is used, a field's key and its own heading being one use when they are the same.
    std::map<std::string, int> uses;
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const std::string key = UpperCase(headings[i]);
        ++uses[key];
        if (columns[i] == nullptr) continue;
        const std::string heading = UpperCase(columns[i]->heading);
        if (heading != key) ++uses[heading];
    }
    for (std::size_t i = 0; i < headings.size(); ++i) {
        if (columns[i] == nullptr || columns[i]->heading.empty()) continue;
        if (uses[UpperCase(columns[i]->heading)] == 1) headings[i] = columns[i]->heading;
    }
    return headings;
}

}  // namespace zorvel
