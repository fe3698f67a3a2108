#include "viewers/rich_lines.h"

#include <algorithm>
#include <iterator>

#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::string_view kLineBreak = "\xE2\x80\xA8";  // U+2028

// Bytes between two milestones: columns are counted over no more than these.
constexpr std::size_t kMilestoneDistance = 4096;

bool IsAscii(std::string_view text) {
    unsigned bits = 0;
    for (const char character : text)
        bits |= static_cast<unsigned char>(character);
    return bits < 0x80;
}

// The column behind a character that begins at `column`.
std::size_t ColumnBehind(char character, std::size_t column) {
    return character == '\t' ? column + RichLines::kTabColumns - column % RichLines::kTabColumns : column + 1;
}

std::size_t ColumnBehind(std::string_view text, std::size_t column) {
    if (text.find('\t') == std::string_view::npos) return column + text.size();
    for (const char character : text)
        column = ColumnBehind(character, column);
    return column;
}

enum class CharacterKind { kBlank, kWord, kOther };

CharacterKind KindOf(char character) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte == ' ' || byte == '\t' || byte == 0xA0) return CharacterKind::kBlank;
    const bool word = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                      (byte >= 'a' && byte <= 'z') || byte == '_' || byte >= 0xC0;
    return word ? CharacterKind::kWord : CharacterKind::kOther;
}

}  // namespace

void RichLines::ReadFile(const Files& files, std::string_view path) {
    // No text is longer than what it is made from, and memory that stays untouched costs nothing.
    if (files.Exists(path)) text_.reserve(text_.size() + files.Size(path));
    ReadRichTextFile(files, path, *this);
}

void RichLines::Text(std::string_view utf8, const CharacterFormat& format) {
    const LineFormat line_format{format.colour, format.background, format.bold, format.italic,
                                 format.underline};
    if (changes_.empty() || changes_.back().format != line_format)
        changes_.push_back({text_.size(), line_format});
    if (IsAscii(utf8)) {
        Append(utf8);
        return;
    }
    for (std::size_t end = utf8.find(kLineBreak); end != std::string_view::npos;
         end = utf8.find(kLineBreak)) {
        Append(FromUtf8(utf8.substr(0, end)));
        EndLine();
        utf8.remove_prefix(end + kLineBreak.size());
    }
    Append(FromUtf8(utf8));
}

void RichLines::EndParagraph(const ParagraphFormat&) {
    EndLine();
}

void RichLines::Append(std::string_view characters) {
    if (column_ == 0) next_milestone_ = text_.size() + kMilestoneDistance;
    while (!characters.empty()) {
        const std::size_t length = std::min(characters.size(), next_milestone_ - text_.size());
        column_ = ColumnBehind(characters.substr(0, length), column_);
        text_ += characters.substr(0, length);
        characters.remove_prefix(length);
        if (text_.size() < next_milestone_) continue;
        milestones_.push_back({text_.size(), column_});
        next_milestone_ += kMilestoneDistance;
    }
}

void RichLines::EndLine() {
    columns_ = std::max(columns_, column_);
    column_ = 0;
    ends_.push_back(text_.size());
    text_ += '\n';
}

std::string_view RichLines::Line(std::size_t line) const {
    return std::string_view(text_).substr(LineBegin(line), LineEnd(line) - LineBegin(line));
}

std::size_t RichLines::LineAt(std::size_t offset) const {
    return static_cast<std::size_t>(std::lower_bound(ends_.begin(), ends_.end(), offset) - ends_.begin());
}

std::size_t RichLines::Column(std::size_t offset) const {
    if (ends_.empty()) return 0;
    Milestone from{LineBegin(LineAt(offset)), 0};
    const auto behind =
        std::upper_bound(milestones_.begin(), milestones_.end(), offset,
                         [](std::size_t place, const Milestone& stone) { return place < stone.offset; });
    if (behind != milestones_.begin() && std::prev(behind)->offset > from.offset) from = *std::prev(behind);
    return ColumnBehind(std::string_view(text_).substr(from.offset, offset - from.offset), from.column);
}

std::size_t RichLines::OffsetAt(std::size_t line, std::size_t column) const {
    Milestone at{LineBegin(line), 0};
    const std::size_t end = LineEnd(line);
    const auto first =
        std::upper_bound(milestones_.begin(), milestones_.end(), at.offset,
                         [](std::size_t place, const Milestone& stone) { return place < stone.offset; });
    const auto last =
        std::upper_bound(first, milestones_.end(), end,
                         [](std::size_t place, const Milestone& stone) { return place < stone.offset; });
    const auto behind = std::upper_bound(
        first, last, column, [](std::size_t place, const Milestone& stone) { return place < stone.column; });
    if (behind != first) at = *std::prev(behind);
    for (; at.offset < end; ++at.offset) {
        at.column = ColumnBehind(text_[at.offset], at.column);
        if (at.column > column) break;
    }
    return at.offset;
}

std::vector<RichLines::FormatChange>::const_iterator RichLines::ChangeAt(std::size_t offset) const {
    const auto behind =
        std::upper_bound(changes_.begin(), changes_.end(), offset,
                         [](std::size_t place, const FormatChange& change) { return place < change.begin; });
    return behind == changes_.begin() ? behind : std::prev(behind);
}

std::vector<LineRun> RichLines::Runs(std::size_t begin, std::size_t end) const {
    std::vector<LineRun> runs;
    // Lines without text may stand before the first format.
    if (begin < end && !changes_.empty() && begin < changes_.front().begin) {
        const std::size_t stop = std::min(end, changes_.front().begin);
        runs.push_back({begin, stop, {}});
        begin = stop;
    }
    for (auto change = ChangeAt(begin); begin < end; ++change) {
        const bool last = change == changes_.end() || std::next(change) == changes_.end();
        const std::size_t stop = last ? end : std::min(end, std::next(change)->begin);
        runs.push_back({begin, stop, change == changes_.end() ? LineFormat{} : change->format});
        begin = stop;
    }
    return runs;
}

std::optional<RichTextColour> RichLines::Background(std::size_t line) const {
    if (Line(line).empty()) return std::nullopt;
    const auto change = ChangeAt(LineBegin(line));
    if (std::next(change) != changes_.end() && std::next(change)->begin < LineEnd(line)) return std::nullopt;
    return change->format.background;
}

std::pair<std::size_t, std::size_t> RichLines::WordAt(std::size_t offset) const {
    if (ends_.empty()) return {0, 0};
    const std::size_t line = LineAt(offset);
    if (offset == LineEnd(line)) return {offset, offset};
    const CharacterKind kind = KindOf(text_[offset]);
    std::size_t begin = offset;
    while (begin > LineBegin(line) && KindOf(text_[begin - 1]) == kind)
        --begin;
    std::size_t end = offset + 1;
    while (end < LineEnd(line) && KindOf(text_[end]) == kind)
        ++end;
    return {begin, end};
}

}  // namespace zorvel
