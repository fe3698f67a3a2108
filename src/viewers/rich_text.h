// The reader of rich text (RTF): the log viewer's file, Find results, and the documents that ship.
//
// It hands out text in runs of one character format, and the end of each paragraph, in the form in which a
// document builder takes them: UTF-8 in which a tab is a tab, a line break within a paragraph U+2028, and no
// other control character stands.
//
// Rich text made of foreign text holds braces that were never escaped. A brace group that does not begin with
// a control word is text with its braces, and so is a brace without its counterpart.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace zorvel {

enum class FontFamily { kUnknown, kRoman, kSwiss, kModern };

struct RichTextFont {
    std::string name;  // UTF-8; empty when the file does not tell
    FontFamily family = FontFamily::kUnknown;
};

struct RichTextColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const RichTextColour&) const = default;
};

struct CharacterFormat {
    const RichTextFont* font = nullptr;  // never null in a run; lives as long as the reading
    int half_points = 24;                // the size, 2 to 3276
    std::optional<RichTextColour> colour;
    std::optional<RichTextColour> background;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool operator==(const CharacterFormat&) const = default;
};

enum class Alignment { kLeft, kCentre, kRight };

// Lengths are twips (1/20 point), cut to 22 inches either way.
struct ParagraphFormat {
    Alignment alignment = Alignment::kLeft;
    int left_indent = 0;
    int first_indent = 0;  // of the first line, added to left_indent
    int space_before = 0;
    int space_after = 0;
    int tab_width = 720;  // the distance of tab stops, the same in a whole document
    bool operator==(const ParagraphFormat&) const = default;
};

class RichTextSink {
  public:
    virtual ~RichTextSink() = default;
    // More text of the current paragraph; never empty.
    virtual void Text(std::string_view utf8, const CharacterFormat& format) = 0;
    // The current paragraph, which may be empty, is complete.
    virtual void EndParagraph(const ParagraphFormat& format) = 0;
};

// Reads `rtf`, bytes of Windows-1252, into `sink`. What is not understood is passed over; damaged or
// truncated input gives what is there. Time is in proportion to the input's size, memory to its longest run.
void ReadRichText(std::string_view rtf, RichTextSink& sink);

// Reads the file `path`. Raises error 53, 70, 75 or 76.
void ReadRichTextFile(const Files& files, std::string_view path, RichTextSink& sink);

}  // namespace zorvel
