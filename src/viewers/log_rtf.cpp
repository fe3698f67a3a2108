#include "viewers/log_rtf.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "shell/text_records.h"

namespace zorvel {
namespace {

// Courier is font 2, black colour 1, red 6 and yellow 7.
constexpr std::string_view kHead =
    "{\\rtf1\\ansi\\deff0\\deftab720\r\n"
    "{\\fonttbl\r\n"
    "{\\f0\\fswiss MS Sans Serif;}\r\n"
    "{\\f1\\froman\\fcharset2 Symbol;}\r\n"
    "{\\f2\\fmodern\\fprq1 Courier;}\r\n"
    "{\\f3\\froman Times New Roman;}}\r\n"
    "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue255;\\red0\\green255\\blue255;"
    "\\red0\\green255\\blue0;\\red255\\green0\\blue255;\\red255\\green0\\blue0;\\red255\\green255\\blue0;"
    "\\red255\\green255\\blue255;\\red0\\green0\\blue128;\\red0\\green128\\blue128;\\red0\\green128\\blue0;"
    "\\red128\\green0\\blue128;\\red128\\green0\\blue0;\\red128\\green128\\blue0;"
    "\\red128\\green128\\blue128;\\red192\\green192\\blue192;}\r\n"
    "\\deflang2057\\pard\r\n";
constexpr std::string_view kTail = "}\r\n";

// A message follows "dd/mm/yyyy hh:mm:ss" and a blank; one of these at its place tells what it is.
constexpr std::size_t kMessageAt = 20;
constexpr std::string_view kError = "ERROR";
constexpr std::string_view kWarning = "WARNI";

std::string_view MessageOf(std::string_view line) {
    return line.substr(std::min(kMessageAt, line.size()));
}

std::string_view Prefix(std::string_view line) {
    if (MessageOf(line).starts_with(kError)) return "\\plain\\f2\\fs20\\highlight6\\cf1 ";
    if (MessageOf(line).starts_with(kWarning)) return "\\plain\\f2\\fs20\\highlight7\\cf1 ";
    return "\\plain\\f2\\fs20 ";
}

}  // namespace

bool IsProblem(std::string_view line) {
    return MessageOf(line).starts_with(kError) || MessageOf(line).starts_with(kWarning);
}

void AppendLogLine(std::string& rtf, std::string_view line) {
    rtf += Prefix(line);
    for (std::size_t length = line.find('\\'); length != std::string_view::npos; length = line.find('\\')) {
        rtf += line.substr(0, length + 1);
        rtf += '\\';
        line.remove_prefix(length + 1);
    }
    rtf += line;
    rtf += "\\par\r\n";
}

void WriteLogAsRtf(InputFile log, const RtfWriter& write) {
    write(kHead);
    LineReader reader(std::move(log), LineEnd::kAny);
    std::string line;
    std::string rtf;
    while (reader.Next(line)) {
        rtf.clear();
        AppendLogLine(rtf, line);
        write(rtf);
    }
    write(kTail);
}

}  // namespace zorvel
