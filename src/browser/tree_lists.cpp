#include "browser/tree_lists.h"

#include <algorithm>
#include <functional>

#include "platform/error.h"

namespace zorvel {
namespace {

std::uint32_t HashOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

std::uint32_t HashOf(std::string_view container, std::string_view name) {
    return HashOf(container) * 31 + HashOf(name);
}

// What a table found as a record number, 0 for nothing.
std::size_t RecordNumber(std::uint32_t found) {
    return found == NumberTable::kNone ? 0 : found;
}

}  // namespace

void TreeLists::Clear() {
    OUList.clear();
    AppList.clear();
    counts.AppCount = 0;
    counts.SelectedCount = 0;
    texts_.Clear();
    containers_.Clear();
    applications_.Clear();
    classes_.clear();
}

std::size_t TreeLists::AddOU(const OURecord& record) {
    if (FindOU(record.Path) != 0) {
        throw Error(errors::kInvalidCall)
            .With("the container '" + std::string(record.Path) + "' is there twice");
    }
    OURecord kept = record;
    kept.Path = texts_.Keep(record.Path);
    // Every name is the end of its path, and every parent the path of an earlier container.
    kept.Name = kept.Path.ends_with(record.Name) ? kept.Path.substr(kept.Path.size() - record.Name.size())
                                                 : texts_.Keep(record.Name);
    kept.Parent = ShareContainer(record.Parent);
    const auto known = std::find(classes_.begin(), classes_.end(), record.Class);
    kept.Class = known != classes_.end() ? *known : classes_.emplace_back(texts_.Keep(record.Class));
    OUList.push_back(kept);

    containers_.Insert(HashOf(kept.Path), static_cast<std::uint32_t>(OUList.size()));
    return OUList.size();
}

std::size_t TreeLists::AddApp(std::string_view container, std::string_view name) {
    const bool same_container = !AppList.empty() && AppList.back().Container == container;
    AppList.push_back(
        {same_container ? AppList.back().Container : ShareContainer(container), texts_.Keep(name), false});
    applications_.Clear();
    return AppList.size();
}

std::string_view TreeLists::ShareContainer(std::string_view path) {
    const std::size_t number = FindOU(path);
    return number != 0 ? OUList[number - 1].Path : texts_.Keep(path);
}

std::size_t TreeLists::FindOU(std::string_view path) const {
    return RecordNumber(containers_.Find(
        HashOf(path), [&](std::uint32_t number) { return OUList[number - 1].Path == path; }));
}

std::size_t TreeLists::FindApp(std::string_view container, std::string_view name) const {
    if (applications_.empty()) {
        std::uint32_t number = 0;
        for (const AppRecord& application : AppList)
            applications_.Insert(HashOf(application.Container, application.Name), ++number);
    }
    return RecordNumber(applications_.Find(HashOf(container, name), [&](std::uint32_t number) {
        return AppList[number - 1].Name == name && AppList[number - 1].Container == container;
    }));
}

void TreeLists::Select(AppRecord& application, bool selected) {
    if (application.Selected == selected) return;
    application.Selected = selected;
    counts.SelectedCount += selected ? 1 : -1;
}

std::string NodeText(const OURecord& record) {
    std::string text(record.Name);
    if (!record.Parent.empty()) text += " (" + std::to_string(record.AppsHere) + ")";
    return text;
}

}  // namespace zorvel
