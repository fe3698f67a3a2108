#include "directory/tree_directory.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/names.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr int kFailure = 1;
constexpr std::uint32_t kContext = 1;
// Where an entry's id tells its tree, above what the tree's source says in it.
constexpr unsigned kTreeShift = 56;

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

// An entry of a tree's source, as one of the directory.
Entry InTree(Entry entry, std::size_t tree) {
    entry.id |= static_cast<std::uint64_t>(tree) << kTreeShift;
    return entry;
}

}  // namespace

TreeDirectory::TreeDirectory(const Files& files, Log& log, MakeSource make_source)
    : files_(files), log_(log), make_source_(std::move(make_source)) {}

template <typename Operation>
auto TreeDirectory::Reading(Operation operation) {
    try {
        return operation();
    } catch (const Error& error) {
        if (error.number() == errors::kDirectoryUnreadable && on_unreadable) on_unreadable();
        throw;
    }
}

int TreeDirectory::NWCallsInit() {
    initialisation_failure_.clear();
    try {
        DirectoryConfig config = ReadDirectoryConfig(files_);
        preferred_ = std::move(config.preferred);
        std::vector<Tree> trees;
        for (DirectoryConfig::Tree& tree : config.trees) {
            std::unique_ptr<TreeSource> source = SourceFor(tree);
            trees.push_back({std::move(tree), std::move(source)});
        }
        trees_ = std::move(trees);
        return 0;
    } catch (const Error& error) {
        initialisation_failure_ = error.detail();
        LogDetail(log_, error);
        return kFailure;
    }
}

std::unique_ptr<TreeSource> TreeDirectory::SourceFor(const DirectoryConfig::Tree& settings) {
    const auto same = std::find_if(trees_.begin(), trees_.end(), [&](const Tree& tree) {
        return tree.source && tree.settings == settings;
    });
    return same != trees_.end() ? std::move(same->source) : make_source_(settings);
}

TreeConnection TreeDirectory::ConnectionOf(std::string_view tree) {
    const std::optional<std::size_t> index = IndexOf(tree);
    return index ? trees_[*index].source->Connection() : TreeConnection();
}

int TreeDirectory::NWDSCreateContextHandle(std::uint32_t& context_handle) {
    context_handle = kContext;
    return 0;
}

int TreeDirectory::NWGetPreferredConnName(std::string& name) {
    if (!preferred_) return kFailure;
    name = *preferred_;
    return 0;
}

int TreeDirectory::TreeCount() {
    return static_cast<int>(trees_.size());
}

std::string TreeDirectory::TreeName(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= trees_.size()) throw Error(errors::kSubscript);
    return trees_[static_cast<std::size_t>(index)].name();
}

std::optional<std::size_t> TreeDirectory::IndexOf(std::string_view name) const {
    const auto found =
        std::find_if(trees_.begin(), trees_.end(), [name](const Tree& tree) { return tree.name() == name; });
    if (found == trees_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - trees_.begin());
}

std::optional<std::size_t> TreeDirectory::TreeOf(std::string_view path_or_name) const {
    const std::optional<PathParts> parts = SplitPath(path_or_name);
    return IndexOf(parts ? parts->tree : current_tree_);
}

TreeSource& TreeDirectory::SourceOf(const Entry& entry) {
    const std::size_t tree = entry.id >> kTreeShift;
    if (tree >= trees_.size()) throw Error(errors::kNoSuchObject).Within(entry.path);
    return *trees_[tree].source;
}

void TreeDirectory::SetCurrentObject(std::string_view path) {
    const std::optional<PathParts> parts = SplitPath(path);
    if (!parts) throw Error(errors::kNoSuchObject).Within(path);
    Reading([&] {
        const std::optional<std::size_t> tree = TreeOf(path);
        if (!tree)
            throw Error(errors::kDirectoryUnreadable).With("No tree '" + std::string(parts->tree) + "'");
        trees_[*tree].source->MakeCurrent(EqualIgnoringCase(parts->components, kRootName));
    });
    current_object_ = path;
    current_tree_ = parts->tree;
}

void TreeDirectory::BeginWalk() {
    if (const auto tree = TreeOf(current_object_)) trees_[*tree].source->BeginWalk();
}

void TreeDirectory::EndWalk() {
    if (const auto tree = TreeOf(current_object_)) trees_[*tree].source->EndWalk();
}

Entry TreeDirectory::CurrentEntry() {
    return LookUp(current_object_);
}

std::vector<Entry> TreeDirectory::Entries(std::string_view path, std::string_view classes) {
    const std::optional<std::size_t> tree = TreeOf(path);
    if (!tree) throw Error(errors::kNoSuchObject).Within(path);
    std::vector<Entry> entries = Reading([&] { return trees_[*tree].source->Entries(path, classes); });
    for (Entry& entry : entries)
        entry = InTree(std::move(entry), *tree);
    return entries;
}

Entry TreeDirectory::FindEntry(std::string_view path) {
    if (!SplitPath(path)) throw Error(errors::kNoSuchObject).Within(path);
    return LookUp(path);
}

std::string TreeDirectory::FullName(std::string_view path) {
    const std::optional<std::size_t> tree = TreeOf(path);
    if (tree) {
        std::optional<std::string> known = Reading([&] { return trees_[*tree].source->FindFullName(path); });
        if (known) return *std::move(known);
    }
    const std::optional<PathParts> parts = SplitPath(path);
    return parts ? FullNameOfPath(parts->components) : std::string(path);
}

std::string TreeDirectory::FullNameOf(const Entry& entry) {
    return Reading([&] { return SourceOf(entry).FullNameOf(entry); });
}

std::string TreeDirectory::TreeNameOf(std::string_view path) {
    const std::optional<PathParts> parts = SplitPath(path);
    return parts ? std::string(parts->tree) : std::string();
}

Entry TreeDirectory::LookUp(std::string_view path_or_name) {
    const std::optional<std::size_t> tree = TreeOf(path_or_name);
    std::optional<Entry> entry;
    if (tree) entry = Reading([&] { return trees_[*tree].source->Find(path_or_name); });
    if (!entry) throw Error(errors::kNoSuchObject).Within(path_or_name);
    return InTree(*std::move(entry), *tree);
}

void TreeDirectory::ExpectLookUps(const std::vector<std::string_view>& full_names) {
    if (const auto tree = TreeOf(current_object_)) trees_[*tree].source->ExpectLookUps(full_names);
}

ObjectDescription TreeDirectory::Describe(const Entry& entry) {
    SourceOf(entry);
    for (const ClassKind& kind : kKinds) {
        if (kind.class_name == entry.class_name) return {std::string(kind.kind_name), entry.class_name};
    }
    return {std::string(kGenericKind), entry.class_name};
}

std::vector<std::string> TreeDirectory::AttributeNames(const Entry& entry) {
    return Reading([&] { return SourceOf(entry).AttributeNames(entry); });
}

std::string_view TreeDirectory::AttributeSyntax(const Entry& entry, std::string_view attribute) {
    return Reading([&] { return SourceOf(entry).AttributeSyntax(entry, attribute); });
}

std::vector<std::string> TreeDirectory::AttributeValues(const Entry& entry, std::string_view attribute) {
    return Reading([&] { return SourceOf(entry).AttributeValues(entry, attribute); });
}

std::vector<std::string> TreeDirectory::ReferencedNames(const Entry& entry, std::string_view attribute) {
    return Reading([&] { return SourceOf(entry).ReferencedNames(entry, attribute); });
}

int TreeDirectory::NWDSOpenStream(std::uint32_t /*context_handle*/, std::string_view name,
                                  std::string_view attribute, int /*flags*/, int& file_handle) {
    const std::optional<std::size_t> tree = TreeOf(name);
    if (!tree) return kFailure;
    std::optional<StreamBytes> stream =
        Reading([&] { return trees_[*tree].source->Stream(name, attribute); });
    if (!stream) return kFailure;
    file_handle = ++last_handle_;
    streams_.insert_or_assign(file_handle, OpenStream{*std::move(stream), 0});
    return 0;
}

TreeDirectory::OpenStream& TreeDirectory::StreamOf(int file_handle) {
    const auto found = streams_.find(file_handle);
    if (found == streams_.end()) throw Error(errors::kInvalidCall);
    return found->second;
}

std::size_t TreeDirectory::GetFileSize(int file_handle) {
    return StreamOf(file_handle).stream.bytes.size();
}

void TreeDirectory::ReadFile(int file_handle, std::size_t size, std::string& buffer) {
    OpenStream& open = StreamOf(file_handle);
    buffer = open.stream.bytes.substr(open.read, size);
    open.read += buffer.size();
}

void TreeDirectory::CloseHandle(int file_handle) {
    StreamOf(file_handle);
    streams_.erase(file_handle);
}

}  // namespace zorvel
