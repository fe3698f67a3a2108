#include "analysis/fingerprint.h"

#include "platform/hex.h"
#include "streams/signature.h"

namespace zorvel {

void SignatureSet::Add(Signature signature, std::int32_t value) {
    std::int32_t& sum = sums_[static_cast<std::size_t>(signature)];
    sum = AddSignature(sum, value);
}

std::string SignatureSet::AppFingerPrint() const {
    constexpr std::size_t kGroup = 9;  // eight digits and a "-"
    std::string text(kGroup * sums_.size() - 1, '-');
    for (std::size_t i = 0; i < sums_.size(); ++i) {
        char* digit = text.data() + i * kGroup;
        for (int shift = 28; shift >= 0; shift -= 4)
            *digit++ = kHexDigits[static_cast<std::uint32_t>(sums_[i]) >> shift & 0xFU];
    }
    return text;
}

}  // namespace zorvel
