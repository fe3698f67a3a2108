#include "directory/ldif_source.h"

#include <system_error>
#include <utility>

#include "directory/class_filter.h"
#include "directory/ldif_tree.h"
#include "directory/names.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// An entry's id: the number of the reading above that of the object, and above both what the directory says.
constexpr unsigned kReadingShift = 32;
constexpr std::uint64_t kReadings = std::uint64_t{1} << 24;

}  // namespace

LdifSource::LdifSource(const Files& files, std::string tree, std::string ldif)
    : files_(files),
      tree_(std::move(tree)),
      ldif_(std::move(ldif)),
      names_([this](std::string_view dn) { return objects_->FullNameOfDN(dn); }) {}

void LdifSource::Fail(const Error& error) {
    failure_ = error.detail();
    throw Error(errors::kDirectoryUnreadable).With(*failure_);
}

std::optional<LdifSource::FileStamp> LdifSource::Stamp() const {
    std::error_code error;
    const std::filesystem::path path = files_.Resolve(ldif_);
    const FileStamp stamp{std::filesystem::last_write_time(path, error),
                          std::filesystem::file_size(path, error)};
    return error ? std::nullopt : std::optional(stamp);
}

// The tree's objects, which are read now unless they have been.
const MemoryTree& LdifSource::Loaded() {
    if (objects_) return *objects_;
    if (failure_) throw Error(errors::kDirectoryUnreadable).With(*failure_);
    try {
        stamp_ = Stamp();
        objects_ = LoadLdifTree(files_, ldif_);
    } catch (const Error& error) {
        Fail(error);
    }
    reading_ = (reading_ + 1) % kReadings;
    found_ = kNoEntry;
    read_ = kNoEntry;
    names_.Clear();
    return *objects_;
}

void LdifSource::MakeCurrent(bool root) {
    if (root) {
        failure_.reset();
        const std::optional<FileStamp> stamp = objects_ ? Stamp() : std::nullopt;
        if (stamp && stamp != stamp_) objects_.reset();
    }
    if (failure_) throw Error(errors::kDirectoryUnreadable).With(*failure_);
    if (objects_) return;
    try {
        files_.Open(ldif_);
    } catch (const Error& error) {
        Fail(error);
    }
}

EntryIndex LdifSource::Locate(std::string_view path_or_name) {
    const MemoryTree& objects = Loaded();
    if (found_ != kNoEntry && found_text_ == path_or_name) return found_;
    const std::optional<PathParts> parts = SplitPath(path_or_name);
    const EntryIndex entry = parts ? objects.FindPath(parts->components) : objects.FindFullName(path_or_name);
    if (entry == kNoEntry) return kNoEntry;
    found_text_ = path_or_name;
    found_ = entry;
    return entry;
}

EntryIndex LdifSource::IndexOf(const Entry& entry) const {
    const auto index = static_cast<EntryIndex>(entry.id);
    const bool known =
        objects_ && (entry.id >> kReadingShift) % kReadings == reading_ && objects_->Holds(index);
    if (!known) throw Error(errors::kNoSuchObject).Within(entry.path);
    return index;
}

Entry LdifSource::MakeEntry(EntryIndex entry) const {
    return {reading_ << kReadingShift | entry, std::string(objects_->ShortName(entry)),
            JoinPath(tree_, objects_->Components(entry)), objects_->ClassName(entry)};
}

std::optional<Entry> LdifSource::Find(std::string_view path_or_name) {
    const EntryIndex entry = Locate(path_or_name);
    return entry == kNoEntry ? std::nullopt : std::optional(MakeEntry(entry));
}

std::optional<std::string> LdifSource::FindFullName(std::string_view path_or_name) {
    const EntryIndex entry = Locate(path_or_name);
    return entry == kNoEntry ? std::nullopt : std::optional(objects_->FullName(entry));
}

std::vector<Entry> LdifSource::Entries(std::string_view path, std::string_view classes) {
    const EntryIndex parent = Locate(path);
    if (parent == kNoEntry) throw Error(errors::kNoSuchObject).Within(path);
    const std::string parent_path =
        JoinPath(tree_, parent == kRootEntry ? "" : objects_->Components(parent) + '\\');
    const ClassFilter filter(classes);
    std::vector<Entry> entries;
    for (EntryIndex child = objects_->FirstChild(parent); child != kNoEntry;
         child = objects_->NextSibling(child)) {
        const std::string& class_name = objects_->ClassName(child);
        if (!filter.Passes(class_name)) continue;
        std::string name(objects_->ShortName(child));
        std::string child_path = parent_path + name;
        entries.push_back(
            {reading_ << kReadingShift | child, std::move(name), std::move(child_path), class_name});
    }
    return entries;
}

std::string LdifSource::FullNameOf(const Entry& entry) {
    return objects_->FullName(IndexOf(entry));
}

// The stored values of an attribute; none when the object does not hold it.
std::vector<std::string_view> LdifSource::ValuesOf(EntryIndex entry, std::uint32_t attribute) const {
    return entry == read_ ? read_attributes_.Of(attribute) : objects_->ReadAttribute(entry, attribute);
}

std::vector<std::string> LdifSource::AttributeNames(const Entry& entry) {
    const EntryIndex index = IndexOf(entry);
    if (index != read_) {
        read_ = kNoEntry;  // until it is read whole
        objects_->ReadAttributes(index, read_attributes_);
        read_ = index;
    }
    std::vector<std::string> names;
    names.reserve(read_attributes_.order.size());
    for (const std::uint32_t attribute : read_attributes_.order)
        names.push_back(objects_->AttributeName(attribute));
    return names;
}

std::string_view LdifSource::AttributeSyntax(const Entry& entry, std::string_view attribute) {
    IndexOf(entry);
    const std::uint32_t number = objects_->FindAttribute(attribute);
    const bool known = number != MemoryTree::kNoAttribute;
    return SyntaxName(known ? objects_->AttributeSyntax(number) : Syntax::kString);
}

LdifSource::HeldValues LdifSource::ReadValues(const Entry& entry, std::string_view attribute) const {
    const EntryIndex index = IndexOf(entry);
    const std::uint32_t number = objects_->FindAttribute(attribute);
    std::vector<std::string_view> values = ValuesOf(index, number);
    if (values.empty()) throw Error(errors::kNoSuchValue).Within(entry.path + ", " + std::string(attribute));
    return {objects_->AttributeSyntax(number), std::move(values)};
}

std::vector<std::string> LdifSource::AttributeValues(const Entry& entry, std::string_view attribute) {
    const HeldValues held = ReadValues(entry, attribute);
    return ValueTexts(names_, held.syntax, held.values);
}

std::vector<std::string> LdifSource::ReferencedNames(const Entry& entry, std::string_view attribute) {
    const auto [syntax, values] = ReadValues(entry, attribute);
    std::vector<std::string> names;
    MemoryTree::LastContainer container;
    for (const std::string_view value : values) {
        const EntryIndex object = syntax == Syntax::kName ? objects_->FindDN(value, container) : kNoEntry;
        if (object != kNoEntry) {
            names.push_back(objects_->FullName(object));
            continue;
        }
        for (const std::string& text : ValueTexts(names_, syntax, {value})) {
            if (const auto named = FindFullName(text)) names.push_back(*named);
        }
    }
    return names;
}

std::optional<StreamBytes> LdifSource::Stream(std::string_view path_or_name, std::string_view attribute) {
    const EntryIndex entry = Locate(path_or_name);
    if (entry == kNoEntry) return std::nullopt;
    const std::uint32_t number = objects_->FindAttribute(attribute);
    const std::vector<std::string_view> values = ValuesOf(entry, number);
    if (values.empty() || objects_->AttributeSyntax(number) != Syntax::kStream) return std::nullopt;
    return StreamBytes{objects_, values.front()};
}

}  // namespace zorvel
