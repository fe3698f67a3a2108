#include "findings/finding_filter.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "platform/code_page.h"

namespace zorvel {
namespace {

bool HoldsIgnoringCase(std::string_view text, std::string_view upper_word) {
    return UpperCase(text).find(upper_word) != std::string::npos;
}

// For each element of a list, whether `test` is true of it.
template <typename List, typename Test>
std::vector<unsigned char> Marks(const List& list, Test test) {
    std::vector<unsigned char> marks(list.size());
    std::transform(list.begin(), list.end(), marks.begin(),
                   [&](const auto& element) { return test(element); });
    return marks;
}

// Where a word stands.
class WordMatches {
  public:
    WordMatches(const FindingTable& table, const std::string& upper_word)
        : rules_(Marks(table.rules(),
                       [&](const FindingRule& rule) {
                           return HoldsIgnoringCase(rule.code, upper_word) ||
                                  HoldsIgnoringCase(rule.what, upper_word);
                       })),
          applications_(Marks(table.applications(),
                              [&](const FindingApplication& application) {
                                  return HoldsIgnoringCase(application.full_name, upper_word) ||
                                         HoldsIgnoringCase(application.name, upper_word);
                              })),
          places_(Marks(table.places(),
                        [&](const std::string& place) { return HoldsIgnoringCase(place, upper_word); })),
          texts_(table.texts().Search(upper_word)) {}

    bool Has(const Finding& finding) const {
        return rules_[finding.rule] || applications_[finding.application] || places_[finding.place] ||
               texts_.Has(finding.target) || texts_.Has(finding.source);
    }

  private:
    std::vector<unsigned char> rules_;
    std::vector<unsigned char> applications_;
    std::vector<unsigned char> places_;
    PathTexts::Matches texts_;
};

// A query, put as questions about the table's lists.
class QueryMatcher {
  public:
    QueryMatcher(const FindingTable& table, const FindingQuery& query)
        : rules_(Marks(table.rules(),
                       [&](const FindingRule& rule) {
                           const bool code = query.codes.empty() ||
                                             std::any_of(query.codes.begin(), query.codes.end(),
                                                         [&](const std::string& wanted) {
                                                             return EqualIgnoringCase(wanted, rule.code);
                                                         });
                           return code &&
                                  (query.severities.empty() || query.severities.count(rule.severity) != 0);
                       })),
          applications_(Marks(table.applications(), [&](const FindingApplication& application) {
              return query.applications.empty() ||
                     std::any_of(
                         query.applications.begin(), query.applications.end(),
                         [&](const NamePattern& pattern) { return pattern.Matches(application.full_name); });
          })) {
        for (std::size_t state = 0; state < kFindingStates.size(); ++state)
            states_[state] =
                query.states.empty() || query.states.count(static_cast<FindingState>(state)) != 0;
        words_.reserve(query.words.size());
        for (const std::string& word : query.words)
            words_.emplace_back(table, UpperCase(word));
    }

    bool Has(const Finding& finding, FindingState state) const {
        return rules_[finding.rule] && applications_[finding.application] &&
               states_[static_cast<std::size_t>(state)] &&
               std::all_of(words_.begin(), words_.end(),
                           [&](const WordMatches& word) { return word.Has(finding); });
    }

  private:
    std::vector<unsigned char> rules_;
    std::vector<unsigned char> applications_;
    std::array<bool, kFindingStates.size()> states_{};
    std::vector<WordMatches> words_;
};

// The parts of a filter's text, without the quotes that hold some together.
std::vector<std::string> PartsOf(std::string_view text) {
    std::vector<std::string> parts;
    std::string part;
    bool quoted = false;
    for (const char character : text) {
        if (character == '"') {
            quoted = !quoted;
        } else if (character == ' ' && !quoted) {
            if (!part.empty()) parts.push_back(std::exchange(part, {}));
        } else {
            part += character;
        }
    }
    if (!part.empty()) parts.push_back(part);
    return parts;
}

NamePattern ApplicationPattern(const std::string& text) {
    const bool whole = text.find_first_of("*?") != std::string::npos;
    return NamePattern(whole ? text : '*' + text + '*');
}

// Whether a part of the filter's text begins with a field's name, and what follows that.
bool TakeField(std::string_view part, std::string_view field, std::string& value) {
    if (part.size() == field.size() || !BeginsIgnoringCase(part, field)) return false;
    value = part.substr(field.size());
    return true;
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

}  // namespace

FindingQuery ParseFindingQuery(std::string_view text) {
    FindingQuery query;
    std::string value;
    for (const std::string& part : PartsOf(text)) {
        if (TakeField(part, "code:", value)) {
            query.codes.push_back(value);
        } else if (TakeField(part, "app:", value)) {
            query.applications.push_back(ApplicationPattern(value));
        } else if (const bool field = TakeField(part, "severity:", value);
                   field && SeverityFrom(LowerCase(value))) {
            query.severities.insert(*SeverityFrom(LowerCase(value)));
        } else {
            query.words.push_back(part);
        }
    }
    return query;
}

std::vector<std::uint32_t> SelectRows(const FindingTable& table, const FindingStates& states,
                                      const FindingQuery& query) {
    const QueryMatcher matcher(table, query);
    std::vector<std::uint32_t> rows;
    for (std::size_t row = 0; row < table.size(); ++row)
        if (matcher.Has(table[row], states[row])) rows.push_back(static_cast<std::uint32_t>(row));
    return rows;
}

FindingFilter::FindingFilter(const FindingTable& table, const FindingStates& states)
    : table_(table), states_(states) {
    const auto add = [this](Facet facet, std::string_view text) {
        Of(facet).values.push_back({std::string(text), false, 0});
    };
    for (const std::string_view severity : kSeverityTexts)
        add(Facet::kSeverity, severity);
    for (const IssueCategoryText& category : kIssueCategories)
        add(Facet::kCategory, category.text);
    for (const std::string_view state : kFindingStates)
        add(Facet::kState, state);
    // The values of the other two are what the table has, sorted.
    const auto number = [this](Facet facet, std::size_t count, const auto& text_of) {
        std::map<std::string, std::uint32_t> numbers;
        for (std::size_t i = 0; i < count; ++i)
            numbers.emplace(text_of(i), 0);
        FacetState& state = Of(facet);
        for (auto& [text, place] : numbers) {
            place = static_cast<std::uint32_t>(state.values.size());
            state.values.push_back({text, false, 0});
        }
        for (std::size_t i = 0; i < count; ++i)
            state.value_of.push_back(numbers.at(text_of(i)));
    };
    number(Facet::kRule, table.rules().size(), [&](std::size_t i) { return table.rules()[i].code; });
    number(Facet::kContainer, table.applications().size(),
           [&](std::size_t i) { return table.applications()[i].container; });
}

void FindingFilter::SetText(std::string_view text) {
    text_ = text;
}

void FindingFilter::Choose(Facet facet, std::size_t value, bool chosen) {
    FacetState& state = Of(facet);
    FacetValue& changed = state.values.at(value);
    if (changed.chosen == chosen) return;
    changed.chosen = chosen;
    state.chosen = chosen ? state.chosen + 1 : state.chosen - 1;
}

void FindingFilter::ChooseOnly(Facet facet, std::string_view text) {
    FacetState& state = Of(facet);
    for (std::size_t value = 0; value < state.values.size(); ++value)
        Choose(facet, value, state.values[value].text == text);
}

void FindingFilter::Clear() {
    text_.clear();
    for (FacetState& facet : facets_) {
        for (FacetValue& value : facet.values)
            value.chosen = false;
        facet.chosen = 0;
    }
}

bool FindingFilter::IsEmpty() const {
    return text_.find_first_not_of(' ') == std::string::npos &&
           std::all_of(facets_.begin(), facets_.end(),
                       [](const FacetState& facet) { return facet.chosen == 0; });
}

std::array<std::uint32_t, kFacets.size()> FindingFilter::ValuesOf(std::size_t row) const {
    const Finding& finding = table_[row];
    const FindingRule& rule = table_.rules()[finding.rule];
    return {static_cast<std::uint32_t>(rule.severity), static_cast<std::uint32_t>(rule.category),
            Of(Facet::kRule).value_of[finding.rule], Of(Facet::kContainer).value_of[finding.application],
            static_cast<std::uint32_t>(states_[row])};
}

std::vector<std::uint32_t> FindingFilter::Apply() {
    for (FacetState& facet : facets_)
        for (FacetValue& value : facet.values)
            value.count = 0;
    const QueryMatcher matcher(table_, ParseFindingQuery(text_));
    std::vector<std::uint32_t> rows;
    for (std::size_t row = 0; row < table_.size(); ++row) {
        if (!matcher.Has(table_[row], states_[row])) continue;
        const auto values = ValuesOf(row);
        // A value counts what all other facets let through.
        std::size_t refusing = 0;
        std::size_t refuser = 0;
        for (std::size_t facet = 0; facet < facets_.size(); ++facet) {
            if (facets_[facet].chosen == 0 || facets_[facet].values[values[facet]].chosen) continue;
            ++refusing;
            refuser = facet;
        }
        if (refusing > 1) continue;
        for (std::size_t facet = 0; facet < facets_.size(); ++facet)
            if (refusing == 0 || facet == refuser) ++facets_[facet].values[values[facet]].count;
        if (refusing == 0) rows.push_back(static_cast<std::uint32_t>(row));
    }
    return rows;
}

}  // namespace zorvel
