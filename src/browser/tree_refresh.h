// RefreshOUView: loads the current tree into the lists, from its cache files or from the directory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "browser/cache_marks.h"
#include "browser/tree_lists.h"
#include "directory/directory.h"
#include "platform/error.h"
#include "shell/services.h"

namespace zorvel {

// What a load shows: the OU browser's nodes, and the progress window frmCacheTree.
class OUViewDisplay {
  public:
    virtual ~OUViewDisplay() = default;

    // The browser. Nodes come parents first; a node's text is NodeText, its colour follows AppsHere.
    virtual void ClearBrowser() {}
    virtual void AddNode(std::size_t /*ou_number*/, bool /*expanded*/) {}
    virtual void RedrawBrowser() {}

    // The progress window: shown without blocking, with its value labels.
    virtual void ShowCacheTree(std::string_view /*title*/) {}
    virtual void SetLabOU(std::string_view /*text*/) {}
    virtual void SetLabOUCount(std::string_view /*text*/) {}
    virtual void SetLabApps(std::string_view /*text*/) {}
    virtual void SetLabElapsed(std::string_view /*text*/) {}
    virtual void CloseCacheTree() {}
};

class TreeRefresh {
  public:
    // `countdown` is the number of seconds to wait before the directory is read.
    TreeRefresh(Services& services, Directory& directory, TreeLists& lists, OUViewDisplay& display,
                int countdown = 5);

    // Loads `tree`; from the directory when `force` is set, or when there is no cache of it that tells it.
    // True when it is loaded: errors are logged and shown, never raised, and what was loaded before one
    // stays; a tree that was read is loaded also when its caches cannot be written. Sets Busy while it runs
    // and clears UserInterrupt at its end.
    bool RefreshOUView(std::string_view tree, bool force);
    // Whether that would read the directory without looking at the caches.
    bool ReadsDirectory(std::string_view tree, bool force) const;
    // Empties the lists and the browser.
    void Clear();

  private:
    enum class CacheLoad {
        kLoaded,
        kTooOld,  // for the user, who wants the directory to be read instead
        kUnfit,   // there is none, or it does not tell the tree
    };

    CacheLoad LoadFromCache(std::string_view tree);
    bool CacheIsTooOld(std::string_view tree, const DateTime& written) const;
    // True when the caches that were just read belong together; warns of what is missing in them.
    bool CachesFit(std::string_view tree, CacheState state);
    // Reads the tree and replaces its caches, or gives up at once the one that `cache` says is too old. False
    // when the reading was given up, or another program writes.
    bool ReadTree(std::string_view tree, CacheLoad cache);
    void WalkTree(std::string_view tree);
    void WriteCaches(std::string_view tree);
    // Warns, once a load, that the caches cannot hold the name of `object`.
    void WarnUnreadable(std::string_view tree, const std::string& object);
    void Report(const Error& error);
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
    std::string unreadable_object_;  // that this load has warned of
};

}  // namespace zorvel
