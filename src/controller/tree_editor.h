// The trees of Directory.toml as the Trees dialog shows, changes and tests them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "controller/main_controller.h"
#include "directory/directory_config.h"
#include "directory/directory_text.h"

namespace zorvel {

class TreeEditor {
  public:
    // Raises what reading Directory.toml raises.
    explicit TreeEditor(MainController& controller);

    const DirectoryConfig& config() const { return config_; }
    const Files& files() const { return controller_.services().files; }
    // Where a tree comes from, in a line.
    static std::string SourceOf(const DirectoryConfig::Tree& tree, const Files& files);
    // A tree of an LDIF file (a path text), with a name after the file's that no other tree has.
    DirectoryConfig::Tree TreeOfExport(std::string path) const;

    // Each changes the file and the main window's list of trees. True when that was done; else nothing was
    // changed, and failure() says why, or is empty when the user was told already.
    bool Add(const DirectoryConfig::Tree& tree);
    bool Replace(const std::string& name, const DirectoryConfig::Tree& tree);
    bool Remove(const std::string& name);
    bool Prefer(const std::string& name);
    const std::string& failure() const { return failure_; }

    // What the test of a tree found, in words. Lasts; ESC ends it.
    std::string Test(const DirectoryConfig::Tree& tree);

    // Opens the current tree anew when it is another now, or gone.
    void Finish();

  private:
    bool Change(const std::function<void(DirectoryText&)>& change);

    MainController& controller_;
    DirectoryConfig config_;
    std::string failure_;
    std::optional<std::string> reopen_;  // the tree that is to be opened at the end
};

}  // namespace zorvel
