// The objects of a tree, packed for trees of a million objects and for streams of gigabytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zorvel {

using EntryIndex = std::uint32_t;
inline constexpr EntryIndex kRootEntry = 0;
inline constexpr EntryIndex kNoEntry = 0xFFFFFFFF;

// The values of one object, one after the other, as they are stored.
class PackedValues {
  public:
    // Appends a value of `attribute` (a number that the owner of the store understands).
    void Append(std::uint32_t attribute, std::string_view value);
    std::string_view bytes() const { return bytes_; }
    void Clear() { bytes_.clear(); }

    // Takes the first value off stored `bytes`; false when there is none left.
    static bool Take(std::string_view& bytes, std::uint32_t& attribute, std::string_view& value);

  private:
    std::string bytes_;
};

// Objects are numbered in the order in which they are added; the root is there from the start. An object
// belongs to its parent's children only when it has been placed, so that their order is the order of placing.
class EntryStore {
  public:
    EntryStore();

    // The number of objects, the root included.
    EntryIndex size() const { return static_cast<EntryIndex>(entries_.size()); }

    // Adds an object. One that is not `findable` is never returned by FindChild. `name` is not empty.
    // Raises error 7 when the numbers are used up.
    EntryIndex Add(EntryIndex parent, std::string_view name, bool findable = true);
    // Makes an object the last child of its parent.
    void Place(EntryIndex entry);
    bool IsPlaced(EntryIndex entry) const { return entries_[entry].placed; }
    void SetValues(EntryIndex entry, const PackedValues& values);
    // A number of the owner's, 0 at first.
    void SetClass(EntryIndex entry, std::uint32_t class_number) {
        entries_[entry].class_number = class_number;
    }

    // The child of `parent` with a name, in any case; kNoEntry when there is none. Placed or not.
    EntryIndex FindChild(EntryIndex parent, std::string_view name) const;
    // The greatest number of "\" in the name of a child of `parent`.
    std::size_t BackslashesBelow(EntryIndex parent) const;

    EntryIndex parent(EntryIndex entry) const { return entries_[entry].parent; }
    EntryIndex first_child(EntryIndex entry) const { return entries_[entry].first_child; }
    EntryIndex next_sibling(EntryIndex entry) const { return entries_[entry].next_sibling; }
    std::uint32_t class_number(EntryIndex entry) const { return entries_[entry].class_number; }
    std::string_view name(EntryIndex entry) const { return Stored(entries_[entry].name); }
    // The values of an object, for PackedValues::Take.
    std::string_view values(EntryIndex entry) const { return Stored(entries_[entry].values); }

  private:
    struct Record {
        EntryIndex parent = kNoEntry;
        EntryIndex first_child = kNoEntry;
        EntryIndex last_child = kNoEntry;
        EntryIndex next_sibling = kNoEntry;
        std::uint32_t class_number = 0;
        bool placed = false;
        const char* name = nullptr;    // the number of bytes, and the bytes
        const char* values = nullptr;  // likewise; null when there are none
    };

    // The hash stands beside the number, so that searches do not touch the objects that they pass over.
    struct Slot {
        std::uint32_t hash = 0;
        EntryIndex entry = kNoEntry;
    };

    static std::string_view Stored(const char* text);
    const char* Store(std::string_view bytes);
    std::string& BlockFor(std::size_t size);
    std::size_t SlotOf(EntryIndex parent, std::string_view name, std::uint32_t hash) const;
    void GrowTable();

    std::deque<Record> entries_;
    // Filled within what was reserved for them, so that the bytes stay where they are.
    std::deque<std::string> blocks_;
    std::deque<std::string> large_blocks_;
    std::vector<Slot> table_;  // open addressing by parent and upper-case name; a power of two
    std::size_t table_used_ = 0;
    std::unordered_map<EntryIndex, std::size_t> backslashes_;  // for the parents of names that hold any
};

}  // namespace zorvel
