// The one way stream bytes are read: every read lies within the bytes, or raises error 9.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/error.h"

namespace zorvel {

class StreamCursor {
  public:
    StreamCursor() = default;
    explicit StreamCursor(std::string_view bytes) : bytes_(bytes) {}

    // The unsigned byte, or the 16-bit word stored low byte first, at `offset` from the cursor. Does not
    // move.
    std::uint8_t ByteAt(std::size_t offset) const {
        if (offset >= bytes_.size()) throw Error(errors::kSubscript);
        return static_cast<std::uint8_t>(bytes_[offset]);
    }
    std::uint16_t WordAt(std::size_t offset) const {
        const unsigned low = ByteAt(offset);
        const unsigned high = ByteAt(offset + 1);
        return static_cast<std::uint16_t>(low | high << 8U);
    }

    // The next `size` bytes, and moves past them.
    std::string_view Take(std::size_t size) {
        if (size > bytes_.size()) throw Error(errors::kSubscript);
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return taken;
    }
    // A length slot: four bytes of which the first holds the length, or the first two.
    std::uint8_t TakeByteSlot() { return StreamCursor(Take(kSlotSize)).ByteAt(0); }
    std::uint16_t TakeWordSlot() { return StreamCursor(Take(kSlotSize)).WordAt(0); }
    // A string after the slot with its length.
    std::string_view TakeString() { return Take(TakeByteSlot()); }
    std::string_view TakeLongString() { return Take(TakeWordSlot()); }

    // Hides all but the next `size` bytes; fewer bytes stay as they are.
    void Limit(std::size_t size) { bytes_ = bytes_.substr(0, size); }

  private:
    static constexpr std::size_t kSlotSize = 4;

    std::string_view bytes_;
};

}  // namespace zorvel
