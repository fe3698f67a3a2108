#include "directory/memory_directory.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "directory/ldif_tree.h"
#include "directory/names.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr int kFailure = 1;
constexpr std::uint32_t kContext = 1;

// Under which kind name the directory knows the objects of a class; all other classes are of the generic
// kind.
struct ClassKind {
    std::string_view class_name;
    std::string_view kind_name;
};
constexpr std::array<ClassKind, 10> kKinds = {{{kApplicationClass, kApplicationClass},
                                               {kAliasClass, kAliasClass},
                                               {"User", "User"},
                                               {"Group", "Group"},
                                               {"NCP Server", "NCP Server"},
                                               {"Workstation", "NCP Server"},
                                               {"Organizational Unit", "Organizational Unit"},
                                               {"Organization", "Organization"},
                                               {"Country", "Country"},
                                               {"Locality", "Locality"}}};

// The names of classes separated by commas.
class ClassFilter {
  public:
    explicit ClassFilter(std::string_view classes) : names_(Split(classes)) {
        const std::vector<std::string_view> containers = Split(kContainerClasses);
        aliases_pass_ = std::any_of(names_.begin(), names_.end(), [&](std::string_view name) {
            return std::find(containers.begin(), containers.end(), name) != containers.end();
        });
    }
    bool Passes(std::string_view class_name) const {
        if (names_.empty() || (aliases_pass_ && class_name == kAliasClass)) return true;
        return std::find(names_.begin(), names_.end(), class_name) != names_.end();
    }

  private:
    static std::vector<std::string_view> Split(std::string_view text) {
        std::vector<std::string_view> parts;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(','), text.size());
            parts.push_back(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        return parts;
    }

    std::vector<std::string_view> names_;
    bool aliases_pass_ = false;
};

}  // namespace

MemoryDirectory::MemoryDirectory(const Files& files, Log& log) : files_(files), log_(log) {}

void MemoryDirectory::RaiseUnreadable(const std::string& reason) const {
    if (on_unreadable) on_unreadable();
    throw Error(errors::kDirectoryUnreadable).With(reason);
}

int MemoryDirectory::NWCallsInit() {
    trees_.clear();
    preferred_.reset();
    initialisation_failure_.clear();
    try {
        DirectoryConfig config = ReadDirectoryConfig(files_);
        preferred_ = std::move(config.preferred);
        for (DirectoryConfig::Tree& tree : config.trees)
            trees_.push_back({std::move(tree), nullptr, 0, {}, {}});
        return 0;
    } catch (const Error& error) {
        initialisation_failure_ = error.detail();
        LogDetail(log_, error);
        return kFailure;
    }
}

int MemoryDirectory::NWNetInit() {
    return 0;
}

int MemoryDirectory::NWDSCreateContextHandle(std::uint32_t& context_handle) {
    context_handle = kContext;
    return 0;
}

int MemoryDirectory::NWGetPreferredConnName(std::string& name) {
    if (!preferred_) return kFailure;
    name = *preferred_;
    return 0;
}

int MemoryDirectory::TreeCount() {
    return static_cast<int>(trees_.size());
}

std::string MemoryDirectory::TreeName(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= trees_.size()) throw Error(errors::kSubscript);
    return trees_[static_cast<std::size_t>(index)].config.name;
}

MemoryDirectory::Tree* MemoryDirectory::FindTree(std::string_view name) {
    const auto found = std::find_if(trees_.begin(), trees_.end(),
                                    [name](const Tree& tree) { return tree.config.name == name; });
    return found == trees_.end() ? nullptr : &*found;
}

void MemoryDirectory::FailTree(Tree& tree, const Error& error) const {
    tree.failure = error.detail();
    RaiseUnreadable(error.detail());
}

std::optional<MemoryDirectory::FileStamp> MemoryDirectory::StampOf(const Tree& tree) const {
    std::error_code error;
    const std::filesystem::path path = files_.Resolve(tree.config.ldif);
    const FileStamp stamp{std::filesystem::last_write_time(path, error),
                          std::filesystem::file_size(path, error)};
    return error ? std::nullopt : std::optional(stamp);
}

// The tree with its objects, which are read now unless they have been.
const MemoryDirectory::Tree& MemoryDirectory::Loaded(Tree& tree) {
    if (tree.objects) return tree;
    if (tree.failure) RaiseUnreadable(*tree.failure);
    try {
        tree.stamp = StampOf(tree);
        tree.objects = LoadLdifTree(files_, tree.config.ldif);
        tree.serial = ++last_serial_;
    } catch (const Error& error) {
        FailTree(tree, error);
    }
    return tree;
}

void MemoryDirectory::SetCurrentObject(std::string_view path) {
    const std::optional<PathParts> parts = SplitPath(path);
    if (!parts) throw Error(errors::kNoSuchObject).Within(path);
    Tree* const tree = FindTree(parts->tree);
    if (tree == nullptr) RaiseUnreadable("No tree '" + std::string(parts->tree) + "'");
    if (EqualIgnoringCase(parts->components, kRootName)) {
        tree->failure.reset();
        const std::optional<FileStamp> stamp = tree->objects ? StampOf(*tree) : std::nullopt;
        if (stamp && stamp != tree->stamp) tree->objects.reset();
    }
    if (tree->failure) RaiseUnreadable(*tree->failure);
    if (!tree->objects) {
        try {
            files_.Open(tree->config.ldif);
        } catch (const Error& error) {
            FailTree(*tree, error);
        }
    }
    current_object_ = path;
    current_tree_ = parts->tree;
}

// The object that a path, or a full name of the current object's tree, names.
std::optional<MemoryDirectory::Place> MemoryDirectory::Find(std::string_view path_or_name) {
    const std::optional<PathParts> parts = SplitPath(path_or_name);
    Tree* const tree = FindTree(parts ? parts->tree : current_tree_);
    if (tree == nullptr) return std::nullopt;
    const Tree& loaded = Loaded(*tree);
    if (found_.serial == loaded.serial && found_.text == path_or_name) return Place{&loaded, found_.entry};
    const EntryIndex entry =
        parts ? loaded.objects->FindPath(parts->components) : loaded.objects->FindFullName(path_or_name);
    if (entry == kNoEntry) return std::nullopt;
    found_.serial = loaded.serial;
    found_.text = path_or_name;
    found_.entry = entry;
    return Place{&loaded, entry};
}

MemoryDirectory::Place MemoryDirectory::FindOrRaise(std::string_view path_or_name) {
    const std::optional<Place> place = Find(path_or_name);
    if (!place) throw Error(errors::kNoSuchObject).Within(path_or_name);
    return *place;
}

MemoryDirectory::Place MemoryDirectory::Locate(const Entry& entry) const {
    for (const Tree& tree : trees_) {
        const auto index = static_cast<EntryIndex>(entry.id);
        if (tree.objects && tree.serial == entry.id >> 32 && tree.objects->Holds(index))
            return {&tree, index};
    }
    throw Error(errors::kNoSuchObject).Within(entry.path);
}

Entry MemoryDirectory::MakeEntry(const Place& place) const {
    const MemoryTree& objects = *place.tree->objects;
    return {static_cast<std::uint64_t>(place.tree->serial) << 32 | place.entry,
            std::string(objects.ShortName(place.entry)),
            JoinPath(place.tree->config.name, objects.Components(place.entry)),
            objects.ClassName(place.entry)};
}

Entry MemoryDirectory::CurrentEntry() {
    return MakeEntry(FindOrRaise(current_object_));
}

std::vector<Entry> MemoryDirectory::Entries(std::string_view path, std::string_view classes) {
    const Place parent = FindOrRaise(path);
    const MemoryTree& objects = *parent.tree->objects;
    const std::string parent_path = JoinPath(
        parent.tree->config.name, parent.entry == kRootEntry ? "" : objects.Components(parent.entry) + '\\');
    const ClassFilter filter(classes);
    std::vector<Entry> entries;
    for (EntryIndex child = objects.FirstChild(parent.entry); child != kNoEntry;
         child = objects.NextSibling(child)) {
        const std::string& class_name = objects.ClassName(child);
        if (!filter.Passes(class_name)) continue;
        std::string name(objects.ShortName(child));
        std::string child_path = parent_path + name;
        entries.push_back({static_cast<std::uint64_t>(parent.tree->serial) << 32 | child, std::move(name),
                           std::move(child_path), class_name});
    }
    return entries;
}

Entry MemoryDirectory::FindEntry(std::string_view path) {
    if (!SplitPath(path)) throw Error(errors::kNoSuchObject).Within(path);
    return MakeEntry(FindOrRaise(path));
}

std::string MemoryDirectory::FullName(std::string_view path) {
    if (const std::optional<Place> place = Find(path)) return place->tree->objects->FullName(place->entry);
    const std::optional<PathParts> parts = SplitPath(path);
    if (!parts) return std::string(path);
    std::string full_name;
    for (std::string_view rest = parts->components; !rest.empty();) {
        const std::size_t before = rest.rfind('\\');
        AppendToFullName(full_name, rest.substr(before == std::string_view::npos ? 0 : before + 1));
        rest = rest.substr(0, before == std::string_view::npos ? 0 : before);
    }
    return full_name;
}

std::string MemoryDirectory::FullNameOf(const Entry& entry) {
    const Place place = Locate(entry);
    return place.tree->objects->FullName(place.entry);
}

std::string MemoryDirectory::TreeNameOf(std::string_view path) {
    const std::optional<PathParts> parts = SplitPath(path);
    return parts ? std::string(parts->tree) : std::string();
}

Entry MemoryDirectory::LookUp(std::string_view path_or_name) {
    return MakeEntry(FindOrRaise(path_or_name));
}

ObjectDescription MemoryDirectory::Describe(const Entry& entry) {
    const Place place = Locate(entry);
    const std::string& class_name = place.tree->objects->ClassName(place.entry);
    for (const ClassKind& kind : kKinds) {
        if (kind.class_name == class_name) return {std::string(kind.kind_name), class_name};
    }
    return {std::string(kGenericKind), class_name};
}

bool MemoryDirectory::IsRead(const Place& place) const {
    return read_serial_ == place.tree->serial && read_entry_ == place.entry;
}

// The stored values of an attribute; none when the object does not hold it.
std::vector<std::string_view> MemoryDirectory::ValuesOf(const Place& place, std::uint32_t attribute) const {
    return IsRead(place) ? read_attributes_.Of(attribute)
                         : place.tree->objects->ReadAttribute(place.entry, attribute);
}

std::vector<std::string> MemoryDirectory::AttributeNames(const Entry& entry) {
    const Place place = Locate(entry);
    if (!IsRead(place)) {
        read_serial_ = 0;  // until it is read whole
        place.tree->objects->ReadAttributes(place.entry, read_attributes_);
        read_serial_ = place.tree->serial;
        read_entry_ = place.entry;
    }
    std::vector<std::string> names;
    names.reserve(read_attributes_.order.size());
    for (const std::uint32_t attribute : read_attributes_.order)
        names.push_back(place.tree->objects->AttributeName(attribute));
    return names;
}

std::string_view MemoryDirectory::AttributeSyntax(const Entry& entry, std::string_view attribute) {
    const MemoryTree& objects = *Locate(entry).tree->objects;
    const std::uint32_t number = objects.FindAttribute(attribute);
    const bool known = number != MemoryTree::kNoAttribute;
    return SyntaxName(known ? objects.AttributeSyntax(number) : Syntax::kString);
}

MemoryDirectory::HeldValues MemoryDirectory::ReadValues(const Entry& entry, std::string_view attribute) {
    const Place place = Locate(entry);
    const MemoryTree& tree = *place.tree->objects;
    const std::uint32_t number = tree.FindAttribute(attribute);
    std::vector<std::string_view> values = ValuesOf(place, number);
    if (values.empty()) throw Error(errors::kNoSuchValue).Within(entry.path + ", " + std::string(attribute));
    return {place.tree, tree.AttributeSyntax(number), std::move(values)};
}

DnNames& MemoryDirectory::NamesIn(const Tree& tree) {
    if (names_serial_ != tree.serial) {
        names_.emplace([objects = tree.objects](std::string_view dn) { return objects->FullNameOfDN(dn); });
        names_serial_ = tree.serial;
    }
    return *names_;
}

std::vector<std::string> MemoryDirectory::AttributeValues(const Entry& entry, std::string_view attribute) {
    const HeldValues held = ReadValues(entry, attribute);
    return ValueTexts(NamesIn(*held.tree), held.syntax, held.values);
}

std::vector<std::string> MemoryDirectory::ReferencedNames(const Entry& entry, std::string_view attribute) {
    const auto [tree, syntax, values] = ReadValues(entry, attribute);
    std::vector<std::string> names;
    const MemoryTree& objects = *tree->objects;
    MemoryTree::LastContainer container;
    for (const std::string_view value : values) {
        const EntryIndex object = syntax == Syntax::kName ? objects.FindDN(value, container) : kNoEntry;
        if (object != kNoEntry) {
            names.push_back(objects.FullName(object));
            continue;
        }
        for (const std::string& text : ValueTexts(NamesIn(*tree), syntax, {value})) {
            const std::optional<Place> named = Find(text);
            if (named) names.push_back(named->tree->objects->FullName(named->entry));
        }
    }
    return names;
}

int MemoryDirectory::NWDSOpenStream(std::uint32_t /*context_handle*/, std::string_view name,
                                    std::string_view attribute, int /*flags*/, int& file_handle) {
    const std::optional<Place> place = Find(name);
    if (!place) return kFailure;
    const std::shared_ptr<const MemoryTree>& objects = place->tree->objects;
    const std::uint32_t number = objects->FindAttribute(attribute);
    const std::vector<std::string_view> values = ValuesOf(*place, number);
    if (values.empty() || objects->AttributeSyntax(number) != Syntax::kStream) return kFailure;
    const std::string_view bytes = values.front();
    file_handle = ++last_handle_;
    streams_.insert_or_assign(file_handle, OpenStream{objects, bytes, bytes.size()});
    return 0;
}

MemoryDirectory::OpenStream& MemoryDirectory::StreamOf(int file_handle) {
    const auto found = streams_.find(file_handle);
    if (found == streams_.end()) throw Error(errors::kInvalidCall);
    return found->second;
}

std::size_t MemoryDirectory::GetFileSize(int file_handle) {
    return StreamOf(file_handle).size;
}

void MemoryDirectory::ReadFile(int file_handle, std::size_t size, std::string& buffer) {
    OpenStream& stream = StreamOf(file_handle);
    buffer = stream.rest.substr(0, size);
    stream.rest.remove_prefix(buffer.size());
}

void MemoryDirectory::CloseHandle(int file_handle) {
    StreamOf(file_handle);
    streams_.erase(file_handle);
}

}  // namespace zorvel
