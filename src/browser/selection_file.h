// The files of saved selections: their names, their layout, and what one selects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "browser/tree_lists.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/input_file.h"
#include "shell/text_records.h"

namespace zorvel {

struct SavedSelection {
    std::string saved;       // the date of saving, as it stands in the file
    std::int32_t count = 0;  // how many applications were saved; 0 when the file gives no number
    std::string comment;
    std::vector<std::pair<std::string, std::string>> applications;  // name and container
};

// Where a selection is made. TreeListsSelection makes it in the lists alone.
class SelectionTarget {
  public:
    virtual ~SelectionTarget() = default;

    // Selects no application any more, and shows none of them selected.
    virtual void ClearSelection() = 0;
    // Selects application `app` (its number in AppList) and what shows it.
    virtual void SelectApplication(std::size_t app) = 0;
    // The selection is made.
    virtual void ShowSelection() = 0;
};

class TreeListsSelection final : public SelectionTarget {
  public:
    explicit TreeListsSelection(TreeLists& lists) : lists_(lists) {}

    void ClearSelection() override;
    void SelectApplication(std::size_t app) override { lists_.Select(lists_.AppList[app - 1], true); }
    void ShowSelection() override {}

  private:
    TreeLists& lists_;
};

// The path text of the selection file of `tree` with `number`.
std::string SelectionPath(const Files& files, std::string_view tree, std::int64_t number);
// The path texts of the selection files of `tree`, in the order of their names.
std::vector<std::string> SelectionPaths(const Files& files, std::string_view tree);

// Writes the selected applications of `lists` to a file. Line breaks in the comment become blanks, so that it
// stays one line; a quote in it stands as it is, and cuts it when it is read. Raises an OutputError, and then
// leaves no file.
void WriteSelection(const Files& files, const std::string& path, const DateTime& today,
                    std::string_view comment, const TreeLists& lists);

// Reads a selection file: as many applications as it says it holds.
// Raises error 6 or 62 when it holds fewer, the detail naming file and line.
SavedSelection ReadSelection(InputFile file);
// Reads a selection file up to its comment; raises as ReadSelection does.
SavedSelection ReadSelectionHeader(InputFile file);

// Replaces the selection in `target` by a saved one. Applications that `lists` do not hold are passed over;
// returns how many were selected.
std::int32_t SelectSaved(SelectionTarget& target, const TreeLists& lists, const SavedSelection& selection);

// "Application selections loaded - 2 of 3 previously saved selections successfully made."
std::string SelectionLoadedText(std::int32_t selected, const SavedSelection& selection);

}  // namespace zorvel
