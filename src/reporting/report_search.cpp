#include "reporting/report_search.h"

#include <algorithm>

#include "reporting/report_values.h"

namespace zorvel {
namespace {

constexpr std::size_t kGroupTexts = 2;  // heading and note

}  // namespace

ReportSearch::ReportSearch(const Report& report)
    : report_(report), columns_(report.definition().columns.size()) {
    const std::vector<RowGroup>& groups = report.rows().groups();
    headings_.reserve(groups.size());
    for (std::size_t group = 0; group < groups.size(); ++group)
        headings_.push_back(group * kGroupTexts + groups[group].begin * columns_);
}

std::size_t ReportSearch::size() const {
    return headings_.size() * kGroupTexts + report_.rows().size() * columns_;
}

std::size_t ReportSearch::NumberOf(const TextPlace& place) const {
    if (place.kind == TextPlace::Kind::kHeading) return headings_[place.index];
    if (place.kind == TextPlace::Kind::kNote) return headings_[place.index] + 1;
    const std::vector<RowGroup>& groups = report_.rows().groups();
    const auto behind =
        std::upper_bound(groups.begin(), groups.end(), place.index,
                         [](std::size_t row, const RowGroup& group) { return row < group.begin; });
    const auto begun = static_cast<std::size_t>(behind - groups.begin());
    return begun * kGroupTexts + place.index * columns_ + place.column;
}

TextPlace ReportSearch::PlaceOf(std::size_t number) const {
    const auto behind = std::upper_bound(headings_.begin(), headings_.end(), number);
    const auto begun = static_cast<std::size_t>(behind - headings_.begin());
    if (begun != 0 && number - headings_[begun - 1] < kGroupTexts) {
        const bool heading = number == headings_[begun - 1];
        return {heading ? TextPlace::Kind::kHeading : TextPlace::Kind::kNote, begun - 1, 0, 0};
    }
    const std::size_t cell = number - begun * kGroupTexts;
    return {TextPlace::Kind::kCell, cell / columns_, cell % columns_, 0};
}

std::string_view ReportSearch::TextOf(const TextPlace& place, std::string& scratch) const {
    switch (place.kind) {
        case TextPlace::Kind::kHeading:
            return scratch = report_.Heading(place.index);
        case TextPlace::Kind::kNote:
            return scratch = report_.Note(place.index);
        case TextPlace::Kind::kCell:
            if (report_.rows().Repeats(place.index, place.column)) return {};
            return DisplayValue(report_.rows().ColumnValue(place.index, place.column),
                                report_.definition().columns[place.column].format, scratch);
        case TextPlace::Kind::kFurniture:
            break;
    }
    return {};
}

std::optional<ReportSearch::Match> ReportSearch::FirstIn(const TextSearch& needle, std::size_t begin,
                                                         std::size_t end) const {
    std::string scratch;
    for (std::size_t number = begin; number < end; ++number) {
        TextPlace place = PlaceOf(number);
        if (const auto offset = needle.Next(TextOf(place, scratch), 0)) {
            place.offset = *offset;
            return Match{{place, needle.size()}};
        }
    }
    return {};
}

std::optional<ReportSearch::Match> ReportSearch::LastIn(const TextSearch& needle, std::size_t begin,
                                                        std::size_t end) const {
    std::string scratch;
    for (std::size_t number = end; number > begin; --number) {
        TextPlace place = PlaceOf(number - 1);
        const std::string_view text = TextOf(place, scratch);
        if (const auto offset = needle.Previous(text, text.size())) {
            place.offset = *offset;
            return Match{{place, needle.size()}};
        }
    }
    return {};
}

std::optional<ReportSearch::Match> ReportSearch::Next(const TextSearch& needle, const TextPlace& from) const {
    if (size() == 0) return {};
    const std::size_t number = NumberOf(from);
    std::string scratch;
    TextPlace place = from;
    if (const auto offset = needle.Next(TextOf(from, scratch), from.offset)) {
        place.offset = *offset;
        return Match{{place, needle.size()}};
    }
    if (auto match = FirstIn(needle, number + 1, size())) return match;
    auto match = FirstIn(needle, 0, number + 1);
    if (match) match->wrapped = true;
    return match;
}

std::optional<ReportSearch::Match> ReportSearch::Previous(const TextSearch& needle,
                                                          const TextPlace& before) const {
    if (size() == 0) return {};
    const std::size_t number = NumberOf(before);
    std::string scratch;
    TextPlace place = before;
    if (const auto offset = needle.Previous(TextOf(before, scratch), before.offset)) {
        place.offset = *offset;
        return Match{{place, needle.size()}};
    }
    if (auto match = LastIn(needle, 0, number)) return match;
    auto match = LastIn(needle, number, size());
    if (match) match->wrapped = true;
    return match;
}

std::size_t ReportSearch::Count(const TextSearch& needle) const {
    std::size_t count = 0;
    std::string scratch;
    for (std::size_t number = 0; number < size(); ++number)
        count += needle.Count(TextOf(PlaceOf(number), scratch));
    return count;
}

}  // namespace zorvel
