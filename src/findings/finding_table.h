// The findings of a dataset: each issue with its rule, its application and whom that reaches. Kept small, so
// that a million of them can be filtered and sorted at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "findings/path_texts.h"
#include "findings/reach.h"
#include "issues/issue_catalogue.h"
#include "platform/store.h"

namespace zorvel {

// An application that has findings.
struct FindingApplication {
    std::int64_t key = 0;  // AppUniqueRef
    std::string name;
    std::string container;
    std::string full_name;
    Reach reach;
};

// An issue code, with what the dataset says of it, or else the catalogue of issues.
struct FindingRule {
    std::string code;
    std::string what;
    std::string remedy;
    Severity severity = Severity::kMedium;
    IssueCategory category = IssueCategory::kMiscellaneous;
};

struct Finding {
    std::uint32_t application = 0;  // in FindingTable::applications
    std::uint32_t rule = 0;         // in FindingTable::rules
    std::uint32_t place = 0;        // in FindingTable::places: the entry's type
    PathTexts::Text target;
    PathTexts::Text source;
};

class FindingTable {
  public:
    // Reads the findings of a dataset, in the order in which they were raised. Raises 0x80004005, and
    // Interrupted (Database::EndWhen).
    explicit FindingTable(const Database& dataset);

    std::size_t size() const { return findings_.size(); }
    const Finding& operator[](std::size_t row) const { return findings_[row]; }

    const std::vector<FindingApplication>& applications() const { return applications_; }
    const std::vector<FindingRule>& rules() const { return rules_; }
    const std::vector<std::string>& places() const { return places_; }
    const PathTexts& texts() const { return texts_; }

    const FindingApplication& ApplicationOf(std::size_t row) const {
        return applications_[findings_[row].application];
    }
    const FindingRule& RuleOf(std::size_t row) const { return rules_[findings_[row].rule]; }
    const std::string& PlaceOf(std::size_t row) const { return places_[findings_[row].place]; }
    std::string TargetOf(std::size_t row) const { return TextOf(findings_[row].target); }
    std::string SourceOf(std::size_t row) const { return TextOf(findings_[row].source); }

  private:
    std::string TextOf(PathTexts::Text text) const {
        std::string whole;
        texts_.AppendTo(whole, text);
        return whole;
    }

    std::vector<Finding> findings_;
    std::vector<FindingApplication> applications_;
    std::vector<FindingRule> rules_;
    std::vector<std::string> places_;
    PathTexts texts_;
};

}  // namespace zorvel
