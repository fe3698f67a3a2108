// Lines of rich text in the formats that other programs take from the clipboard.
#pragma once

#include <cstddef>
#include <string>

#include "viewers/rich_lines.h"

namespace zorvel {

// Each takes the part [begin, end) of the text, within 0 and text().size().

// UTF-8, lines ended by a line feed.
std::string LinesAsText(const RichLines& lines, std::size_t begin, std::size_t end);
// UTF-8, a "pre" element with the formats as styles.
std::string LinesAsHtml(const RichLines& lines, std::size_t begin, std::size_t end);
// Rich text in plain ASCII; ReadRichText gives the same lines back.
std::string LinesAsRtf(const RichLines& lines, std::size_t begin, std::size_t end);

}  // namespace zorvel
