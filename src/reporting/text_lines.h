// Breaking a text into lines of a width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/page_canvas.h"

namespace zorvel {

// The characters [begin, end) of a text.
struct TextLine {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// The lines of `text` in a font of `size` points, none wider than `width` points unless a single character
// is. Lines end at LF, behind a blank or what parts the names of a path, and within a word that has no room.
// Never empty.
void BreakLines(std::string_view text, const FontFace& face, double size, double width,
                std::vector<TextLine>& lines);

// `text` on one line of at most `width` points: cut, "..." the last of it, when it is longer or has more
// lines.
std::string CutToLine(std::string_view text, const FontFace& face, double size, double width);

}  // namespace zorvel
