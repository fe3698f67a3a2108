// The containers and applications of the current tree, and which applications are selected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/number_table.h"
#include "platform/text_pool.h"
#include "shell/status_line.h"

namespace zorvel {

// One container. The texts belong to the TreeLists that holds the record.
struct OURecord {
    std::string_view Parent;  // path of the parent container; empty for the root
    std::string_view Path;    // unique
    std::string_view Name;    // short name
    std::string_view Class;
    std::int32_t AppsHere = 0;    // applications directly in this container
    std::int32_t ChildCount = 0;  // child containers
    std::int32_t ChildApps = 0;   // applications directly in the child containers
};

// One application. The texts belong to the TreeLists that holds the record.
struct AppRecord {
    std::string_view Container;  // path of the container that holds it
    std::string_view Name;       // short name
    bool Selected = false;
};

// OUList and AppList. Record numbers are 1-based: number n is element n - 1.
class TreeLists {
  public:
    std::vector<OURecord> OUList;  // record 1 is the tree's root
    std::vector<AppRecord> AppList;
    TreeCounts counts;

    // Empties both lists and sets AppCount and SelectedCount to 0.
    void Clear();
    // Appends a container and returns its number. The texts are copied.
    // Raises error 5 when a container with that path exists.
    std::size_t AddOU(const OURecord& record);
    // Appends an application that is not selected, and returns its number. The texts are copied.
    std::size_t AddApp(std::string_view container, std::string_view name);

    // The number of the container with `path`, or 0.
    std::size_t FindOU(std::string_view path) const;
    // The number of the first application with both texts equal (case counts), or 0.
    std::size_t FindApp(std::string_view container, std::string_view name) const;

    // Sets or clears the selection mark of one application, keeping SelectedCount.
    void Select(AppRecord& application, bool selected);

  private:
    std::string_view ShareContainer(std::string_view path);

    TextPool texts_;
    NumberTable containers_;                 // record numbers by path
    mutable NumberTable applications_;       // built at the first FindApp: a run over a whole tree never asks
    std::vector<std::string_view> classes_;  // the few class names, each kept once
};

// The text of a container's node in the OU browser: its name, and except for the root how many applications
// it holds.
std::string NodeText(const OURecord& record);

}  // namespace zorvel
