// Which findings of a table are shown: what the filter box asks for, and what is chosen in the facets beside
// it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "findings/finding_states.h"
#include "findings/finding_table.h"
#include "findings/name_pattern.h"

namespace zorvel {

// What a finding must have. Each list that is empty asks for nothing; of several elements of `codes`,
// `applications`, `severities` or `states` one is enough, while all `words` must be there.
struct FindingQuery {
    std::vector<std::string> words;         // in its code, what it is, application, place, target or source
    std::vector<std::string> codes;         // whole, without regard to case
    std::vector<NamePattern> applications;  // patterns of full names
    std::set<Severity> severities;
    std::set<FindingState> states;
};

// The query of a filter box: words, "code:FILEPWL", "app:*.LEEDS.CORP" (without "*" and "?" what the name
// holds) and "severity:high", separated by blanks. What stands between quotes is one. A severity that there
// is not is a word.
FindingQuery ParseFindingQuery(std::string_view text);

// The rows of a table, in their order, that a query asks for.
std::vector<std::uint32_t> SelectRows(const FindingTable& table, const FindingStates& states,
                                      const FindingQuery& query);

// By what the findings are told apart.
enum class Facet : std::size_t { kSeverity, kCategory, kRule, kContainer, kState };
inline constexpr std::array<std::string_view, 5> kFacets = {"Severity", "Category", "Rule", "Container",
                                                            "State"};

// One value of a facet.
struct FacetValue {
    std::string text;
    bool chosen = false;
    std::size_t count = 0;  // of the findings that would be shown if it alone were chosen in its facet
};

class FindingFilter {
  public:
    // Both must outlive the object.
    FindingFilter(const FindingTable& table, const FindingStates& states);

    // The text of the filter box.
    void SetText(std::string_view text);
    const std::string& text() const { return text_; }

    // The values of a facet, in an order of their own that stays: severities from the worst, states, all
    // others by their names.
    const std::vector<FacetValue>& Values(Facet facet) const { return Of(facet).values; }
    // Of a facet nothing chosen is the same as all.
    void Choose(Facet facet, std::size_t value, bool chosen);
    // Chooses one value alone, by its text; nothing when there is no such value.
    void ChooseOnly(Facet facet, std::string_view text);
    // Takes back every choice and the text.
    void Clear();
    bool IsEmpty() const;

    // The rows to show, in the table's order; counts the values' findings anew.
    std::vector<std::uint32_t> Apply();

  private:
    struct FacetState {
        std::vector<FacetValue> values;
        std::vector<std::uint32_t> value_of;  // of each rule or application
        std::size_t chosen = 0;
    };
    const FacetState& Of(Facet facet) const { return facets_[static_cast<std::size_t>(facet)]; }
    FacetState& Of(Facet facet) { return facets_[static_cast<std::size_t>(facet)]; }
    std::array<std::uint32_t, kFacets.size()> ValuesOf(std::size_t row) const;

    const FindingTable& table_;
    const FindingStates& states_;
    std::string text_;
    std::array<FacetState, kFacets.size()> facets_;
};

}  // namespace zorvel
