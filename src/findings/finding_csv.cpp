// Findings as comma-separated values.
#include <array>

#include "database/import_record.h"
#include "findings/finding_list.h"
#include "shell/csv_writer.h"

namespace zorvel {
namespace {

constexpr std::array<std::string_view, 14> kHeadings = {
    "Severity", "Code",  "What",         "Full Name",  "Where", "Target", "Source",
    "Reach",    "Users", "Workstations", "Containers", "State", "Reason", "Until"};

}  // namespace

void WriteFindingsCsv(const FindingList& list, OutputFile& file, const AskInterrupted& ask) {
    const Findings& findings = list.findings;
    const FindingTable& table = findings.table();
    // A column of its own says of the rows that their import was not completed.
    const bool marked = findings.facts().incomplete;
    CsvWriter writer(file);
    for (const std::string_view heading : kHeadings)
        writer.Write(heading);
    if (marked) writer.Write(kImportNotCompleted);
    writer.EndRecord();
    InterruptionPoint point(ask);
    std::string text;
    const auto write_text = [&](PathTexts::Text kept) {
        text.clear();
        table.texts().AppendTo(text, kept);
        writer.Write(text);
    };
    for (const std::uint32_t row : list.rows) {
        point.Pass();
        const Finding& finding = table[row];
        const FindingRule& rule = table.RuleOf(row);
        const FindingApplication& application = table.ApplicationOf(row);
        writer.Write(SeverityText(rule.severity));
        writer.Write(rule.code);
        writer.Write(rule.what);
        writer.Write(application.full_name);
        writer.Write(table.PlaceOf(row));
        write_text(finding.target);
        write_text(finding.source);
        writer.Write(ReachText(application.reach));
        writer.Write(std::to_string(application.reach.users));
        writer.Write(std::to_string(application.reach.workstations));
        writer.Write(std::to_string(application.reach.containers));
        writer.Write(StateText(findings.states()[row]));
        const std::optional<std::size_t> entry = findings.states().EntryOf(row);
        const AcceptedFinding* const accepted = entry ? &findings.accepted()[*entry] : nullptr;
        writer.Write(accepted == nullptr ? std::string_view() : accepted->reason);
        writer.Write(accepted == nullptr || !accepted->until ? std::string() : DateText(*accepted->until));
        if (marked) writer.Write("yes");
        writer.EndRecord();
    }
}

}  // namespace zorvel
