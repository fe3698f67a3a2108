#include "directory/tree_cache.h"

#include <limits>

#include "directory/cache_file.h"
#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kTreeCacheHeading = "Zorvel Tree Cache - Do not modify!";
constexpr std::string_view kAppCacheHeading = "Zorvel Applications Cache - Do not modify!";

// Runs `read`; an error that does not say where it struck gets the reader's place.
template <typename Read>
void AtPlace(const FieldReader& reader, Read read) {
    try {
        read();
    } catch (const Error& error) {
        if (error.detail().starts_with(reader.Place())) throw;
        const std::string what = error.detail().empty() ? error.description() : error.detail();
        throw error.With(reader.Place() + ": " + what);
    }
}

[[noreturn]] void ThrowTooMany(std::int32_t announced) {
    throw Error(errors::kSubscript)
        .With("more records than the " + std::to_string(announced) + " announced in line 2");
}

}  // namespace

std::string TreeCachePath(const Files& files, std::string_view tree) {
    return files.Path("TempData\\" + std::string(tree) + ".TreeCache");
}

std::string AppCachePath(const Files& files, std::string_view tree) {
    return files.Path("TempData\\" + std::string(tree) + ".AppCache");
}

TreeCacheReader::TreeCacheReader(const Files& files, std::string_view tree)
    : reader_(files.Open(TreeCachePath(files, tree))) {
    AtPlace(reader_, [&] {
        reader_.NextLine();
        date_ = ParseDateAndTime(reader_.Next());
        announced_ = reader_.NextNumber();
    });
}

void TreeCacheReader::ReadContainers(TreeLists& lists) {
    AtPlace(reader_, [&] {
        while (!reader_.AtEnd()) {
            const std::int32_t apps_here = reader_.NextNumber();
            const std::string path = reader_.Next();
            const std::string class_name = reader_.Next();
            const std::string parent = reader_.Next();
            const std::string name = reader_.Next();
            const std::int32_t child_count = reader_.NextNumber();
            const std::int32_t child_apps = reader_.NextNumber();
            if (static_cast<std::int64_t>(lists.OUList.size()) >= announced_) ThrowTooMany(announced_);
            if (!lists.OUList.empty() && lists.FindOU(parent) == 0) {
                throw Error(errors::kSubscript)
                    .With("the parent '" + parent + "' does not stand before its child");
            }
            if (apps_here > std::numeric_limits<std::int32_t>::max() - lists.counts.AppCount) {
                throw Error(errors::kOverflow);
            }
            lists.counts.AppCount += apps_here;
            lists.AddOU({parent, path, name, class_name, apps_here, child_count, child_apps});
        }
        if (lists.OUList.empty()) throw Error(errors::kSubscript).With("the cache holds no container");
    });
}

void ReadAppCache(const Files& files, std::string_view tree, TreeLists& lists) {
    FieldReader reader(files.Open(AppCachePath(files, tree)));
    AtPlace(reader, [&] {
        reader.NextLine();
        ParseDateAndTime(reader.Next());
        const std::int32_t announced = reader.NextNumber();
        while (!reader.AtEnd()) {
            const std::string name = reader.Next();
            const std::string container = reader.Next();
            if (static_cast<std::int64_t>(lists.AppList.size()) >= announced) ThrowTooMany(announced);
            lists.AddApp(container, name);
        }
    });
    lists.counts.AppCount = static_cast<std::int32_t>(lists.AppList.size());
}

void WriteTreeCache(const Files& files, std::string_view tree, const DateTime& today,
                    const TreeLists& lists) {
    WriteCacheFile(files, TreeCachePath(files, tree), kTreeCacheHeading, today, lists.OUList.size(),
                   [&](OutputFile& file) {
                       for (const OURecord& record : lists.OUList) {
                           file.Write(PlainNumber(record.AppsHere) + ',' + Quoted(record.Path) + ',' +
                                      Quoted(record.Class) + ',' + Quoted(record.Parent) + ',' +
                                      Quoted(record.Name) + ',' + PlainNumber(record.ChildCount) + ',' +
                                      PlainNumber(record.ChildApps) + "\r\n");
                       }
                   });
}

void WriteAppCache(const Files& files, std::string_view tree, const DateTime& today, const TreeLists& lists) {
    WriteCacheFile(files, AppCachePath(files, tree), kAppCacheHeading, today, lists.AppList.size(),
                   [&](OutputFile& file) {
                       for (const AppRecord& record : lists.AppList)
                           WriteApplication(file, record);
                   });
}

}  // namespace zorvel
