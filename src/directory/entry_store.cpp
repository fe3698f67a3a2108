#include "directory/entry_store.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
// What is larger gets a block of its own, so that little is wasted.
constexpr std::size_t kLargeText = kBlockSize / 8;
constexpr std::size_t kMaxNumberSize = 10;

// A packed text is a number and its bytes, or a number and a pointer to its bytes; the number is twice the
// size, plus one for a pointer.
void AppendText(ByteBuffer& to, std::string_view text) {
    AppendNumber(to, std::uint64_t{text.size()} * 2);
    to.Append(text);
}

void AppendPointer(ByteBuffer& to, std::string_view text) {
    AppendNumber(to, std::uint64_t{text.size()} * 2 + 1);
    const char* const bytes = text.data();
    to.Append({reinterpret_cast<const char*>(&bytes), sizeof bytes});
}

// The packed text at `at`, which moves past it.
std::string_view TakeText(const char*& at) {
    const std::uint64_t head = TakeNumber(at);
    const auto size = static_cast<std::size_t>(head / 2);
    const char* bytes = at;
    if (head % 2 == 0) {
        at += size;
    } else {
        std::memcpy(&bytes, at, sizeof bytes);
        at += sizeof bytes;
    }
    return {bytes, size};
}

std::uint32_t HashOf(EntryIndex parent, std::string_view name) {
    NameHash hash(parent);
    hash.Add(name);
    return hash.value();
}

// Upper case of the letters that the code page holds; every other byte of the UTF-8 text stays.
std::string FoldUtf8(std::string_view utf8) {
    const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    std::string folded;
    folded.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        std::size_t end = at + 1;
        while (end < utf8.size() && continues(utf8[end]))
            ++end;
        const std::string_view sequence = utf8.substr(at, end - at);
        const std::string character = FromUtf8(sequence);
        const bool coded = character.size() == 1 && character != "?";
        folded += coded ? ToUtf8(UpperCase(character)) : sequence;
        at = end;
    }
    return folded;
}

}  // namespace

// FNV-1a over the name in upper case, begun with the parent's number; value() spreads it over the low bits.
NameHash::NameHash(EntryIndex parent) : hash_(0xCBF29CE484222325 ^ (parent * 0x9E3779B97F4A7C15)) {}

void NameHash::Add(std::string_view part) {
    for (const char character : part)
        hash_ = (hash_ ^ static_cast<unsigned char>(UpperChar(character))) * 0x100000001B3;
}

void PackedValues::Append(std::uint32_t attribute, std::string_view value) {
    AppendNumber(bytes_, attribute);
    AppendText(bytes_, value);
}

void PackedValues::AppendLarge(std::uint32_t attribute, ByteBuffer value) {
    AppendNumber(bytes_, attribute);
    AppendPointer(bytes_, value.view());
    large_.push_back(std::move(value));
}

void PackedValues::Clear() {
    bytes_.Clear();
    large_.clear();
}

bool PackedValues::Take(std::string_view& bytes, std::uint32_t& attribute, std::string_view& value) {
    if (bytes.empty()) return false;
    const char* at = bytes.data();
    attribute = static_cast<std::uint32_t>(TakeNumber(at));
    value = TakeText(at);
    bytes.remove_prefix(static_cast<std::size_t>(at - bytes.data()));
    return true;
}

EntryStore::EntryStore() : entries_(1) {}

std::string_view EntryStore::Stored(const char* text) {
    return text == nullptr ? std::string_view() : TakeText(text);
}

const char* EntryStore::Store(std::string_view bytes) {
    ByteBuffer& block = BlockFor(kMaxNumberSize + bytes.size());
    const std::size_t at = block.size();
    AppendText(block, bytes);
    return block.data() + at;
}

// Stores a large text without copying its bytes.
const char* EntryStore::Keep(ByteBuffer bytes) {
    ByteBuffer& block = BlockFor(kMaxNumberSize + sizeof(char*));
    const std::size_t at = block.size();
    AppendPointer(block, bytes.view());
    large_blocks_.push_back(std::move(bytes));
    return block.data() + at;
}

// A block that takes `size` bytes more.
ByteBuffer& EntryStore::BlockFor(std::size_t size) {
    const bool large = size > kLargeText;
    std::vector<ByteBuffer>& blocks = large ? large_blocks_ : blocks_;
    if (large || blocks.empty() || blocks.back().room() < size) {
        blocks.emplace_back().Reserve(large ? size : kBlockSize);
    }
    return blocks.back();
}

EntryIndex EntryStore::AddNameless(EntryIndex parent) {
    if (entries_.size() >= kNoEntry) throw Error(errors::kOutOfMemory);
    const EntryIndex entry = size();
    entries_.emplace_back().parent = parent;
    return entry;
}

void EntryStore::SetName(EntryIndex entry, std::string_view name) {
    Record& record = entries_[entry];
    record.name = Store(name);
    names_.Insert(HashOf(record.parent, name), entry);
    const auto backslashes = static_cast<std::size_t>(std::count(name.begin(), name.end(), '\\'));
    if (backslashes > 0) {
        std::size_t& most = backslashes_[record.parent];
        most = std::max(most, backslashes);
    }
}

EntryIndex EntryStore::Add(EntryIndex parent, std::string_view name) {
    const EntryIndex entry = AddNameless(parent);
    SetName(entry, name);
    return entry;
}

EntryIndex EntryStore::AddForeign(EntryIndex parent, std::string_view utf8_name) {
    const EntryIndex entry = AddNameless(parent);
    foreign_.Insert(HashOf(parent, FoldUtf8(utf8_name)), static_cast<std::uint32_t>(foreign_names_.size()));
    foreign_names_.push_back({entry, Store(utf8_name)});
    return entry;
}

void EntryStore::NameForeign() {
    // By the object that has a text to itself, the number that the next one with that text tries first.
    std::unordered_map<EntryIndex, std::uint32_t> next_numbers;
    for (const auto& [entry, utf8_name] : foreign_names_) {
        const EntryIndex parent = entries_[entry].parent;
        const std::string text = FromUtf8(Stored(utf8_name));
        const EntryIndex owner = FindChild(parent, text);
        if (owner == kNoEntry) {
            SetName(entry, text);
            continue;
        }
        std::uint32_t& number = next_numbers.try_emplace(owner, 2).first->second;
        std::string numbered;
        do {
            numbered = text + '~' + std::to_string(number++);
        } while (FindChild(parent, numbered) != kNoEntry);
        SetName(entry, numbered);
    }
}

void EntryStore::Place(EntryIndex entry) {
    Record& record = entries_[entry];
    record.placed = true;
    if (record.parent == kNoEntry) return;
    Record& parent = entries_[record.parent];
    (parent.last_child == kNoEntry ? parent.first_child : entries_[parent.last_child].next_sibling) = entry;
    parent.last_child = entry;
}

void EntryStore::SetValues(EntryIndex entry, PackedValues& values) {
    for (ByteBuffer& value : values.large_)
        large_blocks_.push_back(std::move(value));
    ByteBuffer& bytes = values.bytes_;
    if (bytes.size() >= PackedValues::kLarge) {
        bytes.CutTo(0, bytes.size());
        entries_[entry].values = Keep(std::move(bytes));
    } else if (!bytes.empty()) {
        entries_[entry].values = Store(bytes.view());
    }
    values.Clear();
}

EntryIndex EntryStore::FindChild(EntryIndex parent, std::string_view name) const {
    NameHash hash(parent);
    hash.Add(name);
    return FindChild(parent, name, hash);
}

EntryIndex EntryStore::FindChild(EntryIndex parent, std::string_view name, const NameHash& hash) const {
    return names_.Find(hash.value(), [&](EntryIndex entry) {
        return entries_[entry].parent == parent && EqualIgnoringCase(this->name(entry), name);
    });
}

EntryIndex EntryStore::FindChild(EntryIndex parent, const NamingComponent& component) const {
    return component.utf8_name.empty() ? FindChild(parent, component.name)
                                       : FindForeign(parent, component.utf8_name);
}

EntryIndex EntryStore::FindForeign(EntryIndex parent, std::string_view utf8_name) const {
    const std::string folded = FoldUtf8(utf8_name);
    const std::uint32_t found = foreign_.Find(HashOf(parent, folded), [&](std::uint32_t index) {
        const auto& [entry, stored] = foreign_names_[index];
        return entries_[entry].parent == parent && FoldUtf8(Stored(stored)) == folded;
    });
    return found == NumberTable::kNone ? kNoEntry : foreign_names_[found].entry;
}

std::size_t EntryStore::BackslashesBelow(EntryIndex parent) const {
    const auto found = backslashes_.find(parent);
    return found == backslashes_.end() ? 0 : found->second;
}

}  // namespace zorvel
