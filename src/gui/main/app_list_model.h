// The applications of the current container as ListView1 shows them; everything is read from the OU browser.
#pragma once

#include <QAbstractListModel>

#include "browser/ou_browser.h"
#include "gui/widgets/class_icons.h"

namespace zorvel {

class AppListModel final : public QAbstractListModel {
    Q_OBJECT

  public:
    AppListModel(const ClassIcons& icons, QObject* parent);

    void SetBrowser(const OUBrowser& browser);
    // The items are others.
    void Reset();

    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    const ClassIcons& icons_;
    const OUBrowser* browser_ = nullptr;
};

}  // namespace zorvel
