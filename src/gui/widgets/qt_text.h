// Text between the core (single bytes of the code page) and the windows (UTF-16).
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace zorvel {

// Text of the core as a window shows it; never fails.
QString ToQString(std::string_view text);

// `text` as a tool tip that shows it character by character. Unguarded, a name that looks like markup would
// be read as such.
QString PlainToolTip(const QString& text);

// What the user entered as text of the core; a character without a code becomes "?".
std::string FromQString(const QString& text);

// What is looked for as text of the core; empty when it has characters that no text can hold.
std::string NeedleText(const QString& needle);

}  // namespace zorvel
