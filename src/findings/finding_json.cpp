// Findings as a JSON text (RFC 8259), one a line.
#include "findings/finding_list.h"
#include "shell/json_writer.h"

namespace zorvel {
namespace {

class FindingJson {
  public:
    FindingJson(const FindingList& list, OutputFile& file)
        : list_(list), findings_(list.findings), table_(list.findings.table()), file_(file), writer_(file) {}

    void Write(const AskInterrupted& ask) {
        const FindingFacts& facts = findings_.facts();
        file_.Write("{\n");
        Text("dataset", facts.dataset, ",\n");
        Text("tree", facts.tree, ",\n");
        Text("captured", facts.captured, ",\n");
        Text("generated", list_.generated, ",\n");
        writer_.WriteKey("import completed");
        file_.Write(facts.incomplete ? "false" : "true");
        file_.Write(",\n");
        WriteCounts();
        WriteAccepted();
        WriteNotes();
        WriteFindings(ask);
        file_.Write("}\n");
    }

  private:
    void Text(std::string_view key, std::string_view text, std::string_view behind) {
        writer_.WriteKey(key);
        writer_.Write(text);
        file_.Write(behind);
    }
    void Number(std::string_view key, std::int64_t number, std::string_view behind) {
        writer_.WriteKey(key);
        file_.Write(std::to_string(number));
        file_.Write(behind);
    }

    void WriteCounts() {
        const FindingCounts counts = CountsOf(findings_, list_.rows);
        writer_.WriteKey("counts");
        file_.Write('{');
        Number("all", static_cast<std::int64_t>(counts.all), "");
        const auto each = [&](const auto& numbers, const auto& names) {
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                file_.Write(", ");
                Number(names[i], static_cast<std::int64_t>(numbers[i]), "");
            }
        };
        each(counts.severities, kSeverityTexts);
        each(counts.states, kFindingStates);
        file_.Write("},\n");
    }

    void WriteAccepted() {
        writer_.WriteKey("accepted");
        file_.Write('[');
        for (std::size_t i = 0; i < findings_.accepted().size(); ++i) {
            const AcceptedFinding& accepted = findings_.accepted()[i];
            file_.Write(i == 0 ? "\n{" : ",\n{");
            Text("code", accepted.code, ", ");
            Text("application", accepted.application, ", ");
            if (accepted.target) Text("target", *accepted.target, ", ");
            WriteReason(accepted);
            Number("line", static_cast<std::int64_t>(accepted.line), ", ");
            Number("matches", static_cast<std::int64_t>(findings_.states().covered()[i]), ", ");
            Text("use", findings_.UseOf(i), "}");
        }
        file_.Write(findings_.accepted().empty() ? "],\n" : "\n],\n");
    }
    void WriteReason(const AcceptedFinding& accepted) {
        Text("reason", accepted.reason, ", ");
        if (accepted.until) Text("until", DateText(*accepted.until), ", ");
        if (!accepted.by.empty()) Text("by", accepted.by, ", ");
    }

    void WriteNotes() {
        writer_.WriteKey("notes");
        file_.Write('[');
        std::string_view separator;
        for (const std::string& note : findings_.Notes()) {
            file_.Write(separator);
            writer_.Write(note);
            separator = ", ";
        }
        file_.Write("],\n");
    }

    void WriteFindings(const AskInterrupted& ask) {
        writer_.WriteKey("findings");
        file_.Write('[');
        InterruptionPoint point(ask);
        std::string_view before = "\n{";
        for (const std::uint32_t row : list_.rows) {
            point.Pass();
            file_.Write(before);
            WriteFinding(row);
            before = ",\n{";
        }
        file_.Write("\n]\n");
    }
    void WriteFinding(std::size_t row) {
        const FindingRule& rule = table_.RuleOf(row);
        const FindingApplication& application = table_.ApplicationOf(row);
        Text("severity", SeverityText(rule.severity), ", ");
        Text("code", rule.code, ", ");
        Text("what", rule.what, ", ");
        Text("application", application.full_name, ", ");
        Text("where", table_.PlaceOf(row), ", ");
        Text("target", table_.TargetOf(row), ", ");
        Text("source", table_.SourceOf(row), ", ");
        Number("users", application.reach.users, ", ");
        Number("workstations", application.reach.workstations, ", ");
        Number("containers", application.reach.containers, ", ");
        if (const std::optional<std::size_t> entry = findings_.states().EntryOf(row))
            WriteReason(findings_.accepted()[*entry]);
        Text("state", StateText(findings_.states()[row]), ", ");
        Text("fingerprint", FingerprintOf(table_, row), "}");
    }

    const FindingList& list_;
    const Findings& findings_;
    const FindingTable& table_;
    OutputFile& file_;
    JsonWriter writer_;
};

}  // namespace

void WriteFindingsJson(const FindingList& list, OutputFile& file, const AskInterrupted& ask) {
    FindingJson(list, file).Write(ask);
}

}  // namespace zorvel
