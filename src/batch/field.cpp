#include "batch/field.h"

#include <algorithm>

#include "platform/code_page.h"

namespace zorvel {
namespace {

// True for the control characters of the code page, the five codes that it leaves open among them.
bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 ||
           std::string_view("\x7F\x81\x8D\x8F\x90\x9D").find(character) != std::string_view::npos;
}

}  // namespace

std::string Field(std::string_view text) {
    std::string field(text);
    std::replace_if(field.begin(), field.end(), IsControl, ' ');
    return ToUtf8(field);
}

std::string Message(std::string_view text) {
    std::string message(text);
    std::replace(message.begin(), message.end(), '\r', '\n');
    std::replace_if(
        message.begin(), message.end(),
        [](char character) { return character != '\n' && IsControl(character); }, ' ');
    return ToUtf8(message);
}

}  // namespace zorvel
