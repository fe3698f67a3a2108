// What the main controller asks of the main window; a batch program answers it without one.
#pragma once

#include <string_view>

#include "browser/ou_view_loader.h"
#include "controller/session.h"

namespace zorvel {

class MainWindow : public OUViewDisplay {
  public:
    virtual void SetCaption(std::string_view caption) = 0;
    // Puts the controls into their first state: the first tab, the predefined searches, counters at "-".
    virtual void LayOut() = 0;
    // Shows the window and lets it paint.
    virtual void Show() = 0;
    // Shows the welcome window modally; true when the user wants it suppressed from now on.
    virtual bool ShowWelcome() = 0;
    virtual void EnableReenableWelcome(bool enabled) = 0;
    virtual void LoadClassIcons() = 0;
    // Adds a tree to the selector comTree, and selects one by its index.
    virtual void AddTree(std::string_view name) = 0;
    virtual void SelectTree(std::size_t index) = 0;
    // Enables the directory functions that `access` leaves: the tree buttons, the OU browser, comTree, the
    // loading of selections, and the runs.
    virtual void AllowDirectory(DirectoryAccess access) = 0;
    virtual void SetCurrentOU(std::string_view text) = 0;
    // Brings the marks, counts and title of the application list up to date.
    virtual void RefreshAppTitle() = 0;
    virtual void EnableGenerate(bool enabled) = 0;
};

}  // namespace zorvel
