// The OU browser and the list of a container's applications: the state of TreeView1 and ListView1, and the
// selection of applications that is made in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "browser/ou_nodes.h"
#include "browser/selection_file.h"
#include "browser/tree_lists.h"
#include "directory/directory.h"
#include "platform/error.h"
#include "shell/services.h"

namespace zorvel {

// Shows the browser and the list; each call says what changed.
class OUBrowserDisplay {
  public:
    virtual ~OUBrowserDisplay() = default;

    virtual void ShowNodes() = 0;          // the nodes were arranged anew; StartsExpanded says how they open
    virtual void ShowMarks() = 0;          // nodes' bold, checks or colours
    virtual void ShowList() = 0;           // the items of the list
    virtual void ShowItemSelection() = 0;  // which items are selected
    virtual void ShowTitle() = 0;          // labBrowser, labCurrentOU, labApps, and what is enabled
};

// How the text of a node is coloured.
enum class NodeColour {
    kDefault,
    kApplications,  // light blue: it holds applications
    kChildToggled,  // dark grey: the check box of one of its children was used
};

class OUBrowser final : public SelectionTarget {
  public:
    // One line of the application list.
    struct Item {
        std::string name;
        std::size_t app = 0;  // number in AppList, 0 for an application that the cache does not know
        bool selected = false;
    };

    // `refresh_tree` reads the current tree from the directory again.
    OUBrowser(Services& services, Directory& directory, TreeLists& lists, OUBrowserDisplay& display,
              std::function<void()> refresh_tree);

    // A load of the tree: its nodes come one by one, and are arranged when they are to be seen.
    void ClearNodes();
    // Adds the node of container `number`. Raises error 9 when its parent is not there.
    void AddNode(std::size_t number, bool expanded);
    // Shows the nodes added so far, in full mode.
    void ArrangeNodes();

    // A click on the node of container `number`, which exists: the list shows the container's applications.
    // When the directory no longer has the container (error 601) the user is asked whether to read the tree
    // again. All other errors are shown and logged, error 9 for applications that the cache does not know
    // among them. Raises only what `refresh_tree` raises.
    void ClickNode(std::size_t number);
    // The check box of a node is set or cleared. All errors are shown and logged.
    void CheckNode(std::size_t number, bool checked);

    // The tree buttons that do more than expand and collapse.
    void HideEmptyOUs();
    void ShowAllOUs();
    void UnselectAllInTree();
    void SelectAllInTree();
    // Reads the tree from the directory again, when the user confirms it.
    void ForceFullRefresh();

    // The list: the user selects lines `first` to `last` (from 0), or uses a list button. After the last
    // change, RefreshAppTitle brings everything in line.
    void SetSelected(std::size_t first, std::size_t last, bool selected);
    void SelectAllInOU();
    void UnselectAllInOU();
    void InvertSelectionInOU();

    // Copies the list's selection into the lists' marks, and brings the bold of the current container's
    // node, the counts and the titles up to date.
    void RefreshAppTitle();

    // SelectionTarget: a selection that is made as a whole, and shown when it is complete.
    void ClearSelection() override;
    void SelectApplication(std::size_t app) override;
    void ShowSelection() override;

    const OUNodes& nodes() const { return nodes_; }
    // The node of the current container, or 0.
    std::size_t CurrentNode() const { return lists_.FindOU(current_container_); }
    // Whether a node is there to be clicked, and nothing is busy.
    bool CanClick(std::size_t number) const { return nodes_.Shown(number) && !services_.activity.Busy; }
    const OURecord& Record(std::size_t number) const { return lists_.OUList[number - 1]; }
    bool Bold(std::size_t number) const { return Marked(number, kBold); }
    bool Checked(std::size_t number) const { return Marked(number, kChecked); }
    bool StartsExpanded(std::size_t number) const { return Marked(number, kExpanded); }
    NodeColour Colour(std::size_t number) const;

    const std::vector<Item>& items() const { return items_; }
    std::size_t selected_items() const { return selected_items_; }

    TreeViewMode mode() const { return mode_; }
    const std::string& labBrowser() const;
    std::string labCurrentOU = "(select from the OU browser)";
    std::string labApps = "Available Applications";
    // Whether the application list's buttons, and all that needs a selection, can be used.
    bool list_buttons_enabled = false;
    bool selection_exists = false;
    // Whether the tab with the browser is showing; the list's title follows only then.
    bool application_tab_showing = true;

  private:
    enum Mark : std::uint8_t { kBold = 1, kChecked = 2, kChildToggled = 4, kExpanded = 8 };

    bool Marked(std::size_t number, Mark mark) const {
        return number < marks_.size() && (marks_[number] & mark) != 0;
    }
    void SetMark(std::size_t number, Mark mark, bool on);
    void ClearBold();
    void Rebuild(TreeViewMode mode);
    void ListApplications(const std::string& path);
    void ReportClickFailure(const std::string& path, const Error& error);
    void ReloadTree();
    void ClearList();
    template <typename Choose>
    void SetSelection(Choose choose);

    Services& services_;
    Directory& directory_;
    TreeLists& lists_;
    OUBrowserDisplay& display_;
    std::function<void()> refresh_tree_;

    OUNodes nodes_;
    std::vector<std::uint8_t> marks_;  // by container number
    TreeViewMode mode_ = TreeViewMode::kFull;
    std::string current_container_;  // its path
    std::vector<Item> items_;
    std::size_t selected_items_ = 0;
    bool items_outdated_ = false;  // the tree was loaded again; their numbers are to be looked up
};

}  // namespace zorvel
