#include "browser/tree_cache.h"

#include <utility>

#include "browser/cache_file.h"
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
        throw error.Within(reader.Place());
    }
}

// `file`, whose bytes are handed to `digest`, too.
InputFile Observed(InputFile file, CacheDigest& digest) {
    file.Observe([&digest](std::string_view bytes) { digest.Add(bytes); });
    return file;
}

// A cache file that is being written, and its digest.
class DigestedFile {
  public:
    explicit DigestedFile(OutputFile& file) : file_(file) {}

    void Write(const std::string& text) {
        file_.Write(text);
        digest_.Add(text);
    }
    // Gives the digest of the whole.
    std::string Close() {
        file_.Close();
        return digest_.Text();
    }

  private:
    OutputFile& file_;
    CacheDigest digest_;
};

// False for a text that a double quote or a line break would cut when it is read back.
bool IsCarried(std::string_view text) {
    return text.find_first_of("\"\r\n") == std::string_view::npos;
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

TreeCacheReader::TreeCacheReader(InputFile file) : reader_(Observed(std::move(file), digest_)) {
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
            const std::int64_t count = std::int64_t{lists.counts.AppCount} + apps_here;
            if (!std::in_range<std::int32_t>(count)) throw Error(errors::kOverflow);
            lists.counts.AppCount = static_cast<std::int32_t>(count);
            lists.AddOU({parent, path, name, class_name, apps_here, child_count, child_apps});
        }
        if (lists.OUList.empty()) throw Error(errors::kSubscript).With("the cache holds no container");
    });
}

std::string ReadAppCache(InputFile file, TreeLists& lists) {
    CacheDigest digest;
    FieldReader reader(Observed(std::move(file), digest));
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
    return digest.Text();
}

bool ApplicationsFit(const TreeLists& lists) {
    std::vector<std::int32_t> found(lists.OUList.size() + 1);
    std::string_view last_container;
    std::size_t number = 0;
    for (const AppRecord& application : lists.AppList) {
        if (application.Container != last_container) number = lists.FindOU(application.Container);
        last_container = application.Container;
        if (number == 0) return false;
        ++found[number];
    }
    for (std::size_t i = 0; i < lists.OUList.size(); ++i) {
        if (lists.OUList[i].AppsHere != found[i + 1]) return false;
    }
    return true;
}

TreeCacheWriter::TreeCacheWriter(const Files& files, std::string_view tree, const DateTime& today,
                                 const TreeLists& lists)
    : files_(files),
      tree_(tree),
      today_(today),
      lists_(lists),
      tree_cache_(files.Resolve(TreeCachePath(files, tree)), TreeCachePath(files, tree),
                  OutputFile::Kind::kProgramFile),
      app_cache_(files.Resolve(AppCachePath(files, tree)), AppCachePath(files, tree),
                 OutputFile::Kind::kProgramFile) {}

void TreeCacheWriter::WriteTreeCache() {
    DigestedFile file(tree_cache_.file());
    file.Write(CacheHead(kTreeCacheHeading, today_, lists_.OUList.size()));
    for (const OURecord& record : lists_.OUList) {
        if (unreadable_object_.empty() && !(IsCarried(record.Name) && IsCarried(record.Class)))
            unreadable_object_ = OneLine(record.Path);
        file.Write(ContainerLine(record));
    }
    digests_.tree = file.Close();
}

void TreeCacheWriter::WriteAppCache() {
    DigestedFile file(app_cache_.file());
    file.Write(CacheHead(kAppCacheHeading, today_, lists_.AppList.size()));
    for (const AppRecord& record : lists_.AppList) {
        if (unreadable_object_.empty() && !IsCarried(record.Name))
            unreadable_object_ = OneLine(std::string(record.Container) + '\\' + std::string(record.Name));
        file.Write(ApplicationLine(record));
    }
    digests_.applications = file.Close();
}

void TreeCacheWriter::Replace(bool interrupted) {
    CacheMark mark{digests_, interrupted ? CacheState::kInterrupted : CacheState::kWhole};
    if (!unreadable_object_.empty()) mark = {digests_, CacheState::kUnreadable, unreadable_object_};
    CacheMarks marks(files_, tree_);
    marks.Announce(mark);
    // Without a tree cache the directory is read: so the application cache comes first.
    app_cache_.MoveIntoPlace();
    tree_cache_.MoveIntoPlace();
    marks.Settle();
}

}  // namespace zorvel
