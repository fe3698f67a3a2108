// The session's state, owned by the main controller and read by those who need the whole of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/app_issue_slots.h"
#include "browser/tree_lists.h"
#include "platform/store.h"
#include "shell/activity.h"
#include "shell/rule_lists.h"

namespace zorvel {

// What the user can do with the directory.
enum class DirectoryAccess {
    kFull,
    kRetry,  // it could not be read: choose a tree or read the current one anew, no more
    kNone,   // there is no tree
};

struct Session {
    Activity activity;
    TreeLists tree;  // OUList, AppList and their counts
    RuleLists rule_lists;
    AppIssueSlots app_issue_slots;
    std::uint32_t ContextHandle = 0;           // of the directory client, for stream reads
    std::optional<Database> MasterConnection;  // the master catalogue, open from start-up until exit
    std::vector<std::string> trees;            // the tree selector's entries
    std::string current_tree;  // the entry that is selected; empty before the first tree is opened
    bool tree_loaded = false;  // its last load went well
    DirectoryAccess directory_access = DirectoryAccess::kFull;
};

}  // namespace zorvel
