// Rich text as lines of one long text, for views that show the few lines in sight of very many.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "viewers/rich_text.h"

namespace zorvel {

// What such a view shows of a character's format: its font is the view's.
struct LineFormat {
    std::optional<RichTextColour> colour;
    std::optional<RichTextColour> background;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool operator==(const LineFormat&) const = default;
};

// The text [begin, end), all of one format.
struct LineRun {
    std::size_t begin;
    std::size_t end;
    LineFormat format;
    bool operator==(const LineRun&) const = default;
};

// Offsets count bytes of the text, which are characters of Windows-1252. A column is the width of a
// character; a tab reaches to the next column that is a multiple of kTabColumns.
class RichLines final : public RichTextSink {
  public:
    static constexpr std::size_t kTabColumns = 8;

    // Appends the lines of the rich text file `path`. Raises error 53, 70, 75 or 76.
    void ReadFile(const Files& files, std::string_view path);

    // RichTextSink: paragraphs and the line breaks within them make lines.
    void Text(std::string_view utf8, const CharacterFormat& format) override;
    void EndParagraph(const ParagraphFormat& format) override;

    // All lines, each ended by a line feed.
    const std::string& text() const { return text_; }
    // The number of lines.
    std::size_t size() const { return ends_.size(); }
    // The columns of the widest line.
    std::size_t columns() const { return columns_; }
    // The end of the last line.
    std::size_t End() const { return text_.empty() ? 0 : text_.size() - 1; }

    // Where line `line`, counted from 0, begins, and the place of its line feed. `line` < size().
    std::size_t LineBegin(std::size_t line) const { return line == 0 ? 0 : ends_[line - 1] + 1; }
    std::size_t LineEnd(std::size_t line) const { return ends_[line]; }
    std::string_view Line(std::size_t line) const;
    // The line of an offset from 0 to End(); 0 when there is no line.
    std::size_t LineAt(std::size_t offset) const;

    // The column at which the character at `offset` begins.
    std::size_t Column(std::size_t offset) const;
    // The character of a line that covers a column; the line's end when none does.
    std::size_t OffsetAt(std::size_t line, std::size_t column) const;

    // The runs that make up [begin, end).
    std::vector<LineRun> Runs(std::size_t begin, std::size_t end) const;
    // The background of a line whose text has one format only, if it has one.
    std::optional<RichTextColour> Background(std::size_t line) const;

    // The word at an offset, or what stands between two words, as [begin, end) within the line.
    std::pair<std::size_t, std::size_t> WordAt(std::size_t offset) const;

  private:
    struct FormatChange {
        std::size_t begin;
        LineFormat format;
    };
    // The column of a place within a long line.
    struct Milestone {
        std::size_t offset;
        std::size_t column;
    };

    void Append(std::string_view characters);
    void EndLine();
    std::vector<FormatChange>::const_iterator ChangeAt(std::size_t offset) const;

    std::string text_;
    std::vector<std::size_t> ends_;
    std::vector<FormatChange> changes_;  // the first one at the first character
    std::vector<Milestone> milestones_;
    std::size_t next_milestone_ = std::numeric_limits<std::size_t>::max();
    std::size_t column_ = 0;  // behind the text so far, in its line
    std::size_t columns_ = 0;
};

}  // namespace zorvel
