#include "streams/text_helpers.h"

#include <algorithm>

#include "platform/hex.h"

namespace zorvel {
namespace {

constexpr unsigned char kFirstPrintable = 31;  // for IsPrintable; MakePrintable keeps 32 to 126 only

unsigned char Code(char character) {
    return static_cast<unsigned char>(character);
}

void AppendEscaped(std::string_view text, std::string& target) {
    for (const char character : text) {
        if (character == '\'') target += '\'';
        target += character;
    }
}

void AppendPrintable(std::string_view text, std::string& target) {
    for (const char character : text)
        target += Code(character) >= 32 && Code(character) <= 126 ? character : '.';
}

}  // namespace

bool IsPrintable(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](char character) { return Code(character) < kFirstPrintable; });
}

std::string MakePrintable(std::string_view text) {
    std::string printable;
    AppendPrintable(text, printable);
    return printable;
}

std::string MakeHEX(std::string_view text) {
    return ToHex(text);
}

std::string CRLF2LF(std::string_view text) {
    std::string result(text);
    std::erase(result, '\r');
    return result;
}

std::string GetShortName(std::string_view text) {
    return std::string(text.substr(text.rfind('\\') + 1));
}

std::string EscapeQuotes(std::string_view text) {
    std::string escaped;
    AppendEscaped(text, escaped);
    return escaped;
}

std::string_view DisplayForm(std::string_view value, std::string& buffer) {
    const bool printable = IsPrintable(value);
    if (printable && value.find('\'') == std::string_view::npos) return value;
    buffer.clear();
    printable ? AppendEscaped(value, buffer) : AppendPrintable(value, buffer);
    return buffer;
}

}  // namespace zorvel
