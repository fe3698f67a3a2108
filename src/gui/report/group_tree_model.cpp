#include "gui/report/group_tree_model.h"

#include <utility>

#include "gui/widgets/qt_text.h"

namespace zorvel {

GroupTreeModel::GroupTreeModel(std::shared_ptr<const Report> report, QObject* parent)
    : QAbstractItemModel(parent),
      report_(std::move(report)),
      nodes_(groups().size()),
      levels_(report_->definition().groups.size() + 1) {
    std::vector<std::size_t> open(levels_.size());  // the last group of each level so far
    for (std::size_t group = 0; group < nodes_.size(); ++group) {
        const std::size_t level = groups()[group].level;
        Node& node = nodes_[group];
        node.place = levels_[level].size();
        levels_[level].push_back(group);
        open[level] = group;
        node.first_child = levels_[level + 1].size();
        if (level == 0) continue;
        node.parent = open[level - 1];
        ++nodes_[node.parent].children;
    }
}

QModelIndex GroupTreeModel::IndexOf(std::size_t group) const {
    const Node& node = nodes_[group];
    const std::size_t first = groups()[group].level == 0 ? 0 : nodes_[node.parent].first_child;
    return createIndex(static_cast<int>(node.place - first), 0, group);
}

QModelIndex GroupTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    const auto number = static_cast<std::size_t>(row);
    if (!parent.isValid()) return createIndex(row, column, levels_[0][number]);
    const std::size_t group = Group(parent);
    const auto& below = levels_[groups()[group].level + 1];
    return createIndex(row, column, below[nodes_[group].first_child + number]);
}

QModelIndex GroupTreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || groups()[Group(child)].level == 0) return {};
    return IndexOf(nodes_[Group(child)].parent);
}

int GroupTreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(parent.isValid() ? nodes_[Group(parent)].children : levels_[0].size());
}

int GroupTreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

QVariant GroupTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    const QString heading = ToQString(report_->Heading(Group(index)));
    // A tree's line holds one line of text.
    return role == Qt::ToolTipRole ? PlainToolTip(heading) : heading.simplified();
}

}  // namespace zorvel
