#include "gui/dialogs/frm_db_maint.h"

#include <QSignalBlocker>

#include "gui/widgets/qt_text.h"
#include "gui/widgets/show_summary.h"
#include "ui_frm_db_maint.h"

namespace zorvel {

frmDBMaint::frmDBMaint(DatabaseMaintenance& maintenance, QWidget* parent)
    : QDialog(parent), maintenance_(maintenance), ui_(std::make_unique<Ui::frmDBMaint>()) {
    ui_->setupUi(this);
    ShowList();
    connect(ui_->lstCapture, &QListWidget::currentRowChanged, this, &frmDBMaint::Select);
    connect(ui_->butCompact, &QPushButton::clicked, this, [this] { maintenance_.Compact(); });
    connect(ui_->butDelete, &QPushButton::clicked, this, &frmDBMaint::Delete);
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::reject);
}

frmDBMaint::~frmDBMaint() = default;

void frmDBMaint::Select(int line) {
    maintenance_.Select(static_cast<std::size_t>(line));
    ShowSummary();
}

void frmDBMaint::Delete() {
    const MaintenanceResult result = maintenance_.Delete();
    // A deletion that failed on its way left the list and the selected line; one whose refresh failed, none.
    if (result == MaintenanceResult::kDone || maintenance_.lstCapture.empty()) ShowList();
}

void frmDBMaint::ShowList() {
    const QSignalBlocker filling(ui_->lstCapture);
    ui_->frameCapture->setTitle(ToQString(maintenance_.list_caption));
    ShowDatasetsIn(*ui_->lstCapture, maintenance_.lstCapture, maintenance_.item_notes);
    // The first is selected after each refresh.
    ui_->lstCapture->setCurrentRow(0);
    ui_->butCompact->setEnabled(maintenance_.butCompactEnabled);
    ui_->butDelete->setEnabled(maintenance_.butDeleteEnabled);
    ShowSummary();
}

void frmDBMaint::ShowSummary() {
    ShowSummaryIn(*ui_, maintenance_.summary);
}

}  // namespace zorvel
