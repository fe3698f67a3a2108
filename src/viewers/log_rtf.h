// The session log as rich text: errors on red, warnings on yellow.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/input_file.h"

namespace zorvel {

// Called with one piece of the output after the other.
using RtfWriter = std::function<void(std::string_view)>;

// Writes a log, to the end of `log`, as an RTF document of lines ended by CR LF. Passes on the errors of
// reading and of `write`.
void WriteLogAsRtf(InputFile log, const RtfWriter& write);

// True for a line of the log that holds a warning or an error.
bool IsProblem(std::string_view line);

// Appends one line of the log, given without its end, as a line of the document.
void AppendLogLine(std::string& rtf, std::string_view line);

}  // namespace zorvel
