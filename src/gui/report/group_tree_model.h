// The groups of a report as a tree, read from the report as they come into sight.
#pragma once

#include <QAbstractItemModel>
#include <cstddef>
#include <memory>
#include <vector>

#include "reporting/report.h"

namespace zorvel {

class GroupTreeModel final : public QAbstractItemModel {
    Q_OBJECT

  public:
    GroupTreeModel(std::shared_ptr<const Report> report, QObject* parent);

    // The group that `index`, a valid one, stands for (its number in rows().groups()), and the reverse.
    static std::size_t Group(const QModelIndex& index) { return index.internalId(); }
    QModelIndex IndexOf(std::size_t group) const;

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    // A group among those of its level.
    struct Node {
        std::size_t parent = 0;       // a group; not for those of level 0
        std::size_t place = 0;        // in the list of its level
        std::size_t first_child = 0;  // a place in the list of the next level
        std::size_t children = 0;
    };

    const std::vector<RowGroup>& groups() const { return report_->rows().groups(); }

    std::shared_ptr<const Report> report_;
    std::vector<Node> nodes_;                       // of each group
    std::vector<std::vector<std::size_t>> levels_;  // the groups of each level in order
};

}  // namespace zorvel
