#include "findings/finding_details.h"

#include <array>
#include <deque>
#include <string_view>

#include "platform/code_page.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// How many entries are shown on either side.
constexpr std::size_t kNeighbours = 2;
// How many associations are named.
constexpr std::size_t kMostAssociations = 100;
// Texts of this length can have been cut by the import, each part for itself.
constexpr std::size_t kLongText = 200;

// The table of a dataset that entries of a type stand in.
struct EntryTable {
    std::string_view place;
    const char* query;  // its fields, behind "AppUniqueRef="
    std::vector<std::string> columns;
    // What the target of a finding about such an entry is.
    std::string (*target)(const std::vector<std::string>& fields);
};

std::string FirstField(const std::vector<std::string>& fields) {
    return fields[0];
}

const std::array<EntryTable, 5>& EntryTables() {
    constexpr const char* kAttributes =
        "SELECT Attribute,Data FROM Zorvel_AppDetails WHERE Attribute LIKE 'App:%' AND AppUniqueRef=";
    const auto attribute_value = [](const std::vector<std::string>& fields) { return fields[1]; };
    static const std::array<EntryTable, 5> tables = {{
        {"File",
         "SELECT Target,Source,CopyMode FROM Zorvel_CopyFiles WHERE AppUniqueRef=",
         {"Target", "Source", "Copy mode"},
         FirstField},
        {"Registry",
         "SELECT Key,Data,Value,Mode FROM Zorvel_RegistrySettings WHERE AppUniqueRef=",
         {"Key", "Name", "Data", "Mode"},
         [](const std::vector<std::string>& fields) { return fields[0] + '\\' + fields[1]; }},
        {"Macro",
         "SELECT Macro,Value,Prompt FROM Zorvel_Macros WHERE AppUniqueRef=",
         {"Macro", "Value", "Prompt"},
         FirstField},
        {"Path to Executable", kAttributes, {"Attribute", "Value"}, attribute_value},
        {"Working Directory", kAttributes, {"Attribute", "Value"}, attribute_value},
    }};
    return tables;
}

bool IsTarget(std::string_view of_entry, std::string_view of_finding) {
    return EqualIgnoringCase(of_entry, of_finding) ||
           (of_finding.size() >= kLongText && BeginsIgnoringCase(of_entry, of_finding));
}

void ReadEntries(const Database& dataset, const EntryTable& table, std::int64_t application,
                 const std::string& target, FindingDetails& details) {
    details.columns = table.columns;
    Rows rows = dataset.Query(table.query + std::to_string(application) + " ORDER BY rowid");
    std::deque<FindingDetails::Entry> before;
    std::size_t after = 0;
    while (after < kNeighbours && rows.Next()) {
        FindingDetails::Entry entry;
        entry.fields.resize(table.columns.size());
        for (std::size_t i = 0; i < entry.fields.size(); ++i)
            rows.Read(i, entry.fields[i]);
        const bool found = !details.entries.empty();
        entry.is_own = !found && IsTarget(table.target(entry.fields), target);
        if (found) {
            ++after;
        } else if (!entry.is_own) {
            before.push_back(std::move(entry));
            if (before.size() > kNeighbours) before.pop_front();
            continue;
        } else {
            details.entries.assign(before.begin(), before.end());
        }
        details.entries.push_back(std::move(entry));
    }
}

std::string AssociationText(std::string_view type, const std::string& name, std::int64_t count) {
    if (type == "User") return "user " + name;
    if (type == "OU") return "container " + name;
    if (type == "WS") return "workstation " + name;
    return "group " + name + " (" + GroupedOrZero(count) + (count == 1 ? " member)" : " members)");
}

void ReadAssociations(const Database& dataset, std::int64_t application, FindingDetails& details) {
    Rows rows = dataset.Query(
        "SELECT AssociationType, CASE AssociationType WHEN 'User' THEN FullUserID ELSE FullAssociation END "
        "AS Name,"
        " COUNT(*) FROM Zorvel_Associations WHERE AppUniqueRef=" +
        std::to_string(application) + " GROUP BY AssociationType, Name ORDER BY AssociationType, Name");
    std::string type;
    std::string name;
    std::int64_t more = 0;
    while (rows.Next()) {
        if (details.associations.size() >= kMostAssociations) {
            ++more;
            continue;
        }
        rows.Read(0, type);
        rows.Read(1, name);
        details.associations.push_back(AssociationText(type, name, rows.Number(2)));
    }
    if (more > 0) details.associations.push_back("and " + GroupedOrZero(more) + " more");
}

}  // namespace

std::string AcceptanceText(const AcceptedFinding& accepted, FindingState state) {
    std::string text(StateText(state));
    if (accepted.until)
        text += (state == FindingState::kExpired ? " on " : " until ") + DateText(*accepted.until);
    if (!accepted.by.empty()) text += ", by " + accepted.by;
    return text + ": " + accepted.reason;
}

FindingDetails DetailsOf(const Findings& findings, std::size_t row) {
    const FindingTable& table = findings.table();
    const FindingRule& rule = table.RuleOf(row);
    const FindingApplication& application = table.ApplicationOf(row);
    FindingDetails details;
    details.rule = rule.code + ": " + rule.what;
    details.severity = SeverityText(rule.severity);
    details.remedy = rule.remedy;
    if (const IssueDescription* const known = FindIssue(rule.code)) {
        details.severity.append(": ").append(known->severity_reason);
        details.remark = known->remark;
    }
    details.application = application.full_name;
    details.reach = ReachText(application.reach);
    if (const std::optional<std::size_t> entry = findings.states().EntryOf(row))
        details.acceptance = AcceptanceText(findings.accepted()[*entry], findings.states()[row]);
    const Database dataset = findings.OpenDataset();
    for (const EntryTable& entries : EntryTables()) {
        if (entries.place != table.PlaceOf(row)) continue;
        ReadEntries(dataset, entries, application.key, table.TargetOf(row), details);
    }
    ReadAssociations(dataset, application.key, details);
    return details;
}

}  // namespace zorvel
