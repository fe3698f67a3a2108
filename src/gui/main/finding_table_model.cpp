#include "gui/main/finding_table_model.h"

#include <QGuiApplication>
#include <QPalette>

#include "gui/widgets/palette.h"
#include "gui/widgets/qt_text.h"
#include "reporting/report_values.h"

namespace zorvel {
namespace {

// What of a field is painted and shown in its tool tip: nobody sees more, and all of it would take long.
constexpr int kShownLength = 500;

}  // namespace

FindingTableModel::FindingTableModel(const FindingsView& view, QObject* parent)
    : QAbstractTableModel(parent), view_(view) {}

void FindingTableModel::Reset() {
    beginResetModel();
    endResetModel();
}

std::uint32_t FindingTableModel::RowOf(const QModelIndex& index) const {
    return view_.rows()[static_cast<std::size_t>(index.row())];
}

int FindingTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(view_.rows().size());
}

int FindingTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kFindingColumns.size());
}

QVariant FindingTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return TextOf(index).replace('\n', ' ');
        case Qt::ToolTipRole:
            return PlainToolTip(TextOf(index));
        case Qt::ForegroundRole:
            return ColourOf(index);
        default:
            return {};
    }
}

QString FindingTableModel::TextOf(const QModelIndex& index) const {
    const Findings& findings = *view_.findings();
    std::string text = FindingField(findings.table(), findings.states(), RowOf(index),
                                    static_cast<FindingColumn>(index.column()));
    if (text.size() > kShownLength) text.replace(kShownLength, std::string::npos, "...");
    return ToQString(DisplayText(std::move(text)));
}

QVariant FindingTableModel::ColourOf(const QModelIndex& index) const {
    const Findings& findings = *view_.findings();
    const std::uint32_t row = RowOf(index);
    if (!CountsAsOpen(findings.states()[row]))
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    if (static_cast<FindingColumn>(index.column()) != FindingColumn::kSeverity) return {};
    return SeverityBrush(findings.table().RuleOf(row).severity);
}

QVariant FindingTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical || role != Qt::DisplayRole) return {};
    return ToQString(kFindingColumns.at(static_cast<std::size_t>(section)));
}

}  // namespace zorvel
