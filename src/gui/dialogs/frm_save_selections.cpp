#include "gui/dialogs/frm_save_selections.h"

#include "gui/widgets/qt_text.h"
#include "ui_frm_save_selections.h"

namespace zorvel {

frmSaveSelections::frmSaveSelections(SaveSelections& selections, QWidget* parent)
    : QDialog(parent), selections_(selections), ui_(std::make_unique<Ui::frmSaveSelections>()) {
    ui_->setupUi(this);
    ui_->labComment->setText(ToQString(SaveSelections::labComment));
    ui_->txtComment->setText(ToQString(selections_.txtComment));
    connect(ui_->butSave, &QPushButton::clicked, this, &frmSaveSelections::Save);
    connect(ui_->butExit, &QPushButton::clicked, this, &QDialog::reject);
}

frmSaveSelections::~frmSaveSelections() = default;

void frmSaveSelections::Save() {
    selections_.txtComment = FromQString(ui_->txtComment->text());
    selections_.Save();
    if (selections_.closed) accept();
}

}  // namespace zorvel
