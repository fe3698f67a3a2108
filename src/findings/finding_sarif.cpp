// Findings as SARIF 2.1.0 (OASIS, Static Analysis Results Interchange Format).
#include <algorithm>
#include <unordered_map>
#include <utility>

#include "findings/finding_list.h"
#include "platform/code_page.h"
#include "platform/hex.h"
#include "platform/user_interface.h"
#include "shell/json_writer.h"

namespace zorvel {
namespace {

constexpr const char* kSchema = "https://json.schemastore.org/sarif-2.1.0.json";

// What the standard, and those who show it, make of a severity.
struct SarifSeverity {
    std::string_view level;
    std::string_view score;  // 0.0 to 10.0, by which code hosts sort
};
constexpr std::array<SarifSeverity, kSeverityTexts.size()> kSeverities = {
    {{"error", "9.5"}, {"error", "8.0"}, {"warning", "5.0"}, {"note", "2.0"}}};

const SarifSeverity& SarifOf(Severity severity) {
    return kSeverities.at(static_cast<std::size_t>(severity));
}

// The naming components of a dotted name, the root's first.
std::vector<std::string> FromTheRoot(std::string_view dotted) {
    std::vector<std::string> parts(1);
    for (std::size_t at = 0; at < dotted.size(); ++at) {
        if (dotted[at] == '\\' && at + 1 < dotted.size() && dotted[at + 1] == '.') {
            parts.back() += dotted[++at];
        } else if (dotted[at] == '.') {
            parts.emplace_back();
        } else {
            parts.back() += dotted[at];
        }
    }
    std::reverse(parts.begin(), parts.end());
    return parts;
}

// A name as a component of a relative reference (RFC 3986).
std::string UriComponent(std::string_view name) {
    constexpr std::string_view kUnreserved = "-._~";
    std::string component;
    for (const char byte : ToUtf8(name)) {
        const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= 'a' && byte <= 'z') || kUnreserved.find(byte) != std::string_view::npos;
        if (plain) {
            component += byte;
        } else {
            component += '%';
            AppendHex(component, static_cast<unsigned char>(byte));
        }
    }
    // A component of dots alone would be a step in the path.
    if (component.find_first_not_of('.') == std::string::npos)
        return "%2E" + component.substr(std::min<std::size_t>(1, component.size()));
    return component;
}

class SarifLog {
  public:
    SarifLog(const FindingList& list, OutputFile& file)
        : list_(list), findings_(list.findings), table_(list.findings.table()), file_(file), writer_(file) {
        NumberPlaces();
        NumberRules();
    }

    void Write(const AskInterrupted& ask) {
        file_.Write("{\n");
        Text("$schema", kSchema, ",\n");
        Text("version", "2.1.0", ",\n");
        file_.Write("\"runs\": [{\n");
        WriteTool();
        WriteInvocation();
        file_.Write("\"automationDetails\": {");
        Text("id", "zorvel/" + UriComponent(findings_.facts().tree) + '/', "},\n");
        file_.Write("\"properties\": {");
        Text("dataset", findings_.facts().dataset, ", ");
        Text("captured", findings_.facts().captured, "},\n");
        WritePlaces();
        WriteResults(ask);
        file_.Write("}]\n}\n");
    }

  private:
    // A tree, container or application.
    struct Place {
        std::string name;
        std::string full_name;
        std::string_view kind;
        std::size_t parent;  // its own number for the tree
    };

    void Text(std::string_view key, std::string_view text, std::string_view behind) {
        writer_.WriteKey(key);
        writer_.Write(text);
        file_.Write(behind);
    }
    void Number(std::string_view key, std::size_t number, std::string_view behind) {
        writer_.WriteKey(key);
        file_.Write(std::to_string(number));
        file_.Write(behind);
    }
    // A message or a multi-format text with one form.
    void Message(std::string_view key, std::string_view text, std::string_view behind) {
        writer_.WriteKey(key);
        file_.Write('{');
        Text("text", text, "}");
        file_.Write(behind);
    }

    void NumberPlaces() {
        places_.push_back({findings_.facts().tree, findings_.facts().tree, "namespace", 0});
        place_of_.resize(table_.applications().size());
        uri_of_.resize(table_.applications().size());
        std::vector<bool> used(table_.applications().size());
        for (const std::uint32_t row : list_.rows)
            used[table_[row].application] = true;
        for (std::size_t i = 0; i < used.size(); ++i)
            if (used[i]) NumberPlaceOf(i);
    }
    void NumberPlaceOf(std::size_t number) {
        const FindingApplication& application = table_.applications()[number];
        std::string uri = UriComponent(findings_.facts().tree);
        std::string full_name;
        std::size_t parent = 0;
        for (const std::string& name : FromTheRoot(application.container)) {
            uri += '/' + UriComponent(name);
            full_name = full_name.empty() ? name : name + '.' + full_name;
            const auto [known, added] = containers_.emplace(uri, places_.size());
            if (added) places_.push_back({name, full_name, "namespace", parent});
            parent = known->second;
        }
        place_of_[number] = places_.size();
        uri_of_[number] = uri + '/' + UriComponent(application.name);
        places_.push_back({application.name, application.full_name, "module", parent});
    }

    // The rules of the list, sorted by their codes.
    void NumberRules() {
        std::vector<bool> used(table_.rules().size());
        for (const std::uint32_t row : list_.rows)
            used[table_[row].rule] = true;
        for (std::size_t i = 0; i < used.size(); ++i)
            if (used[i]) rules_.push_back(i);
        std::sort(rules_.begin(), rules_.end(), [this](std::size_t left, std::size_t right) {
            return table_.rules()[left].code < table_.rules()[right].code;
        });
        rule_number_.resize(used.size());
        for (std::size_t i = 0; i < rules_.size(); ++i)
            rule_number_[rules_[i]] = i;
    }

    void WriteTool() {
        file_.Write("\"tool\": {\"driver\": {");
        Text("name", kProductName, ", ");
        Text("version", list_.version, ", ");
        file_.Write("\"rules\": [");
        for (std::size_t i = 0; i < rules_.size(); ++i) {
            file_.Write(i == 0 ? "\n" : ",\n");
            WriteRule(table_.rules()[rules_[i]]);
        }
        file_.Write("\n]}},\n");
    }
    void WriteRule(const FindingRule& rule) {
        const IssueDescription* const known = FindIssue(rule.code);
        const std::string_view reason = known == nullptr ? std::string_view() : known->severity_reason;
        file_.Write('{');
        Text("id", rule.code, ", ");
        Message("shortDescription", rule.what, ", ");
        Message("fullDescription", reason.empty() ? std::string_view(rule.what) : reason, ", ");
        Message("help", rule.remedy.empty() ? rule.what : rule.remedy, ", ");
        file_.Write("\"defaultConfiguration\": {");
        Text("level", SarifOf(rule.severity).level, "}, ");
        file_.Write("\"properties\": {");
        Text("severity", SeverityText(rule.severity), ", ");
        Text("security-severity", SarifOf(rule.severity).score, ", ");
        file_.Write("\"tags\": [");
        writer_.Write(kIssueCategories.at(static_cast<std::size_t>(rule.category)).text);
        file_.Write("]}}");
    }

    // How the list was made, and what is to be said of the list of accepted findings.
    void WriteInvocation() {
        file_.Write("\"invocations\": [{\"executionSuccessful\": true, \"toolExecutionNotifications\": [");
        std::string_view before = "\n{";
        const auto notify = [&](std::string_view text) {
            file_.Write(before);
            Text("level", "warning", ", ");
            Message("message", text, "}");
            before = ",\n{";
        };
        if (findings_.facts().incomplete) notify(findings_.facts().dataset + ": import not completed");
        for (const std::string& note : findings_.Notes())
            notify(note);
        file_.Write("]}],\n");
    }

    void WritePlaces() {
        file_.Write("\"logicalLocations\": [");
        for (std::size_t i = 0; i < places_.size(); ++i) {
            const Place& place = places_[i];
            file_.Write(i == 0 ? "\n{" : ",\n{");
            Text("name", place.name, ", ");
            Text("fullyQualifiedName", place.full_name, ", ");
            if (i > 0) Number("parentIndex", place.parent, ", ");
            Text("kind", place.kind, "}");
        }
        file_.Write("\n],\n");
    }

    void WriteResults(const AskInterrupted& ask) {
        file_.Write("\"results\": [");
        InterruptionPoint point(ask);
        std::string_view before = "\n{";
        for (const std::uint32_t row : list_.rows) {
            point.Pass();
            file_.Write(before);
            WriteResult(row);
            before = ",\n{";
        }
        file_.Write("\n]\n");
    }
    void WriteResult(std::size_t row) {
        const FindingRule& rule = table_.RuleOf(row);
        const FindingApplication& application = table_.ApplicationOf(row);
        const std::string target = table_.TargetOf(row);
        Text("ruleId", rule.code, ", ");
        Number("ruleIndex", rule_number_[table_[row].rule], ", ");
        Text("level", SarifOf(rule.severity).level, ", ");
        Message("message",
                rule.what + (target.empty() ? "" : ": " + target) + " (" + application.full_name +
                    ", reaches " + ReachText(application.reach) + ')',
                ", ");
        WriteLocation(table_[row], table_.PlaceOf(row), target);
        file_.Write("\"partialFingerprints\": {");
        Text("zorvelFinding/v1", FingerprintOf(table_, row), "}, ");
        WriteSuppression(row);
        file_.Write("\"properties\": {");
        Text("source", table_.SourceOf(row), ", ");
        Text("reach", ReachText(application.reach), ", ");
        Text("state", StateText(findings_.states()[row]), "}}");
    }
    // The application's path stands for a file, which code hosts ask for.
    void WriteLocation(const Finding& finding, std::string_view entry_type, std::string_view target) {
        file_.Write("\"locations\": [{\"physicalLocation\": {\"artifactLocation\": {");
        Text("uri", uri_of_[finding.application], "}, ");
        file_.Write("\"region\": {\"startLine\": 1}}, \"logicalLocations\": [{");
        const std::size_t place = place_of_[finding.application];
        Number("index", place, ", ");
        Text("fullyQualifiedName", places_[place].full_name, "}");
        if (!target.empty()) {
            file_.Write(", {");
            Text("name", target, ", ");
            Text("fullyQualifiedName",
                 places_[place].full_name + ": " + std::string(entry_type) + ' ' + std::string(target), ", ");
            Text("kind", "resource", "}");
        }
        file_.Write("]}], ");
    }
    void WriteSuppression(std::size_t row) {
        file_.Write("\"suppressions\": [");
        if (findings_.states()[row] == FindingState::kAccepted) {
            const AcceptedFinding& accepted = findings_.accepted()[*findings_.states().EntryOf(row)];
            file_.Write('{');
            Text("kind", "external", ", ");
            Text("status", "accepted", ", ");
            Text("justification", accepted.reason + (accepted.by.empty() ? "" : " (" + accepted.by + ')'),
                 "}");
        }
        file_.Write("], ");
    }

    const FindingList& list_;
    const Findings& findings_;
    const FindingTable& table_;
    OutputFile& file_;
    JsonWriter writer_;
    std::vector<Place> places_;
    std::unordered_map<std::string, std::size_t> containers_;  // numbers of places, by their references
    std::vector<std::size_t> place_of_;                        // of each application of the list
    std::vector<std::string> uri_of_;
    std::vector<std::size_t> rules_;
    std::vector<std::size_t> rule_number_;
};

}  // namespace

void WriteFindingsSarif(const FindingList& list, OutputFile& file, const AskInterrupted& ask) {
    SarifLog(list, file).Write(ask);
}

}  // namespace zorvel
