#include "gui/main/ou_tree_model.h"

#include <QFont>

#include "gui/widgets/palette.h"
#include "gui/widgets/qt_text.h"

namespace zorvel {

OUTreeModel::OUTreeModel(const ClassIcons& icons, QObject* parent)
    : QAbstractItemModel(parent), icons_(icons) {}

void OUTreeModel::SetBrowser(OUBrowser& browser) {
    browser_ = &browser;
    Reset();
}

void OUTreeModel::Reset() {
    beginResetModel();
    endResetModel();
}

QModelIndex OUTreeModel::IndexOf(std::size_t number) const {
    if (browser_ == nullptr || !browser_->nodes().Shown(number)) return {};
    return createIndex(static_cast<int>(browser_->nodes().Row(number)), 0, number);
}

QModelIndex OUTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    const std::size_t number = browser_->nodes().Child(Number(parent), static_cast<std::size_t>(row));
    return createIndex(row, column, number);
}

QModelIndex OUTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(browser_->nodes().Parent(Number(child))) : QModelIndex();
}

int OUTreeModel::rowCount(const QModelIndex& parent) const {
    return browser_ == nullptr ? 0 : static_cast<int>(browser_->nodes().ChildCount(Number(parent)));
}

int OUTreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

Qt::ItemFlags OUTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
}

QVariant OUTreeModel::data(const QModelIndex& index, int role) const {
    const std::size_t number = Number(index);
    if (number == 0) return {};
    switch (role) {
        case Qt::DisplayRole:
            return ToQString(NodeText(browser_->Record(number)));
        case Qt::ToolTipRole:
            return PlainToolTip(ToQString(browser_->Record(number).Path));
        case Qt::DecorationRole:
            return icons_.Of(browser_->Record(number).Class);
        case Qt::CheckStateRole:
            return browser_->Checked(number) ? Qt::Checked : Qt::Unchecked;
        case Qt::FontRole: {
            if (!browser_->Bold(number)) return {};
            QFont font;
            font.setBold(true);
            return font;
        }
        case Qt::ForegroundRole: {
            const QBrush brush = NodeBrush(browser_->Colour(number));
            return brush.style() == Qt::NoBrush ? QVariant() : brush;
        }
        default:
            return {};
    }
}

bool OUTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid()) return false;
    browser_->CheckNode(Number(index), value.toInt() == Qt::Checked);
    return true;
}

}  // namespace zorvel
