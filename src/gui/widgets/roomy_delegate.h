// Lines of a tree without icons, with room for accents above capital letters.
#pragma once

#include <QStyledItemDelegate>

namespace zorvel {

class RoomyDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int kRoom = 5;  // pixels
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kRoom);
    }
};

}  // namespace zorvel
