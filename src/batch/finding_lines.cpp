#include "batch/finding_lines.h"

#include "batch/field.h"

namespace zorvel {

void WriteFindingLines(const FindingList& list, OutputFile& file, const AskInterrupted& ask) {
    const FindingTable& table = list.findings.table();
    InterruptionPoint point(ask);
    const auto field = [&file](std::string_view text) {
        file.Write(Field(text));
        file.Write('\t');
    };
    for (const std::uint32_t row : list.rows) {
        point.Pass();
        field(SeverityText(table.RuleOf(row).severity));
        field(table.RuleOf(row).code);
        field(table.ApplicationOf(row).full_name);
        field(table.PlaceOf(row));
        field(table.TargetOf(row));
        field(table.SourceOf(row));
        field(ReachText(table.ApplicationOf(row).reach));
        file.Write(StateText(list.findings.states()[row]));
        file.Write('\n');
    }
    file.Write(CountsText(CountsOf(list.findings, list.rows)));
    file.Write('\n');
}

}  // namespace zorvel
