// A tree of an LDIF export, read into memory when it is first needed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/memory_tree.h"
#include "directory/tree_source.h"
#include "directory/value_texts.h"
#include "platform/error.h"
#include "platform/files.h"

namespace zorvel {

// When the file cannot be read, error 600 with the reason is raised then and by all that follow, until the
// tree's root is made current again; then a file that has changed is read anew. An Entry from before that
// raises error 601.
class LdifSource final : public TreeSource {
  public:
    // `ldif` is the path text of the export.
    LdifSource(const Files& files, std::string tree, std::string ldif);

    // Raises error 600 when the file cannot be opened.
    TreeConnection Connection() const override {
        return {TreeConnection::State::kFile, "LDIF export " + ldif_};
    }
    void MakeCurrent(bool root) override;
    std::optional<Entry> Find(std::string_view path_or_name) override;
    std::optional<std::string> FindFullName(std::string_view path_or_name) override;
    std::vector<Entry> Entries(std::string_view path, std::string_view classes) override;
    std::string FullNameOf(const Entry& entry) override;
    std::vector<std::string> AttributeNames(const Entry& entry) override;
    std::string_view AttributeSyntax(const Entry& entry, std::string_view attribute) override;
    std::vector<std::string> AttributeValues(const Entry& entry, std::string_view attribute) override;
    std::vector<std::string> ReferencedNames(const Entry& entry, std::string_view attribute) override;
    std::optional<StreamBytes> Stream(std::string_view path_or_name, std::string_view attribute) override;

  private:
    // What tells that a file has changed.
    struct FileStamp {
        std::filesystem::file_time_type modified;
        std::uintmax_t size = 0;
        bool operator==(const FileStamp&) const = default;
    };
    struct HeldValues {
        Syntax syntax{};
        std::vector<std::string_view> values;  // at least one
    };

    const MemoryTree& Loaded();
    [[noreturn]] void Fail(const Error& error);
    std::optional<FileStamp> Stamp() const;
    // The object of a path or name; kNoEntry when there is none.
    EntryIndex Locate(std::string_view path_or_name);
    EntryIndex IndexOf(const Entry& entry) const;
    Entry MakeEntry(EntryIndex entry) const;
    std::vector<std::string_view> ValuesOf(EntryIndex entry, std::uint32_t attribute) const;
    // An attribute's values as the tree holds them. Raises what AttributeValues raises.
    HeldValues ReadValues(const Entry& entry, std::string_view attribute) const;

    const Files& files_;
    std::string tree_;
    std::string ldif_;
    std::shared_ptr<const MemoryTree> objects_;  // null while not read
    std::uint64_t reading_ = 0;                  // its number stands in the ids of its entries
    std::optional<FileStamp> stamp_;
    std::optional<std::string> failure_;  // why it cannot be read, once that was tried in vain

    // The text that was last looked up; a run opens all streams of an object under the same one.
    std::string found_text_;
    EntryIndex found_ = kNoEntry;
    // The attributes of the object whose names were last asked for; a run asks for all of its values then,
    // one after the other, and for single ones of other objects in between.
    EntryIndex read_ = kNoEntry;
    EntryAttributes read_attributes_;
    DnNames names_;
};

}  // namespace zorvel
