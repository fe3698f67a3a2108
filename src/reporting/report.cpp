#include "reporting/report.h"

#include <algorithm>
#include <utility>

#include "database/import_record.h"
#include "reporting/report_values.h"
#include "shell/formats.h"

namespace zorvel {

std::string ReportFacts::ImportNote() const {
    if (incomplete.empty()) return {};
    std::string note(kImportNotCompleted);
    if (incomplete.front() == dataset) return note;
    for (const std::string& name : incomplete)
        note += (&name == &incomplete.front() ? ": " : ", ") + name;
    return note;
}

Report::Report(ReportDefinition definition, ReportFacts facts, const Database& database,
               const std::string& query, const AskInterrupted& ask)
    : definition_(std::move(definition)),
      facts_(std::move(facts)),
      rows_(database, definition_, query, ask) {}

std::vector<FactLine> Report::FactLines() const {
    std::vector<FactLine> lines;
    const auto add = [&lines](const char* name, const std::string& value) {
        if (!value.empty()) lines.push_back({name, value});
    };
    add("Dataset", facts_.dataset);
    add("Import", facts_.ImportNote());
    add("Tree", facts_.tree);
    add("Container", facts_.container);
    add("Zorvelrun", facts_.captured);
    add("Comments", facts_.comment);
    add("Findings", facts_.findings);
    add("Order", facts_.order);
    add("Left out", facts_.excluded);
    return lines;
}

bool Report::IsOfIncomplete(std::size_t row) const {
    const auto is_incomplete = [this](std::string_view dataset) {
        return std::find(facts_.incomplete.begin(), facts_.incomplete.end(), dataset) !=
               facts_.incomplete.end();
    };
    if (is_incomplete(facts_.dataset)) return true;
    const std::vector<std::string>& fields = rows_.fields();
    const auto name = std::find(fields.begin(), fields.end(), "DBName");
    return name != fields.end() &&
           is_incomplete(rows_.Value(row, static_cast<std::size_t>(name - fields.begin())));
}

std::string Report::Heading(std::size_t group) const {
    const RowGroup& rows = rows_.groups()[group];
    return DisplayText(rows_.Expand(definition_.groups[rows.level].heading, rows.begin));
}

std::string Report::Note(std::size_t group) const {
    const RowGroup& rows = rows_.groups()[group];
    return DisplayText(rows_.Expand(definition_.groups[rows.level].note, rows.begin));
}

std::vector<std::string> Report::Totals() const {
    std::vector<std::string> texts;
    for (std::size_t total = 0; total < definition_.totals.size(); ++total)
        texts.push_back(TotalText(total, rows_.Total(total)));
    return texts;
}

std::vector<std::string> Report::GroupTotals(std::size_t group) const {
    std::vector<std::string> texts;
    for (std::size_t total = 0; total < definition_.totals.size(); ++total) {
        if (rows_.groups()[group].level < definition_.totals[total].levels)
            texts.push_back(TotalText(total, rows_.GroupTotal(group, total)));
    }
    return texts;
}

std::string Report::TotalText(std::size_t total, std::int64_t number) const {
    return DisplayText(definition_.totals[total].heading) + ' ' + GroupedOrZero(number);
}

}  // namespace zorvel
