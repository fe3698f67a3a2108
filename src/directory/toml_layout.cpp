#include "directory/toml_layout.h"

#include <algorithm>

namespace zorvel {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n";

bool Continues(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

TomlLayout::TomlLayout(std::string_view text, const toml::table& document) : text_(text) {
    lines_.push_back(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1)) {
        if (lines_.size() == 1 && end > 0 && text[end - 1] == '\r') line_end_ = "\r\n";
        lines_.push_back(end + 1);
    }
    FindHeaders(document);
    std::sort(headers_.begin(), headers_.end());
}

void TomlLayout::FindHeaders(const toml::node& node) {
    if (const toml::array* const list = node.as_array()) {
        for (const toml::node& item : *list) {
            if (item.is_table()) FindHeaders(item);
        }
    }
    const toml::table* const table = node.as_table();
    if (table == nullptr || table->is_inline()) return;
    const std::size_t place = PlaceOf(table->source().begin);
    if (place < text_.size() && text_[place] == '[') headers_.push_back(LineAt(place));
    for (const auto& [key, value] : *table)
        FindHeaders(value);
}

std::size_t TomlLayout::PlaceOf(const toml::source_position& position) const {
    if (position.line == 0) return text_.size();
    std::size_t place = LineBegin(position.line - 1);
    for (toml::source_index column = 1; column < position.column && place < text_.size(); ++column) {
        ++place;
        while (place < text_.size() && Continues(text_[place]))
            ++place;
    }
    return place;
}

std::size_t TomlLayout::LineAt(std::size_t place) const {
    const auto behind = std::upper_bound(lines_.begin(), lines_.end(), place);
    return behind == lines_.begin() ? 0 : static_cast<std::size_t>(behind - lines_.begin()) - 1;
}

char TomlLayout::FirstOf(std::size_t line) const {
    const std::size_t first = text_.find_first_not_of(" \t", LineBegin(line));
    if (first == std::string_view::npos || text_[first] == '\r' || text_[first] == '\n') return '\0';
    return text_[first];
}

bool TomlLayout::IsHeader(std::size_t line) const {
    return std::binary_search(headers_.begin(), headers_.end(), line);
}

TomlLayout::Range TomlLayout::ValueOf(const toml::node& node) const {
    const std::size_t begin = PlaceOf(node.source().begin);
    std::size_t end = PlaceOf(node.source().end);
    while (end > begin && kBlanks.find(text_[end - 1]) != std::string_view::npos)
        --end;
    return {begin, end};
}

std::size_t TomlLayout::BehindLine(std::size_t place) const {
    return LineBegin(LineAt(place) + 1);
}

TomlLayout::Range TomlLayout::LinesOf(const toml::key& key, const toml::node& value) const {
    const Range range = ValueOf(value);
    return {LineBegin(LineAt(PlaceOf(key.source().begin))),
            BehindLine(range.end - (range.end > range.begin))};
}

// Where the last value of a table, or of those below it, ends.
std::size_t TomlLayout::LastPlace(const toml::node& node) const {
    const toml::table* const table = node.as_table();
    if (table == nullptr || table->is_inline()) return ValueOf(node).end;
    std::size_t last = PlaceOf(table->source().begin);
    for (const auto& [key, value] : *table)
        last = std::max(last, LastPlace(value));
    return last;
}

TomlLayout::Range TomlLayout::SectionOf(const toml::table& table) const {
    const std::size_t header = LineAt(PlaceOf(table.source().begin));
    std::size_t first = header;
    while (first > 0 && IsComment(first - 1))
        --first;
    if (first == 0) first = header;
    const std::size_t count = lines_.size();
    std::size_t behind = LineAt(LastPlace(table)) + 1;
    std::size_t below = behind;
    while (below < count && IsComment(below))
        ++below;
    // A comment right above the next header is that header's.
    if (below == count || !IsHeader(below)) behind = below;
    while (behind < count && IsBlank(behind))
        ++behind;
    // What follows the last of all, if that, are the blank lines above it.
    if (behind >= count) {
        while (first > 0 && IsBlank(first - 1))
            --first;
    }
    return {LineBegin(first), LineBegin(behind)};
}

}  // namespace zorvel
