#include "gui/dialogs/frm_capture_details.h"

#include <QLabel>
#include <array>

#include "gui/widgets/qt_text.h"
#include "ui_frm_capture_details.h"

namespace zorvel {

frmCaptureDetails::frmCaptureDetails(CaptureDetails& details, QWidget* parent)
    : QDialog(parent),
      details_(details),
      ui_(std::make_unique<Ui::frmCaptureDetails>()),
      show_texts_([this] { ShowTexts(); }) {
    ui_->setupUi(this);
    const std::array<QLabel*, 4> labels = {ui_->labData_0, ui_->labData_1, ui_->labData_2, ui_->labData_3};
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i]->setText(ToQString(details_.labData[i]));
    ui_->labWarning->setText(ToQString(details_.labWarning));
    ui_->labWarning->setVisible(!details_.labWarning.empty());
    ui_->txtComments->setText(ToQString(details_.txtComments));
    ui_->txtComments->selectAll();
    ShowDetails();
    connect(ui_->butOk, &QPushButton::clicked, this, &frmCaptureDetails::BeginImport);
    connect(ui_->butCancel, &QPushButton::clicked, this, &frmCaptureDetails::reject);
}

frmCaptureDetails::~frmCaptureDetails() = default;

// What changes when the import begins.
void frmCaptureDetails::ShowDetails() {
    setWindowTitle(ToQString(details_.caption));
    ui_->butOk->setVisible(details_.butOkVisible);
    ui_->frameStatus->setVisible(details_.frameStatusVisible);
}

void frmCaptureDetails::BeginImport() {
    details_.txtComments = FromQString(ui_->txtComments->text());
    const ImportResult result = details_.BeginImport(*this);
    if (details_.closed) done(result == ImportResult::kDone ? Accepted : Rejected);
}

void frmCaptureDetails::reject() {
    details_.Cancel();
    if (details_.closed) QDialog::reject();
}

void frmCaptureDetails::ShowStatusFrame() {
    const int taller = height() + ui_->frameStatus->sizeHint().height() + layout()->spacing();
    ShowDetails();
    ui_->butCancel->setEnabled(false);
    ui_->txtComments->setEnabled(false);
    layout()->activate();
    resize(width(), taller);
    repaint();
}

void frmCaptureDetails::Status(std::string_view application, std::string_view section,
                               std::string_view activity, std::string_view count) {
    // The last state of each section is seen, however short it lasted.
    if (section != texts_.section) show_texts_.Flush();
    texts_.application = application;
    texts_.section = section;
    texts_.activity = activity;
    texts_.count = count;
    show_texts_.Request();
}

void frmCaptureDetails::ShowTexts() {
    ui_->labApp->setText(ToQString(texts_.application));
    ui_->labSection->setText(ToQString(texts_.section));
    ui_->txtCurrent->setText(ToQString(texts_.activity));
    ui_->txtCurrent->setCursorPosition(0);
    ui_->labCount->setText(ToQString(texts_.count));
    ui_->frameStatus->repaint();
}

void frmCaptureDetails::Progress(int value, int maximum) {
    ui_->pbarImport->setMaximum(maximum);
    ui_->pbarImport->setValue(value);
}

}  // namespace zorvel
