#include "analysis/fingerprint.h"

#include "platform/hex.h"
#include "streams/signature.h"

namespace zorvel {

void SignatureSet::Add(Signature signature, std::int32_t value) {
    std::int32_t& sum = sums_[static_cast<std::size_t>(signature)];
    sum = AddSignature(sum, value);
}

std::string SignatureSet::AppFingerPrint() const {
    std::string text;
    for (const std::int32_t sum : sums_) {
        if (!text.empty()) text += '-';
        for (int shift = 28; shift >= 0; shift -= 4)
            text += kHexDigits[static_cast<std::uint32_t>(sum) >> shift & 0xFU];
    }
    return text;
}

}  // namespace zorvel
