#include "batch/field.h"

#include <algorithm>

#include "platform/code_page.h"

namespace zorvel {

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
