// The nodes of the OU browser as TreeView1 shows them; everything is read from the browser itself.
#pragma once

#include <QAbstractItemModel>
#include <cstddef>

#include "browser/ou_browser.h"
#include "gui/widgets/class_icons.h"

namespace zorvel {

class OUTreeModel final : public QAbstractItemModel {
    Q_OBJECT

  public:
    OUTreeModel(const ClassIcons& icons, QObject* parent);

    // The browser comes when the session has been made; before, there are no nodes.
    void SetBrowser(OUBrowser& browser);
    // The nodes were arranged anew.
    void Reset();

    // The container that `index` stands for (its number in OUList), and the reverse. An index that is not
    // valid, and a container that is not shown, stand for each other's absence: 0.
    static std::size_t Number(const QModelIndex& index) { return index.isValid() ? index.internalId() : 0; }
    QModelIndex IndexOf(std::size_t number) const;

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    const ClassIcons& icons_;
    OUBrowser* browser_ = nullptr;
};

}  // namespace zorvel
