#include "findings/path_texts.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// True when `text` holds `word`, which is in upper case and not empty.
bool Holds(std::string_view text, std::string_view word) {
    if (text.size() < word.size()) return false;
    const auto* const last = text.end() - word.size() + 1;
    for (const auto* at = text.begin(); at != last; ++at) {
        if (UpperChar(*at) != word.front()) continue;
        if (std::equal(word.begin(), word.end(), at,
                       [](char left, char right) { return left == UpperChar(right); }))
            return true;
    }
    return false;
}

// The first eight characters in upper case, as a number that sorts as they do.
std::uint64_t Beginning(std::string_view text) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i)
        number = number << 8U | (i < text.size() ? static_cast<unsigned char>(UpperChar(text[i])) : 0U);
    return number;
}

bool LessIgnoringCase(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
            return static_cast<unsigned char>(UpperChar(a)) < static_cast<unsigned char>(UpperChar(b));
        });
}

}  // namespace

PathTexts::Text PathTexts::Keep(std::string_view text) {
    const std::size_t slash = text.rfind('\\');
    const std::size_t folder = slash == std::string_view::npos ? 0 : slash + 1;
    return {KeepPart(text.substr(0, folder)), KeepPart(text.substr(folder))};
}

std::uint32_t PathTexts::KeepPart(std::string_view part) {
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(part));
    const std::uint32_t found =
        numbers_.Find(hash, [&](std::uint32_t number) { return parts_[number] == part; });
    if (found != NumberTable::kNone) return found;
    if (parts_.size() >= std::numeric_limits<std::uint32_t>::max() - 1) throw Error(errors::kOutOfMemory);
    const auto number = static_cast<std::uint32_t>(parts_.size());
    parts_.push_back(pool_.Keep(part));
    numbers_.Insert(hash, number);
    return number;
}

void PathTexts::Complete() {
    numbers_ = {};
    parts_.shrink_to_fit();
}

PathTexts::Matches PathTexts::Search(std::string_view word) const {
    const std::string wanted = UpperCase(word);
    const std::size_t slash = wanted.rfind('\\');
    const bool across = slash != std::string::npos && slash + 1 < wanted.size();
    const std::string_view folder = std::string_view(wanted).substr(0, slash + 1);
    const std::string_view name = std::string_view(wanted).substr(slash + 1);
    Matches matches;
    matches.whole_.resize(parts_.size());
    matches.ends_.resize(parts_.size());
    matches.begins_.resize(parts_.size());
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        const std::string_view part = parts_[i];
        matches.whole_[i] = wanted.empty() || Holds(part, wanted);
        if (!across) continue;
        matches.ends_[i] = part.size() >= folder.size() &&
                           EqualIgnoringCase(part.substr(part.size() - folder.size()), folder);
        matches.begins_[i] = BeginsIgnoringCase(part, name);
    }
    return matches;
}

std::vector<std::uint32_t> PathTexts::Ranks() const {
    struct Entry {
        std::uint64_t beginning;
        std::uint32_t part;
    };
    std::vector<Entry> order(parts_.size());
    for (std::size_t i = 0; i < parts_.size(); ++i)
        order[i] = {Beginning(parts_[i]), static_cast<std::uint32_t>(i)};
    std::sort(order.begin(), order.end(), [this](const Entry& left, const Entry& right) {
        if (left.beginning != right.beginning) return left.beginning < right.beginning;
        return LessIgnoringCase(parts_[left.part], parts_[right.part]);
    });
    // Parts that differ in case alone share a place.
    std::vector<std::uint32_t> ranks(parts_.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && !EqualIgnoringCase(parts_[order[i - 1].part], parts_[order[i].part])) ++rank;
        ranks[order[i].part] = rank;
    }
    return ranks;
}

}  // namespace zorvel
