#include "gui/main/app_list_model.h"

#include "directory/directory.h"
#include "gui/widgets/qt_text.h"

namespace zorvel {

AppListModel::AppListModel(const ClassIcons& icons, QObject* parent)
    : QAbstractListModel(parent), icons_(icons) {}

void AppListModel::SetBrowser(const OUBrowser& browser) {
    browser_ = &browser;
    Reset();
}

void AppListModel::Reset() {
    beginResetModel();
    endResetModel();
}

int AppListModel::rowCount(const QModelIndex& parent) const {
    return browser_ == nullptr || parent.isValid() ? 0 : static_cast<int>(browser_->items().size());
}

QVariant AppListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return ToQString(browser_->items()[static_cast<std::size_t>(index.row())].name);
        case Qt::DecorationRole:
            return icons_.Of(kApplicationClass);
        default:
            return {};
    }
}

}  // namespace zorvel
