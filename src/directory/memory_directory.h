// The directory of the trees that Directory.toml lists, each read from its LDIF export into memory when first
// needed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/directory.h"
#include "directory/directory_config.h"
#include "directory/memory_tree.h"
#include "directory/value_texts.h"
#include "platform/error.h"
#include "platform/files.h"
#include "shell/log.h"

namespace zorvel {

// A tree is read at the first operation that needs its objects. When that fails, error 600 with the reason is
// raised then and by all that follow, until the tree's root is made the current object again.
// An Entry of a tree that has since been read anew raises error 601; an unknown file handle raises error 5.
class MemoryDirectory final : public Directory {
  public:
    MemoryDirectory(const Files& files, Log& log);

    // Reads Directory.toml; the reason why it cannot be used is logged.
    int NWCallsInit() override;
    std::string InitialisationFailure() const override { return initialisation_failure_; }
    int NWNetInit() override;
    int NWDSCreateContextHandle(std::uint32_t& context_handle) override;
    int NWGetPreferredConnName(std::string& name) override;

    int TreeCount() override;
    // Raises error 9 when there is no such tree.
    std::string TreeName(int index) override;

    // Raises error 600 when the LDIF file cannot be opened. On a tree's root, a file that has changed is read
    // anew.
    void SetCurrentObject(std::string_view path) override;
    Entry CurrentEntry() override;
    // Aliases are among the containers.
    std::vector<Entry> Entries(std::string_view path, std::string_view classes) override;
    Entry FindEntry(std::string_view path) override;

    // Also takes a full name of the current object's tree.
    std::string FullName(std::string_view path) override;
    std::string FullNameOf(const Entry& entry) override;
    std::string TreeNameOf(std::string_view path) override;
    Entry LookUp(std::string_view path_or_name) override;
    ObjectDescription Describe(const Entry& entry) override;

    std::vector<std::string> AttributeNames(const Entry& entry) override;
    // An attribute that no object holds is a "String".
    std::string_view AttributeSyntax(const Entry& entry, std::string_view attribute) override;
    std::vector<std::string> AttributeValues(const Entry& entry, std::string_view attribute) override;
    // Also of values that are paths or full names instead of DNs.
    std::vector<std::string> ReferencedNames(const Entry& entry, std::string_view attribute) override;

    int NWDSOpenStream(std::uint32_t context_handle, std::string_view name, std::string_view attribute,
                       int flags, int& file_handle) override;
    std::size_t GetFileSize(int file_handle) override;
    void ReadFile(int file_handle, std::size_t size, std::string& buffer) override;
    void CloseHandle(int file_handle) override;

  private:
    // What tells that a file has changed.
    struct FileStamp {
        std::filesystem::file_time_type modified;
        std::uintmax_t size = 0;
        bool operator==(const FileStamp&) const = default;
    };
    struct Tree {
        DirectoryConfig::Tree config;
        std::shared_ptr<const MemoryTree> objects;  // null while not read
        std::uint32_t serial = 0;                   // the upper half of its entries' ids; new at each reading
        std::optional<FileStamp> stamp;
        std::optional<std::string> failure;  // why it cannot be read, once that was tried in vain
    };
    // An object that exists.
    struct Place {
        const Tree* tree;
        EntryIndex entry;
    };
    struct HeldValues {
        const Tree* tree = nullptr;
        Syntax syntax{};
        std::vector<std::string_view> values;  // at least one
    };
    struct OpenStream {
        std::shared_ptr<const MemoryTree> owner;  // keeps the bytes when the tree is read anew
        std::string_view rest;                    // what has not yet been read
        std::size_t size;
    };

    Tree* FindTree(std::string_view name);
    const Tree& Loaded(Tree& tree);
    // Raises error 600, after it was told to on_unreadable.
    [[noreturn]] void RaiseUnreadable(const std::string& reason) const;
    [[noreturn]] void FailTree(Tree& tree, const Error& error) const;
    std::optional<FileStamp> StampOf(const Tree& tree) const;
    std::optional<Place> Find(std::string_view path_or_name);
    Place FindOrRaise(std::string_view path_or_name);
    Place Locate(const Entry& entry) const;
    Entry MakeEntry(const Place& place) const;
    bool IsRead(const Place& place) const;
    std::vector<std::string_view> ValuesOf(const Place& place, std::uint32_t attribute) const;
    // An attribute's values as the tree holds them. Raises what AttributeValues raises.
    HeldValues ReadValues(const Entry& entry, std::string_view attribute);
    DnNames& NamesIn(const Tree& tree);
    OpenStream& StreamOf(int file_handle);

    const Files& files_;
    Log& log_;
    std::string initialisation_failure_;
    std::optional<std::string> preferred_;
    std::vector<Tree> trees_;
    std::uint32_t last_serial_ = 0;

    std::string current_object_;
    std::string current_tree_;

    // The text that was last looked up; a run opens all streams of an object under the same one.
    struct {
        std::uint32_t serial = 0;
        std::string text;
        EntryIndex entry = kNoEntry;
    } found_;
    // The attributes of the object whose names were last asked for; a run asks for all of its values then,
    // one after the other, and for single ones of other objects in between.
    std::uint32_t read_serial_ = 0;
    EntryIndex read_entry_ = kNoEntry;
    EntryAttributes read_attributes_;
    // Of the tree whose values were last read.
    std::uint32_t names_serial_ = 0;
    std::optional<DnNames> names_;

    std::map<int, OpenStream> streams_;
    int last_handle_ = 0;
};

}  // namespace zorvel
