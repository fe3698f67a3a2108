#include "findings/finding_table.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "database/application_name.h"

namespace zorvel {
namespace {

constexpr const char* kNoDescription = "An issue without a description";

// Numbers what it is asked for, in the order in which it comes first; asked for the same again, it need not
// look.
template <typename Key>
class Numbering {
  public:
    // `add` is called for a key that is new, and returns its number, or nothing to leave it out.
    template <typename Add>
    std::optional<std::uint32_t> NumberOf(const Key& key, Add add) {
        if (any_ && key == last_) return number_;
        const auto found = numbers_.find(key);
        number_ = found != numbers_.end() ? found->second : numbers_.emplace(key, add(key)).first->second;
        last_ = key;
        any_ = true;
        return number_;
    }

  private:
    std::unordered_map<Key, std::optional<std::uint32_t>> numbers_;
    Key last_{};
    std::optional<std::uint32_t> number_;
    bool any_ = false;
};

// What a dataset says of the rules, by their code.
std::unordered_map<std::string, FindingRule> ReadRules(const Database& dataset) {
    std::unordered_map<std::string, FindingRule> rules;
    Rows rows = dataset.Query("SELECT * FROM Zorvel_Resolutions");
    const std::vector<std::string> columns = rows.Columns();
    const bool has_severity = std::find(columns.begin(), columns.end(), "Severity") != columns.end();
    while (rows.Next()) {
        FindingRule rule;
        rule.code = rows.Text("IssueCode");
        rule.what = rows.Text("IssueShortDesc");
        rule.remedy = rows.Text("Resolution");
        const std::optional<Severity> own = has_severity ? SeverityFrom(rows.Text("Severity")) : std::nullopt;
        rule.severity = own.value_or(SeverityOf(rule.code));
        rule.category = CategoryOf(rule.code);
        rules.emplace(rule.code, std::move(rule));
    }
    return rules;
}

FindingRule RuleOf(const std::unordered_map<std::string, FindingRule>& known, const std::string& code) {
    const auto found = known.find(code);
    if (found != known.end()) return found->second;
    return {code, kNoDescription, {}, SeverityOf(code), CategoryOf(code)};
}

std::unordered_map<std::int64_t, FindingApplication> ReadApplications(const Database& dataset) {
    std::unordered_map<std::int64_t, FindingApplication> applications;
    const std::unordered_map<std::int64_t, Reach> reach = ReadReach(dataset);
    Rows rows = dataset.Query("SELECT AppUniqueRef,AppName,AppOU FROM Zorvel_Apps");
    while (rows.Next()) {
        FindingApplication application;
        application.key = rows.Number(0);
        rows.Read(1, application.name);
        rows.Read(2, application.container);
        application.full_name = FullNameOf({application.name, application.container});
        if (const auto found = reach.find(application.key); found != reach.end())
            application.reach = found->second;
        applications.emplace(application.key, std::move(application));
    }
    return applications;
}

template <typename Element>
std::uint32_t Append(std::vector<Element>& list, Element element) {
    list.push_back(std::move(element));
    return static_cast<std::uint32_t>(list.size() - 1);
}

}  // namespace

FindingTable::FindingTable(const Database& dataset) {
    const std::unordered_map<std::string, FindingRule> known_rules = ReadRules(dataset);
    std::unordered_map<std::int64_t, FindingApplication> known_applications = ReadApplications(dataset);
    {
        Rows count = dataset.Query("SELECT COUNT(*) FROM Zorvel_Issues");
        if (count.Next()) findings_.reserve(static_cast<std::size_t>(count.Number(0)));
    }
    Numbering<std::int64_t> applications;
    Numbering<std::string> rules;
    Numbering<std::string> places;
    std::string text;
    Rows rows =
        dataset.Query("SELECT AppUniqueRef,IssueCode,EntryType,TargetFile,SourceFile FROM Zorvel_Issues");
    while (rows.Next()) {
        const std::optional<std::uint32_t> application =
            applications.NumberOf(rows.Number(0), [&](std::int64_t key) -> std::optional<std::uint32_t> {
                const auto found = known_applications.find(key);
                if (found == known_applications.end()) return std::nullopt;
                return Append(applications_, std::move(found->second));
            });
        if (!application) continue;  // as joins have it
        Finding finding;
        finding.application = *application;
        rows.Read(1, text);
        finding.rule = *rules.NumberOf(
            text, [&](const std::string& code) { return Append(rules_, zorvel::RuleOf(known_rules, code)); });
        rows.Read(2, text);
        finding.place =
            *places.NumberOf(text, [&](const std::string& place) { return Append(places_, place); });
        rows.Read(3, text);
        finding.target = texts_.Keep(text);
        rows.Read(4, text);
        finding.source = texts_.Keep(text);
        findings_.push_back(finding);
    }
    texts_.Complete();
}

}  // namespace zorvel
