#include "analysis/fingerprint.h"

#include <array>
#include <cstdio>

#include "streams/signature.h"

namespace zorvel {

void SignatureSet::Add(Signature signature, std::int32_t value) {
    std::int32_t& sum = sums_[static_cast<std::size_t>(signature)];
    sum = AddSignature(sum, value);
}

std::string SignatureSet::AppFingerPrint() const {
    std::string text;
    for (const std::int32_t sum : sums_) {
        std::array<char, 9> digits{};
        std::snprintf(digits.data(), digits.size(), "%08X", static_cast<unsigned>(sum));
        if (!text.empty()) text += '-';
        text += digits.data();
    }
    return text;
}

}  // namespace zorvel
