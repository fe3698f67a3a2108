#include "browser/ou_nodes.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kRoot = 1;

}  // namespace

void OUNodes::Clear() {
    parents_.assign(1, 0);
    shown_.clear();
    rows_.clear();
    first_.clear();
    order_.clear();
}

void OUNodes::Add(std::size_t number) {
    if (parents_.empty()) parents_.assign(1, 0);
    const OURecord& record = lists_.OUList[number - 1];
    const std::size_t parent = number == kRoot ? 0 : lists_.FindOU(record.Parent);
    if (number != kRoot && (parent == 0 || parent >= number)) {
        throw Error(errors::kSubscript)
            .With("the container '" + std::string(record.Path) + "' has an unknown parent, '" +
                  std::string(record.Parent) + "'");
    }
    parents_.push_back(static_cast<std::uint32_t>(parent));
}

void OUNodes::Arrange(TreeViewMode mode) {
    const std::size_t end = parents_.size();
    ChooseShown(mode);
    // The children of all nodes in one list: first how many each has, then where each begins, then who they
    // are.
    first_.assign(end + 1, 0);
    rows_.assign(end, 0);
    for (std::size_t number = kRoot; number < end; ++number) {
        if (shown_[number] != 0) rows_[number] = first_[parents_[number] + 1]++;
    }
    for (std::size_t number = 0; number < end; ++number)
        first_[number + 1] += first_[number];
    order_.assign(first_[end], 0);
    for (std::size_t number = kRoot; number < end; ++number) {
        if (shown_[number] != 0)
            order_[first_[parents_[number]] + rows_[number]] = static_cast<std::uint32_t>(number);
    }
    SortChildrenOfRoot();
}

void OUNodes::ChooseShown(TreeViewMode mode) {
    const std::size_t end = parents_.size();
    shown_.assign(end, mode == TreeViewMode::kFull ? 1 : 0);
    if (end > 0) shown_[0] = 0;  // belongs to no container
    if (mode == TreeViewMode::kFull || end <= kRoot) return;
    // Children come after their parents, so on the way back each is settled before its parent is.
    for (std::size_t number = end - 1; number > kRoot; --number) {
        if (lists_.OUList[number - 1].AppsHere >= 1) shown_[number] = 1;
        if (shown_[number] != 0) shown_[parents_[number]] = 1;
    }
    shown_[kRoot] = 1;
}

void OUNodes::SortChildrenOfRoot() {
    const std::size_t count = ChildCount(kRoot);
    if (count < 2) return;
    std::vector<std::pair<std::string, std::uint32_t>> children;
    children.reserve(count);
    for (std::size_t row = 0; row < count; ++row) {
        const std::size_t number = Child(kRoot, row);
        children.emplace_back(UpperCase(NodeText(lists_.OUList[number - 1])),
                              static_cast<std::uint32_t>(number));
    }
    std::sort(children.begin(), children.end());
    for (std::size_t row = 0; row < count; ++row) {
        order_[first_[kRoot] + row] = children[row].second;
        rows_[children[row].second] = static_cast<std::uint32_t>(row);
    }
}

std::size_t OUNodes::ChildCount(std::size_t number) const {
    return number + 1 < first_.size() ? first_[number + 1] - first_[number] : 0;
}

}  // namespace zorvel
