// The directory of the trees that Directory.toml lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/directory.h"
#include "directory/directory_config.h"
#include "directory/tree_source.h"
#include "platform/files.h"
#include "shell/log.h"

namespace zorvel {

// Every operation goes to the source of the tree that its path, its entry or its handle belongs to; full
// names to that of the current object's tree. An unknown file handle raises error 5.
class TreeDirectory final : public Directory {
  public:
    // Makes the source of a tree.
    using MakeSource = std::function<std::unique_ptr<TreeSource>(DirectoryConfig::Tree tree)>;

    TreeDirectory(const Files& files, Log& log, MakeSource make_source);

    // Reads Directory.toml; the reason why it cannot be used is logged, and the trees stay.
    int NWCallsInit() override;
    std::string InitialisationFailure() const override { return initialisation_failure_; }
    int NWNetInit() override { return 0; }
    int NWDSCreateContextHandle(std::uint32_t& context_handle) override;
    int NWGetPreferredConnName(std::string& name) override;

    int TreeCount() override;
    // Raises error 9 when there is no such tree.
    std::string TreeName(int index) override;
    TreeConnection ConnectionOf(std::string_view tree) override;

    void SetCurrentObject(std::string_view path) override;
    void BeginWalk() override;
    void EndWalk() override;
    Entry CurrentEntry() override;
    // Aliases are among the containers.
    std::vector<Entry> Entries(std::string_view path, std::string_view classes) override;
    Entry FindEntry(std::string_view path) override;

    // Also takes a full name of the current object's tree.
    std::string FullName(std::string_view path) override;
    std::string FullNameOf(const Entry& entry) override;
    std::string TreeNameOf(std::string_view path) override;
    Entry LookUp(std::string_view path_or_name) override;
    void ExpectLookUps(const std::vector<std::string_view>& full_names) override;
    ObjectDescription Describe(const Entry& entry) override;

    std::vector<std::string> AttributeNames(const Entry& entry) override;
    // An attribute that no object holds is a "String".
    std::string_view AttributeSyntax(const Entry& entry, std::string_view attribute) override;
    std::vector<std::string> AttributeValues(const Entry& entry, std::string_view attribute) override;
    // Also of values that are paths or full names of the same tree instead of DNs.
    std::vector<std::string> ReferencedNames(const Entry& entry, std::string_view attribute) override;

    int NWDSOpenStream(std::uint32_t context_handle, std::string_view name, std::string_view attribute,
                       int flags, int& file_handle) override;
    std::size_t GetFileSize(int file_handle) override;
    void ReadFile(int file_handle, std::size_t size, std::string& buffer) override;
    void CloseHandle(int file_handle) override;

  private:
    struct Tree {
        DirectoryConfig::Tree settings;
        std::unique_ptr<TreeSource> source;

        const std::string& name() const { return settings.name; }
    };
    struct OpenStream {
        StreamBytes stream;
        std::size_t read = 0;  // bytes that were read
    };

    // The number of the tree that a path belongs to, or the current object's for a full name; nothing when
    // there is no such tree.
    std::optional<std::size_t> TreeOf(std::string_view path_or_name) const;
    std::optional<std::size_t> IndexOf(std::string_view name) const;
    // The source of a tree, which is used further if it was there with the same settings.
    std::unique_ptr<TreeSource> SourceFor(const DirectoryConfig::Tree& settings);
    TreeSource& SourceOf(const Entry& entry);
    // Calls `operation`, and tells of error 600.
    template <typename Operation>
    auto Reading(Operation operation);
    OpenStream& StreamOf(int file_handle);

    const Files& files_;
    Log& log_;
    MakeSource make_source_;
    std::string initialisation_failure_;
    std::optional<std::string> preferred_;
    std::vector<Tree> trees_;
    std::string current_object_;
    std::string current_tree_;
    std::map<int, OpenStream> streams_;
    int last_handle_ = 0;
};

}  // namespace zorvel
