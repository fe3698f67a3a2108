// The findings as tabFindings shows them: what is seen is read from the view, a row at a time.
#pragma once

#include <QAbstractTableModel>

#include "findings/findings_view.h"

namespace zorvel {

class FindingTableModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    // `view` must outlive the model.
    FindingTableModel(const FindingsView& view, QObject* parent);

    // The rows are others.
    void Reset();
    // The row of the table that a line shows.
    std::uint32_t RowOf(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString TextOf(const QModelIndex& index) const;
    QVariant ColourOf(const QModelIndex& index) const;

    const FindingsView& view_;
};

}  // namespace zorvel
