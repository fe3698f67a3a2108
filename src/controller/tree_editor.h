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

// A path of the configuration as a form shows it, relative to the program folder where it lies there; and
// back, from what the user wrote.
std::string ShownPath(const Files& files, const std::string& path);
std::string PathOfShown(const Files& files, std::string text);

class TreeEditor {
  public:
    // Raises what reading Directory.toml raises.
    explicit TreeEditor(MainController& controller);

    const DirectoryConfig& config() const { return config_; }
    const Files& files() const { return controller_.services().files; }
    // Where a tree comes from, in a line.
    std::string SourceOf(const DirectoryConfig::Tree& tree) const;
    // A name for the tree of an LDIF file (a path as a form shows it) that no other tree has.
    std::string NameForExport(std::string_view path) const;

    // Each changes the file and the main window's list of trees. True when that was done; else nothing was
    // changed, and failure() says why, or is empty when the user was told already.
    // Changes the tree `name`, or adds one when it is empty.
    bool Put(const std::string& name, const DirectoryConfig::Tree& tree);
    // Asks first.
    bool Remove(const std::string& name);
    bool Prefer(const std::string& name);
    const std::string& failure() const { return failure_; }

    // What the test of a tree found, in words. Lasts; ESC ends it.
    std::string Test(const DirectoryConfig::Tree& tree);
    // Ends the test that runs.
    void EndTest();

    // Opens the current tree anew when it is another now, or gone.
    void Finish();

  private:
    // Why the tree cannot be taken over: its file is not there; else empty.
    std::string Obstacle(const DirectoryConfig::Tree& tree) const;
    bool Change(const std::function<void(DirectoryText&)>& change);

    MainController& controller_;
    DirectoryConfig config_;
    std::string failure_;
    std::optional<std::string> reopen_;  // the tree that is to be opened at the end
};

}  // namespace zorvel
