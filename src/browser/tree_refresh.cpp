#include "browser/tree_refresh.h"

#include <optional>
#include <utility>

#include "browser/tree_cache.h"
#include "platform/interruption.h"
#include "shell/formats.h"
#include "shell/pause.h"
#include "shell/report_error.h"

namespace zorvel {
TreeRefresh::TreeRefresh(Services& services, Directory& directory, TreeLists& lists, OUViewDisplay& display,
                         int countdown)
    : services_(services), directory_(directory), lists_(lists), display_(display), countdown_(countdown) {}

bool TreeRefresh::ReadsDirectory(std::string_view tree, bool force) const {
    return force || !services_.files.Exists(TreeCachePath(services_.files, tree));
}

bool TreeRefresh::RefreshOUView(std::string_view tree, bool force) {
    bool loaded = false;
    unreadable_object_.clear();
    services_.activity.Busy = true;
    try {
        Clear();
        const CacheLoad cache = ReadsDirectory(tree, force) ? CacheLoad::kUnfit : LoadFromCache(tree);
        loaded = cache == CacheLoad::kLoaded || ReadTree(tree, cache);
        services_.status.SetIdle();
    } catch (...) {
        Report(CurrentError());
    }
    services_.activity.Busy = false;
    services_.activity.UserInterrupt = false;
    return loaded;
}

void TreeRefresh::Clear() {
    lists_.Clear();
    display_.ClearBrowser();
}

void TreeRefresh::WarnUnreadable(std::string_view tree, const std::string& object) {
    if (std::exchange(unreadable_object_, object) == object) return;
    services_.log.WriteWarning("The cache files of '" + std::string(tree) + "' cannot hold the name of '" +
                               object + "' - the Tree is read from the directory each time");
}

void TreeRefresh::Report(const Error& error) {
    TellUnexpectedError(services_.ui, services_.log, error, "RefreshOUView");
    display_.CloseCacheTree();
}

bool TreeRefresh::CacheIsTooOld(std::string_view tree, const DateTime& written) const {
    Options& options = services_.options;
    if (!options.controls.Checked(CheckGeneral::kAutoTreeCacheRefresh)) return false;
    const std::optional<double> limit = options.Number(&OptionControls::txtCache);
    if (!limit) return false;
    const auto days = static_cast<std::int32_t>(*limit);
    if (DaysBetween(written, services_.clock.Now()) <= days) return false;
    return services_.ui.Ask(
        "The Zorvel cache files for the '" + std::string(tree) + "' Tree are over " + Digits(days) +
            " days old and depending on how frequently your Tree changes, may no longer be "
            "accurate - Would you like to re-read the Tree structure?",
        MessageIcon::kQuestion, Answer::kYes);
}

TreeRefresh::CacheLoad TreeRefresh::LoadFromCache(std::string_view tree) {
    const Files& files = services_.files;
    const CacheMarks marks(files, tree);
    if (const std::string object = marks.UnreadableObject(); !object.empty()) {
        WarnUnreadable(tree, object);
        return CacheLoad::kUnfit;
    }
    services_.log.WriteLog("Reading Tree Cache, '" + TreeCachePath(files, tree) + "'");
    CacheDigests digests;
    {
        TreeCacheReader cache(files.Open(TreeCachePath(files, tree)));
        if (CacheIsTooOld(tree, cache.date())) return CacheLoad::kTooOld;
        lists_.counts.StatusPrefix = "Using cached Tree from " + ShortDate(cache.date());
        cache.ReadContainers(lists_);
        digests.tree = cache.Digest();
    }
    for (std::size_t number = 1; number <= lists_.OUList.size(); ++number)
        display_.AddNode(number, number == 1);
    services_.log.WriteLog("Reading Application Cache, '" + AppCachePath(files, tree) + "'");
    digests.applications = ReadAppCache(files.Open(AppCachePath(files, tree)), lists_);
    if (!CachesFit(tree, marks.StateOf(digests))) {
        Clear();
        return CacheLoad::kUnfit;
    }
    display_.RedrawBrowser();
    return CacheLoad::kLoaded;
}

bool TreeRefresh::CachesFit(std::string_view tree, CacheState state) {
    const std::string name = "'" + std::string(tree) + "'";
    if (state == CacheState::kMixed || (state == CacheState::kUnknown && !ApplicationsFit(lists_))) {
        services_.log.WriteWarning("The cache files of " + name +
                                   " do not belong together - the Tree is read from the directory");
        return false;
    }
    if (state == CacheState::kInterrupted) {
        services_.log.WriteWarning(
            "The cache of " + name +
            " holds only what was read until its reading was interrupted - refresh it");
    }
    return true;
}

bool TreeRefresh::ReadTree(std::string_view tree, CacheLoad cache) {
    if (services_.activity.Closing) return false;
    const auto hold = services_.writers.Acquire();
    if (!hold) return false;
    if (cache == CacheLoad::kTooOld) services_.files.Remove(TreeCachePath(services_.files, tree));
    display_.ShowCacheTree("Refreshing '" + std::string(tree) + "' Tree cache..");
    for (int n = countdown_; n >= 1 && !services_.activity.UserInterrupt; --n) {
        display_.SetLabOU("(Refresh will begin in " + Digits(n) + " second" + (n == 1 ? "" : "s") + ")");
        Pause(services_.clock, services_.ui, 1, &services_.activity.UserInterrupt);
    }
    if (!services_.activity.Closing) {
        try {
            WalkTree(tree);
        } catch (const Interrupted&) {
            services_.activity.UserInterrupt = true;  // while an answer was awaited
        }
    }
    if (services_.activity.Closing) {
        display_.CloseCacheTree();
        return false;
    }
    try {
        WriteCaches(tree);
        services_.log.WriteLog("Finished updating Application Cache file");
    } catch (const OutputError& error) {
        Report(error);  // the tree is there all the same
    }
    services_.sounds.PlayEventSound(services_.options.session.FinishedSound);
    display_.CloseCacheTree();
    const DateTime now = services_.clock.Now();
    lists_.counts.StatusPrefix = "Tree last read on " + ShortDate(now) + " " + ShortTime(now);
    return true;
}

void TreeRefresh::WalkTree(std::string_view tree) {
    started_ = services_.clock.Timer();
    examined_ = 0;
    services_.log.WriteLog("Reading physical Tree, '" + std::string(tree) + "'");
    directory_.SetCurrentObject(RootPath(tree));
    const Entry root = directory_.CurrentEntry();
    OURecord record;
    record.Path = root.path;
    record.Name = root.short_name;
    record.Class = root.class_name;
    const std::size_t root_number = lists_.AddOU(record);
    display_.AddNode(root_number, true);
    const struct Walk {
        Directory& directory;
        explicit Walk(Directory& walked) : directory(walked) { directory.BeginWalk(); }
        ~Walk() { directory.EndWalk(); }
    } walk(directory_);
    RecurseDirectory(root_number);
}

void TreeRefresh::WriteCaches(std::string_view tree) {
    const Files& files = services_.files;
    const bool interrupted = services_.activity.UserInterrupt;
    if (interrupted) {
        services_.log.WriteLog("WARNING: The reading of '" + std::string(tree) +
                               "' was interrupted - its cache holds only what was read until then");
    }
    TreeCacheWriter caches(files, tree, services_.clock.Now(), lists_);
    services_.status.SetStatus(StatusPicture::kYellowBall, "Updating Tree Cache...");
    services_.log.WriteLog("Writing fresh Tree cache, '" + TreeCachePath(files, tree) + "'");
    caches.WriteTreeCache();
    services_.status.SetStatus(StatusPicture::kYellowBall, "Updating Applications Cache...");
    services_.log.WriteLog("Writing fresh Applications Cache, '" + AppCachePath(files, tree) + "'");
    caches.WriteAppCache();
    if (!caches.unreadable_object().empty()) WarnUnreadable(tree, caches.unreadable_object());
    caches.Replace(interrupted);
}

void TreeRefresh::RecurseDirectory(std::size_t root_number) {
    // The containers on the way down and what is still to be read of each; trees can be deeper than a call
    // stack.
    struct Level {
        std::size_t number;
        std::vector<Entry> containers;
        std::size_t next = 0;
    };
    std::vector<Level> levels;
    const auto enter = [&](std::size_t number) {
        if (!services_.activity.UserInterrupt) levels.push_back({number, EnterContainer(number)});
    };
    enter(root_number);
    while (!levels.empty() && !services_.activity.UserInterrupt) {
        Level& level = levels.back();
        if (level.next == level.containers.size()) {
            levels.pop_back();
            continue;
        }
        const Entry container = std::move(level.containers[level.next++]);
        if (container.class_name != kAliasClass) enter(ReadContainer(container, level.number));
    }
}

std::vector<Entry> TreeRefresh::EnterContainer(std::size_t number) {
    const std::string path(lists_.OUList[number - 1].Path);
    services_.status.SetStatus(StatusPicture::kYellowBall, "Reading " + path + "...");
    ++examined_;
    display_.SetLabOU(directory_.FullName(path));
    display_.SetLabOUCount(Grouped(examined_));
    directory_.SetCurrentObject(path);
    display_.RedrawBrowser();
    services_.ui.ProcessEvents();
    return directory_.Entries(path, kContainerClasses);
}

std::size_t TreeRefresh::ReadContainer(const Entry& container, std::size_t parent_number) {
    const std::vector<Entry> applications = directory_.Entries(container.path, kApplicationClass);

    OURecord record;
    record.Parent = lists_.OUList[parent_number - 1].Path;
    record.Path = container.path;
    record.Name = container.short_name;
    record.Class = container.class_name;
    record.AppsHere = static_cast<std::int32_t>(applications.size());
    const std::size_t number = lists_.AddOU(record);
    for (const Entry& application : applications) {
        lists_.AddApp(container.path, application.short_name);
        ++lists_.counts.AppCount;
    }
    display_.SetLabApps(Grouped(lists_.counts.AppCount));
    display_.SetLabElapsed(FormatElapsed(static_cast<std::int64_t>(SecondsSince(services_.clock, started_))));
    OURecord& parent = lists_.OUList[parent_number - 1];
    ++parent.ChildCount;
    parent.ChildApps += record.AppsHere;
    display_.AddNode(number, parent.Name == kRootName);
    return number;
}

}  // namespace zorvel
