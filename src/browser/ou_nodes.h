// The containers of a tree as nodes: who is whose child, in which order, and which of them are shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "browser/tree_lists.h"

namespace zorvel {

enum class TreeViewMode {
    kFull,
    kFiltered  // only containers that hold applications, or have descendants that do
};

// Nodes are told by the numbers of their containers in OUList (1-based); number 0 stands for "none".
class OUNodes {
  public:
    explicit OUNodes(const TreeLists& lists) : lists_(lists) {}

    void Clear();
    // Adds the node of container `number`, the next one of OUList. It is shown at the next Arrange.
    // Raises error 9 when its parent is not among the containers before it.
    void Add(std::size_t number);
    // Arranges the nodes added so far: children in the order of OUList, those of the root sorted by name.
    void Arrange(TreeViewMode mode);

    // What the last Arrange made. The root is the only child of number 0.
    std::size_t ChildCount(std::size_t number) const;
    std::size_t Child(std::size_t number, std::size_t row) const { return order_[first_[number] + row]; }
    std::size_t Parent(std::size_t number) const { return parents_[number]; }
    // The place of a shown node among its siblings.
    std::size_t Row(std::size_t number) const { return rows_[number]; }
    bool Shown(std::size_t number) const { return number < shown_.size() && shown_[number] != 0; }

  private:
    void ChooseShown(TreeViewMode mode);
    void SortChildrenOfRoot();

    const TreeLists& lists_;
    // By container number; element 0 belongs to no container.
    std::vector<std::uint32_t> parents_;
    std::vector<std::uint8_t> shown_;
    std::vector<std::uint32_t> rows_;
    std::vector<std::uint32_t> first_;  // where the children of each begin in order_, and one more: the end
    std::vector<std::uint32_t> order_;
};

}  // namespace zorvel
