#include "viewers/text_search.h"

#include <algorithm>
#include <utility>

#include "platform/code_page.h"

namespace zorvel {

TextSearch::Pattern::Pattern(std::string folded_needle)
    : needle(std::move(folded_needle)), fallback(needle.size() + 1) {
    std::uint32_t matched = 0;
    for (std::size_t i = 1; i < needle.size(); ++i) {
        while (matched > 0 && needle[i] != needle[matched])
            matched = fallback[matched];
        if (needle[i] == needle[matched]) ++matched;
        fallback[i + 1] = matched;
    }
}

template <typename Iterator>
std::optional<std::size_t> TextSearch::Pattern::Find(Iterator text, Iterator end, const Fold& fold) const {
    if (needle.empty()) return std::nullopt;
    const Iterator begin = text;
    const auto folded = [&fold](char character) {
        return static_cast<char>(fold[static_cast<unsigned char>(character)]);
    };
    std::size_t matched = 0;
    while (text != end) {
        if (matched == 0) {
            while (text != end && folded(*text) != needle.front())
                ++text;
            if (text == end) break;
        } else if (folded(*text) != needle[matched]) {
            matched = fallback[matched];
            continue;
        }
        ++text;
        if (++matched == needle.size()) return static_cast<std::size_t>(text - begin);
    }
    return std::nullopt;
}

TextSearch::Fold TextSearch::MakeFold(bool match_case) {
    Fold fold{};
    for (std::size_t byte = 0; byte < fold.size(); ++byte) {
        const auto character = static_cast<char>(byte);
        fold[byte] = static_cast<unsigned char>(match_case ? character : UpperChar(character));
    }
    return fold;
}

std::string TextSearch::Folded(std::string_view needle) const {
    std::string folded(needle);
    for (char& character : folded)
        character = static_cast<char>(fold_[static_cast<unsigned char>(character)]);
    return folded;
}

TextSearch::TextSearch(std::string_view needle, bool match_case)
    : fold_(MakeFold(match_case)),
      forwards_(Folded(needle)),
      backwards_(std::string(forwards_.needle.rbegin(), forwards_.needle.rend())) {}

std::optional<std::size_t> TextSearch::Next(std::string_view text, std::size_t from) const {
    const std::string_view rest = text.substr(std::min(from, text.size()));
    const auto behind = forwards_.Find(rest.begin(), rest.end(), fold_);
    if (!behind) return std::nullopt;
    return from + *behind - size();
}

std::optional<std::size_t> TextSearch::Previous(std::string_view text, std::size_t before) const {
    const std::string_view rest = text.substr(0, before);
    const auto behind = backwards_.Find(rest.rbegin(), rest.rend(), fold_);
    if (!behind) return std::nullopt;
    return rest.size() - *behind;
}

std::size_t TextSearch::Count(std::string_view text) const {
    std::size_t count = 0;
    for (auto at = Next(text, 0); at; at = Next(text, *at + size()))
        ++count;
    return count;
}

}  // namespace zorvel
