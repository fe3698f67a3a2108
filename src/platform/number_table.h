// A table of numbers found by what they stand for, which their owner holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zorvel {

// Numbers by the hash of what they stand for: open addressing over a power of two of slots. The hash stands
// beside the number, so that searches do not touch the objects that they pass over.
class NumberTable {
  public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    // The number with this hash for which `matches`, a function of a number, says true; kNone without one.
    template <typename Matches>
    std::uint32_t Find(std::uint32_t hash, const Matches& matches) const {
        if (slots_.empty()) return kNone;
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash & mask; slots_[at].number != kNone; at = (at + 1) & mask) {
            if (slots_[at].hash == hash && matches(slots_[at].number)) return slots_[at].number;
        }
        return kNone;
    }
    // Adds a number, which is not kNone; Find gives the first added of those that match.
    void Insert(std::uint32_t hash, std::uint32_t number);
    bool empty() const { return used_ == 0; }
    void Clear();

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = kNone;
    };

    static bool IsFree(const Slot& slot) { return slot.number == kNone; }
    void Put(const Slot& slot);

    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};

}  // namespace zorvel
