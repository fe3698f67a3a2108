#include "reporting/issue_tree.h"

#include <algorithm>
#include <array>
#include <utility>

#include "issues/issue_catalogue.h"
#include "platform/code_page.h"

namespace zorvel {
void IssueTree::Fill(const std::vector<Resolution>& resolutions) {
    // Each with its text as it is sorted.
    std::array<std::vector<std::pair<std::string, const Resolution*>>, kIssueCategories.size()> issues;
    for (const Resolution& resolution : resolutions)
        issues.at(static_cast<std::size_t>(CategoryOf(resolution.IssueCode)))
            .emplace_back(UpperCase(resolution.IssueShortDesc), &resolution);
    nodes_.clear();
    for (std::size_t i = 0; i < kIssueCategories.size(); ++i) {
        const std::size_t number = nodes_.size();
        nodes_.push_back({std::string(kIssueCategories.at(i).key), std::string(kIssueCategories.at(i).text),
                          number, true, true});
        std::stable_sort(issues.at(i).begin(), issues.at(i).end(),
                         [](const auto& left, const auto& right) { return left.first < right.first; });
        for (const auto& [sorted_by, issue] : issues.at(i))
            nodes_.push_back({issue->IssueCode, issue->IssueShortDesc, number});
    }
}

bool IssueTree::HasChildren(std::size_t number) const {
    return IsCategory(number) && number + 1 < nodes_.size() && nodes_[number + 1].category == number;
}

void IssueTree::Check(std::size_t number, bool checked) {
    if (!IsCategory(number)) {
        nodes_[number].checked = checked;
        SetNodeState(number);
        return;
    }
    for (IssueNode& node : nodes_) {
        if (node.category == number) node.checked = checked;
    }
    nodes_[number].bold = checked;
}

void IssueTree::SetNodeState(std::size_t number) {
    if (HasChildren(number)) return;
    const std::size_t category = nodes_.at(number).category;
    std::size_t total = 0;
    std::size_t checked = 0;
    for (std::size_t i = category; i < nodes_.size() && nodes_[i].category == category; ++i) {
        if (HasChildren(i)) continue;
        ++total;
        if (nodes_[i].checked) ++checked;
    }
    nodes_[category].checked = checked > 0;
    nodes_[category].bold = checked == total;
}

void IssueTree::SetNodeStates() {
    for (std::size_t number = 0; number < nodes_.size(); ++number)
        SetNodeState(number);
}

void IssueTree::SetAll(bool checked) {
    for (IssueNode& node : nodes_)
        node.checked = checked;
    SetNodeStates();
}

void IssueTree::Invert() {
    for (IssueNode& node : nodes_)
        node.checked = !node.checked;
    SetNodeStates();
}

bool IssueTree::AnyChecked() const {
    return std::any_of(nodes_.begin(), nodes_.end(), [](const IssueNode& node) { return node.checked; });
}

std::string IssueTree::UncheckedKeys() const {
    std::string keys;
    for (std::size_t number = 0; number < nodes_.size(); ++number) {
        if (nodes_[number].checked || HasChildren(number)) continue;
        if (!keys.empty()) keys += ',';
        keys += '\'' + nodes_[number].key + '\'';
    }
    return keys;
}

}  // namespace zorvel
