#include "platform/number_table.h"

#include <algorithm>

namespace zorvel {

void NumberTable::Insert(std::uint32_t hash, std::uint32_t number) {
    constexpr std::size_t kFirstSlots = 64;
    if ((used_ + 1) * 4 > slots_.size() * 3) {
        std::vector<Slot> old(std::max(slots_.size() * 2, kFirstSlots));
        old.swap(slots_);
        // From a free slot on, so that no run of taken ones is cut in two and comes in another order.
        std::rotate(old.begin(), std::find_if(old.begin(), old.end(), IsFree), old.end());
        for (const Slot& slot : old) {
            if (!IsFree(slot)) Put(slot);
        }
    }
    Put({hash, number});
    ++used_;
}

void NumberTable::Put(const Slot& slot) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = slot.hash & mask;
    while (!IsFree(slots_[at]))
        at = (at + 1) & mask;
    slots_[at] = slot;
}

void NumberTable::Clear() {
    slots_.clear();
    used_ = 0;
}

}  // namespace zorvel
