#include "reporting/report.h"

#include <utility>

#include "reporting/report_values.h"
#include "shell/formats.h"

namespace zorvel {

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
    add("Tree", facts_.tree);
    add("Container", facts_.container);
    add("Zorvelrun", facts_.captured);
    add("Comments", facts_.comment);
    add("Order", facts_.order);
    add("Left out", facts_.excluded);
    return lines;
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
