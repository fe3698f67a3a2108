#include "batch/field.h"

#include <algorithm>

#include "platform/code_page.h"

namespace zorvel {

std::string Field(std::string_view text) {
    std::string field(text);
    std::replace_if(field.begin(), field.end(), IsControl, ' ');
    return ToUtf8(field);
}

}  // namespace zorvel
