#include "gui/dialogs/frm_load_selections.h"

#include "gui/widgets/qt_text.h"
#include "ui_frm_load_selections.h"

namespace zorvel {

frmLoadSelections::frmLoadSelections(LoadSelections& selections, QWidget* parent)
    : QDialog(parent), selections_(selections), ui_(std::make_unique<Ui::frmLoadSelections>()) {
    ui_->setupUi(this);
    ui_->labChoose->setText(ToQString(LoadSelections::labChoose));
    for (const std::string& line : selections_.lstLoad)
        ui_->lstLoad->addItem(ToQString(line));
    const bool any = !selections_.lstLoad.empty();
    if (any) ui_->lstLoad->setCurrentRow(static_cast<int>(selections_.selected));
    ui_->butLoad->setEnabled(any);
    ShowComment();
    connect(ui_->lstLoad, &QListWidget::currentRowChanged, this, &frmLoadSelections::Select);
    // Enter on a line presses the default button.
    connect(ui_->lstLoad, &QListWidget::itemDoubleClicked, this, &frmLoadSelections::Load);
    connect(ui_->butLoad, &QPushButton::clicked, this, &frmLoadSelections::Load);
    connect(ui_->butExit, &QPushButton::clicked, this, &QDialog::reject);
}

frmLoadSelections::~frmLoadSelections() = default;

void frmLoadSelections::Select(int line) {
    selections_.Select(static_cast<std::size_t>(line));
    ShowComment();
}

void frmLoadSelections::ShowComment() {
    ui_->txtComment->setPlainText(ToQString(selections_.txtComment));
}

void frmLoadSelections::Load() {
    selections_.Load();
    if (selections_.closed) accept();
}

}  // namespace zorvel
