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
    const std::vector<std::string> keys = FieldKeys(report);
    const std::vector<const ReportColumn*> columns = ColumnsOfFields(report);
    std::vector<std::string> headings = keys;
    for (std::size_t i = 0; i < headings.size(); ++i)
        if (columns[i] != nullptr && !columns[i]->heading.empty()) headings[i] = columns[i]->heading;
    // Where two are the same, fields get their keys back, which differ; each round settles one at least.
    for (bool settled = false; !settled;) {
        settled = true;
        std::map<std::string, int> uses;
        for (const std::string& heading : headings)
            ++uses[UpperCase(heading)];
        for (std::size_t i = 0; i < headings.size(); ++i) {
            if (headings[i] == keys[i] || uses[UpperCase(headings[i])] == 1) continue;
            headings[i] = keys[i];
            settled = false;
        }
    }
    return headings;
}

}  // namespace zorvel
