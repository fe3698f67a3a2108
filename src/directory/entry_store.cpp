#include "directory/entry_store.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
constexpr std::size_t kLarge =
    kBlockSize / 8;  // what is larger gets a block of its own, so that little is wasted
constexpr std::size_t kFirstTable = 1024;

// Numbers are stored seven bits a byte, the lowest first; the high bit says that more follow.
constexpr std::size_t kMaxNumberSize = 10;

std::size_t WriteNumber(std::uint64_t number, char* to) {
    std::size_t size = 0;
    for (; number >= 0x80; number >>= 7)
        to[size++] = static_cast<char>(number | 0x80);
    to[size++] = static_cast<char>(number);
    return size;
}

std::uint64_t ReadNumber(const char*& from) {
    std::uint64_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(*from++);
        number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
        if (byte < 0x80) return number;
    }
}

// FNV-1a over the upper-case name, begun with the parent's number; the final step spreads it over the low
// bits.
std::uint32_t HashOf(EntryIndex parent, std::string_view name) {
    std::uint64_t hash = 0xCBF29CE484222325 ^ (parent * 0x9E3779B97F4A7C15);
    for (const char character : name) {
        hash = (hash ^ static_cast<unsigned char>(UpperChar(character))) * 0x100000001B3;
    }
    return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

}  // namespace

void PackedValues::Append(std::uint32_t attribute, std::string_view value) {
    std::array<char, 2 * kMaxNumberSize> head{};
    std::size_t size = WriteNumber(attribute, head.data());
    size += WriteNumber(value.size(), head.data() + size);
    bytes_.append(head.data(), size);
    bytes_ += value;
}

bool PackedValues::Take(std::string_view& bytes, std::uint32_t& attribute, std::string_view& value) {
    if (bytes.empty()) return false;
    const char* at = bytes.data();
    attribute = static_cast<std::uint32_t>(ReadNumber(at));
    const std::size_t size = ReadNumber(at);
    value = {at, size};
    bytes.remove_prefix(static_cast<std::size_t>(at - bytes.data()) + size);
    return true;
}

EntryStore::EntryStore() : entries_(1), table_(kFirstTable) {}

std::string_view EntryStore::Stored(const char* text) {
    if (text == nullptr) return {};
    const std::size_t size = ReadNumber(text);
    return {text, size};
}

const char* EntryStore::Store(std::string_view bytes) {
    std::array<char, kMaxNumberSize> head{};
    const std::size_t head_size = WriteNumber(bytes.size(), head.data());
    const std::size_t size = head_size + bytes.size();
    std::string& block = BlockFor(size);
    const std::size_t at = block.size();
    block.append(head.data(), head_size);
    block += bytes;
    return block.data() + at;
}

// A block that takes `size` bytes more.
std::string& EntryStore::BlockFor(std::size_t size) {
    const bool large = size > kLarge;
    std::deque<std::string>& blocks = large ? large_blocks_ : blocks_;
    if (large || blocks.empty() || blocks.back().capacity() - blocks.back().size() < size) {
        blocks.emplace_back().reserve(large ? size : kBlockSize);
    }
    return blocks.back();
}

// The slot of the table that holds a child, or the empty slot where it would stand.
std::size_t EntryStore::SlotOf(EntryIndex parent, std::string_view name, std::uint32_t hash) const {
    const std::size_t mask = table_.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        const auto [slot_hash, entry] = table_[slot];
        if (entry == kNoEntry) return slot;
        if (slot_hash != hash || entries_[entry].parent != parent) continue;
        if (EqualIgnoringCase(this->name(entry), name)) return slot;
    }
}

void EntryStore::GrowTable() {
    std::vector<Slot> old(table_.size() * 2);
    old.swap(table_);
    const std::size_t mask = table_.size() - 1;
    for (const Slot& taken : old) {
        if (taken.entry == kNoEntry) continue;
        std::size_t slot = taken.hash & mask;
        while (table_[slot].entry != kNoEntry)
            slot = (slot + 1) & mask;
        table_[slot] = taken;
    }
}

EntryIndex EntryStore::Add(EntryIndex parent, std::string_view name, bool findable) {
    if (entries_.size() >= kNoEntry) throw Error(errors::kOutOfMemory);
    if ((table_used_ + 1) * 4 > table_.size() * 3) GrowTable();
    const EntryIndex entry = size();
    Record& record = entries_.emplace_back();
    record.parent = parent;
    record.name = Store(name);
    if (!findable) return entry;
    const std::uint32_t hash = HashOf(parent, name);
    table_[SlotOf(parent, name, hash)] = {hash, entry};
    ++table_used_;
    const auto backslashes = static_cast<std::size_t>(std::count(name.begin(), name.end(), '\\'));
    if (backslashes > 0) {
        std::size_t& most = backslashes_[parent];
        most = std::max(most, backslashes);
    }
    return entry;
}

void EntryStore::Place(EntryIndex entry) {
    Record& record = entries_[entry];
    record.placed = true;
    if (record.parent == kNoEntry) return;
    Record& parent = entries_[record.parent];
    (parent.last_child == kNoEntry ? parent.first_child : entries_[parent.last_child].next_sibling) = entry;
    parent.last_child = entry;
}

void EntryStore::SetValues(EntryIndex entry, const PackedValues& values) {
    if (!values.bytes().empty()) entries_[entry].values = Store(values.bytes());
}

EntryIndex EntryStore::FindChild(EntryIndex parent, std::string_view name) const {
    return table_[SlotOf(parent, name, HashOf(parent, name))].entry;
}

std::size_t EntryStore::BackslashesBelow(EntryIndex parent) const {
    const auto found = backslashes_.find(parent);
    return found == backslashes_.end() ? 0 : found->second;
}

}  // namespace zorvel
