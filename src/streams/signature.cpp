#include "streams/signature.h"

#include <limits>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

std::int32_t Within32Bits(std::int64_t sum) {
    if (sum > std::numeric_limits<std::int32_t>::max() || sum < std::numeric_limits<std::int32_t>::min()) {
        throw Error(errors::kOverflow);
    }
    return static_cast<std::int32_t>(sum);
}

}  // namespace

std::int32_t ConvertToSig(std::string& text) {
    MakeUpperCase(text);
    std::int64_t sum = 0;
    for (const char character : text)
        sum += static_cast<unsigned char>(character);
    return Within32Bits(sum);
}

std::int32_t AddSignature(std::int32_t total, std::int32_t signature) {
    return Within32Bits(std::int64_t{total} + signature);
}

}  // namespace zorvel
