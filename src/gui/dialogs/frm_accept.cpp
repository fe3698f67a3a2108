#include "gui/dialogs/frm_accept.h"

#include <string>

#include "gui/widgets/fit_text.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_accept.h"

namespace zorvel {
namespace {

constexpr int kWidth = 80;  // average characters

std::string Joined(const std::vector<std::string>& codes) {
    std::string text;
    for (const std::string& code : codes)
        text += (text.empty() ? "" : ", ") + code;
    return text;
}

}  // namespace

frmAccept::frmAccept(AcceptDraft& draft, QWidget* parent)
    : QDialog(parent), draft_(draft), ui_(std::make_unique<Ui::frmAccept>()) {
    ui_->setupUi(this);
    ui_->txtCode->setText(ToQString(Joined(draft.codes())));
    ui_->txtApplication->setText(ToQString(draft.application));
    ui_->txtTarget->setText(ToQString(draft.target));
    ui_->txtUntil->setText(ToQString(draft.until));
    ui_->txtBy->setText(ToQString(draft.by));
    for (const QLineEdit* const box :
         {ui_->txtApplication, ui_->txtTarget, ui_->txtReason, ui_->txtUntil, ui_->txtBy})
        connect(box, &QLineEdit::textEdited, this, &frmAccept::TakeTexts);
    connect(ui_->butOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ShowCoverage();
    FitText(*this, kWidth);
    ui_->txtReason->setFocus();
}

frmAccept::~frmAccept() = default;

void frmAccept::TakeTexts() {
    draft_.application = FromQString(ui_->txtApplication->text());
    draft_.target = FromQString(ui_->txtTarget->text());
    draft_.reason = FromQString(ui_->txtReason->text());
    draft_.until = FromQString(ui_->txtUntil->text());
    draft_.by = FromQString(ui_->txtBy->text());
    ShowCoverage();
}

void frmAccept::ShowCoverage() {
    const std::string fault = draft_.Fault();
    ui_->labCoverage->setText(ToQString(draft_.Coverage()));
    ui_->labFault->setText(ToQString(fault));
    ui_->butOk->setEnabled(fault.empty());
}

}  // namespace zorvel
