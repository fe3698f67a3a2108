// What the main controller, and the runs that it makes, show in the main window; what a program without one
// leaves out does nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/run_display.h"
#include "browser/tree_refresh.h"
#include "controller/session.h"

namespace zorvel {

class MainWindow : public OUViewDisplay, public RunDisplay {
  public:
    virtual void SetCaption(std::string_view /*caption*/) {}
    // Puts the controls into their first state: the first tab, the predefined searches, counters at "-".
    virtual void LayOut() {}
    // Shows the window and lets it paint.
    virtual void Show() {}
    // Shows the welcome window modally; true when the user wants it suppressed from now on.
    virtual bool ShowWelcome() { return false; }
    virtual void EnableReenableWelcome(bool /*enabled*/) {}
    // Takes all trees out of the selector comTree.
    virtual void ClearTrees() {}
    // Adds a tree to the selector comTree, and selects one by its index.
    virtual void AddTree(std::string_view /*name*/) {}
    virtual void SelectTree(std::size_t /*index*/) {}
    // Enables the directory functions that `access` leaves: the tree buttons, the OU browser, comTree, the
    // loading of selections, and the runs.
    virtual void AllowDirectory(DirectoryAccess /*access*/) {}
    // Asks for the password (UTF-8) of `identity` in a tree's directory; nothing when the user gives none.
    virtual std::optional<std::string> AskPassword(std::string_view /*tree*/, std::string_view /*identity*/) {
        return std::nullopt;
    }
    virtual void SetCurrentOU(std::string_view /*text*/) {}
    // Brings the marks, counts and title of the application list up to date.
    virtual void RefreshAppTitle() {}
};

}  // namespace zorvel
