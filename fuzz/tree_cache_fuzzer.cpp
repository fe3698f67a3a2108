// Reads arbitrary bytes as a tree cache, an application cache and their marks, with NULs between them: what
// is not refused is found in the lists, digested whole, and reads the same when it is written again.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "browser/cache_file.h"
#include "browser/tree_cache.h"
#include "fuzz_input.h"

namespace zorvel::fuzz {
namespace {

constexpr auto kRefusals = {errors::kInvalidCall, errors::kOverflow, errors::kSubscript,
                            errors::kTypeMismatch, errors::kPastEndOfFile};

std::string DigestOf(std::string_view bytes) {
    CacheDigest digest;
    digest.Add(bytes);
    return digest.Text();
}

std::string ContainersText(const TreeLists& lists) {
    std::string text = CacheHead("Tree", {2026, 11, 16, 0, 0, 0}, lists.OUList.size());
    for (const OURecord& record : lists.OUList)
        text += ContainerLine(record);
    return text;
}

std::string ApplicationsText(const TreeLists& lists) {
    std::string text = CacheHead("Applications", {2026, 11, 16, 0, 0, 0}, lists.AppList.size());
    for (const AppRecord& record : lists.AppList)
        text += ApplicationLine(record);
    return text;
}

// Reads the containers; false when they are refused.
bool ReadContainers(std::string_view bytes, TreeLists& lists) {
    return Readable(kRefusals, [&] {
               TreeCacheReader reader(AsFile(bytes));
               reader.ReadContainers(lists);
               return reader.Digest();
           }) == DigestOf(bytes);
}

void CheckContainers(const TreeLists& lists) {
    std::int64_t applications = 0;
    bool carried = true;
    for (std::size_t i = 0; i < lists.OUList.size(); ++i) {
        const OURecord& record = lists.OUList[i];
        Require(lists.FindOU(record.Path) == i + 1);
        applications += record.AppsHere;
        for (const std::string_view text : {record.Path, record.Class, record.Parent, record.Name})
            carried = carried && IsCarried(text);
    }
    Require(lists.counts.AppCount == applications);
    TreeLists again;
    const std::string text = ContainersText(lists);
    if (carried) Require(ReadContainers(text, again) && ContainersText(again) == text);
}

void CheckApplications(const TreeLists& lists) {
    Require(static_cast<std::size_t>(lists.counts.AppCount) == lists.AppList.size());
    bool carried = true;
    for (std::size_t i = 0; i < lists.AppList.size(); ++i) {
        const AppRecord& record = lists.AppList[i];
        const std::size_t found = lists.FindApp(record.Container, record.Name);
        Require(found > 0 && found <= i + 1);
        carried = carried && IsCarried(record.Container) && IsCarried(record.Name);
    }
    TreeLists again;
    const std::string text = ApplicationsText(lists);
    if (carried)
        Require(ReadAppCache(AsFile(text), again) == DigestOf(text) && ApplicationsText(again) == text);
}

void CheckMarks(std::string_view bytes) {
    const std::vector<CacheMark> marks = ReadCacheMarks(AsFile(bytes));
    std::string text;
    for (const CacheMark& mark : marks)
        text += CacheMarkLine(mark);
    Require(ReadCacheMarks(AsFile(text)) == marks);
}

}  // namespace

void TestOneInput(std::string_view input) {
    const std::string_view containers = TakePart(input, '\0');
    const std::string_view applications = TakePart(input, '\0');
    CheckMarks(input);
    TreeLists lists;
    if (ReadContainers(containers, lists)) CheckContainers(lists);
    const auto digest = Readable(kRefusals, [&] { return ReadAppCache(AsFile(applications), lists); });
    if (!digest) return;
    Require(*digest == DigestOf(applications));
    CheckApplications(lists);
    ApplicationsFit(lists);
}

}  // namespace zorvel::fuzz
