#include "browser/tree_lists.h"

#include <algorithm>
#include <bit>
#include <functional>

#include "platform/error.h"

namespace zorvel {
namespace {

std::size_t HashOf(std::string_view text) {
    return std::hash<std::string_view>{}(text);
}

std::size_t HashOf(const AppRecord& application) {
    return HashOf(application.Container) * 31 + HashOf(application.Name);
}

}  // namespace

void RecordIndex::Reserve(std::size_t records) {
    constexpr std::size_t kSmallest = 64;
    slots_.assign(std::bit_ceil(std::max(records * 2, kSmallest)), 0);
}

void RecordIndex::Insert(std::size_t hash, std::size_t number) {
    std::size_t at = hash & (slots_.size() - 1);
    while (slots_[at] != 0)
        at = (at + 1) & (slots_.size() - 1);
    slots_[at] = static_cast<std::uint32_t>(number);
}

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

    const std::size_t number = OUList.size();
    if (number > containers_.capacity()) {
        containers_.Reserve(number * 2);
        for (std::size_t i = 1; i < number; ++i)
            containers_.Insert(HashOf(OUList[i - 1].Path), i);
    }
    containers_.Insert(HashOf(kept.Path), number);
    return number;
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
    return containers_.Find(HashOf(path),
                            [&](std::size_t number) { return OUList[number - 1].Path == path; });
}

std::size_t TreeLists::FindApp(std::string_view container, std::string_view name) const {
    if (applications_.empty() && !AppList.empty()) {
        applications_.Reserve(AppList.size());
        for (std::size_t i = 0; i < AppList.size(); ++i)
            applications_.Insert(HashOf(AppList[i]), i + 1);
    }
    const AppRecord wanted{container, name, false};
    // Records of one key are inserted in list order, so the first of a chain is the first of the list.
    return applications_.Find(HashOf(wanted), [&](std::size_t number) {
        return AppList[number - 1].Name == name && AppList[number - 1].Container == container;
    });
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
