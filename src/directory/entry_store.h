// The objects of a tree, packed for trees of a million objects and for streams of gigabytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "directory/byte_buffer.h"
#include "directory/names.h"
#include "platform/number_table.h"

namespace zorvel {

using EntryIndex = std::uint32_t;
inline constexpr EntryIndex kRootEntry = 0;
inline constexpr EntryIndex kNoEntry = 0xFFFFFFFF;

// The values of one object, one after the other, as they are stored.
class PackedValues {
  public:
    // From how many bytes on a value is worth a buffer of its own.
    static constexpr std::size_t kLarge = std::size_t{1024} * 1024;

    // Appends a value of `attribute` (a number that the owner of the store understands).
    void Append(std::uint32_t attribute, std::string_view value);
    // Likewise, but keeps the buffer of the value instead of a copy.
    void AppendLarge(std::uint32_t attribute, ByteBuffer value);
    void Clear();

    // Takes the first value off stored `bytes`; false when there is none left.
    static bool Take(std::string_view& bytes, std::uint32_t& attribute, std::string_view& value);

  private:
    friend class EntryStore;

    ByteBuffer bytes_;
    std::vector<ByteBuffer> large_;
};

// The hash of a name below an object, for a name that grows at its end.
class NameHash {
  public:
    explicit NameHash(EntryIndex parent);
    // Adds a part of the name, in any case.
    void Add(std::string_view part);
    std::uint32_t value() const { return static_cast<std::uint32_t>(hash_ ^ hash_ >> 32); }

  private:
    std::uint64_t hash_;
};

// Objects are numbered in the order in which they are added; the root is there from the start. An object
// belongs to its parent's children only when it has been placed, so that their order is the order of placing.
// A foreign name is one with characters that the code page lacks. Objects with such names are told apart by
// the names in UTF-8, and get a text of the code page, unlike those of all their siblings, at the end.
class EntryStore {
  public:
    EntryStore();

    // The number of objects, the root included.
    EntryIndex size() const { return static_cast<EntryIndex>(entries_.size()); }

    // Adds an object whose name no sibling has. `name` is not empty. Raises error 7 when the numbers are used
    // up.
    EntryIndex Add(EntryIndex parent, std::string_view name);
    // Likewise, for an object with a foreign name in UTF-8. It has no name until NameForeign.
    EntryIndex AddForeign(EntryIndex parent, std::string_view utf8_name);
    // Names the objects that AddForeign added: the text with "?" for what the code page lacks and, when a
    // sibling has that name, "~2", "~3", ... behind it, the object first added first. Call it once, when all
    // objects have been added.
    void NameForeign();
    // Changes the spelling of a name, not its letters.
    void Respell(EntryIndex entry, std::string_view name) { entries_[entry].name = Store(name); }
    // Makes an object the last child of its parent.
    void Place(EntryIndex entry);
    bool IsPlaced(EntryIndex entry) const { return entries_[entry].placed; }
    // Gives an object its values, which are no longer in `values` then.
    void SetValues(EntryIndex entry, PackedValues& values);
    // A number of the owner's, 0 at first.
    void SetClass(EntryIndex entry, std::uint32_t class_number) {
        entries_[entry].class_number = class_number;
    }

    // The child of `parent` with a name, in any case; kNoEntry when there is none. Placed or not.
    EntryIndex FindChild(EntryIndex parent, std::string_view name) const;
    // Likewise, when the name's hash is at hand.
    EntryIndex FindChild(EntryIndex parent, std::string_view name, const NameHash& hash) const;
    // The child that a component of a DN names, be the name foreign or not. In a foreign one, too, the case
    // of letters that the code page holds does not matter.
    EntryIndex FindChild(EntryIndex parent, const NamingComponent& component) const;
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
        const char* name = nullptr;    // a packed text; null when there is none
        const char* values = nullptr;  // likewise
    };
    struct ForeignName {
        EntryIndex entry;
        const char* utf8_name;  // a packed text
    };

    static std::string_view Stored(const char* text);
    const char* Store(std::string_view bytes);
    const char* Keep(ByteBuffer bytes);
    ByteBuffer& BlockFor(std::size_t size);
    EntryIndex FindForeign(EntryIndex parent, std::string_view utf8_name) const;
    EntryIndex AddNameless(EntryIndex parent);
    void SetName(EntryIndex entry, std::string_view name);

    std::deque<Record> entries_;
    // Filled within what was reserved for them, so that the bytes stay where they are.
    std::vector<ByteBuffer> blocks_;
    std::vector<ByteBuffer> large_blocks_;
    NumberTable names_;  // objects by parent and upper-case name
    std::vector<ForeignName> foreign_names_;
    NumberTable foreign_;  // indexes of foreign_names_, by parent and folded name
    std::unordered_map<EntryIndex, std::size_t> backslashes_;  // for the parents of names that hold any
};

}  // namespace zorvel
