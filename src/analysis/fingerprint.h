// The fingerprint of an application: a short text that changes with its launch settings and streams.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "analysis/stream_table.h"

namespace zorvel {

// The six signature sums of one application. They start at 0.
class SignatureSet {
  public:
    // Adds to a sum. Raises error 6 when the sum leaves 32 bits; the sum then stays.
    void Add(Signature signature, std::int32_t value);

    // Six groups of eight upper-case hexadecimal digits joined by "-": 53 characters.
    std::string AppFingerPrint() const;

  private:
    std::array<std::int32_t, kSignatureCount> sums_{};
};

}  // namespace zorvel
