// RefreshOUView: loads the current tree into the lists, from its cache files or from the directory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "directory/directory.h"
#include "directory/tree_lists.h"
#include "shell/services.h"

namespace zorvel {

// What a load shows: the OU browser's nodes, and the progress window frmCacheTree.
class OUViewDisplay {
  public:
    virtual ~OUViewDisplay() = default;

    // The browser. Nodes come parents first; a node's text is NodeText, its colour follows AppsHere.
    virtual void ClearBrowser() = 0;
    virtual void AddNode(std::size_t ou_number, bool expanded) = 0;
    virtual void RedrawBrowser() = 0;

    // The progress window: shown without blocking, with its value labels.
    virtual void ShowCacheTree(std::string_view title) = 0;
    virtual void SetLabOU(std::string_view text) = 0;
    virtual void SetLabOUCount(std::string_view text) = 0;
    virtual void SetLabApps(std::string_view text) = 0;
    virtual void SetLabElapsed(std::string_view text) = 0;
    virtual void CloseCacheTree() = 0;
};

class OUViewLoader {
  public:
    // `countdown` is the number of seconds to wait before the directory is read.
    OUViewLoader(Services& services, Directory& directory, TreeLists& lists, OUViewDisplay& display,
                 int countdown = 5);

    // Loads `tree`; from the directory when `force` is set or no tree cache exists. True when nothing went
    // wrong: errors are logged and shown, never raised, and what was loaded before one stays. Sets Busy while
    // it runs and clears UserInterrupt at its end.
    bool RefreshOUView(std::string_view tree, bool force);

  private:
    // Loads the caches; false when the user asked for the directory to be read instead.
    bool LoadFromCache(std::string_view tree);
    bool CacheIsTooOld(std::string_view tree, const DateTime& written) const;
    void ReadTree(std::string_view tree);
    // Reads the containers below record `root_number`, and their applications, depth first.
    void RecurseDirectory(std::size_t root_number);
    // The containers that the directory lists below container `number`.
    std::vector<Entry> EnterContainer(std::size_t number);
    // Reads the applications of `container`, a child of record `parent_number`, and appends its record.
    std::size_t ReadContainer(const Entry& container, std::size_t parent_number);

    Services& services_;
    Directory& directory_;
    TreeLists& lists_;
    OUViewDisplay& display_;
    int countdown_;
    double started_ = 0;  // the clock's Timer when the walk began
    std::int64_t examined_ = 0;
};

}  // namespace zorvel
