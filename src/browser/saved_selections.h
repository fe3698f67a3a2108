// The dialogs that save and load a selection of applications: frmSaveSelections and frmLoadSelections.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "browser/selection_file.h"
#include "browser/tree_lists.h"
#include "shell/services.h"

namespace zorvel {

// A source of random fractions, 0 up to but not including 1.
using RandomFraction = std::function<double()>;
// Fractions of a generator that is seeded from the clock before each draw. `clock` must outlive them.
RandomFraction TimerSeededFractions(const Clock& clock);

class SaveSelections {
  public:
    // Saves selections of `lists`, which hold the tree named `tree`.
    SaveSelections(Services& services, const TreeLists& lists, std::string tree,
                   RandomFraction random_fraction);

    // butSave: writes the selection to a new file and closes the dialog. After an error, which is shown and
    // logged, and when another program writes to the folder, the dialog stays.
    void Save();

    // What the dialog shows.
    static const std::string labComment;
    std::string txtComment;
    bool closed = false;

  private:
    std::string UnusedPath() const;

    Services& services_;
    const TreeLists& lists_;
    std::string tree_;
    RandomFraction random_fraction_;
};

class LoadSelections {
  public:
    // Loads selections of the tree named `tree`, which `lists` hold, into `target`.
    LoadSelections(Services& services, const TreeLists& lists, SelectionTarget& target, std::string tree);

    // Lists the tree's selection files, at most 100, and selects the first.
    void Open();
    // Selects line `index` (from 0) and shows its comment. An error is shown and logged, and leaves the
    // comment empty.
    void Select(std::size_t index);
    // butLoad: replaces the selection by that of the selected line, if the user wants it, and closes the
    // dialog. After an error, which is shown and logged, both stay as they are.
    void Load();

    // What the dialog shows.
    static const std::string labChoose;
    std::vector<std::string> lstLoad;
    std::size_t selected = 0;  // the line, when there is any
    std::string txtComment;
    bool closed = false;

  private:
    void ReportError();

    Services& services_;
    const TreeLists& lists_;
    SelectionTarget& target_;
    std::string tree_;
    std::vector<std::string> paths_;  // of the files, by line
};

}  // namespace zorvel
