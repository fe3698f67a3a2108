// The dialog in which findings are accepted: patterns, a reason, and what they will cover.
#pragma once

#include <QDialog>
#include <memory>

#include "findings/accept_draft.h"

namespace Ui {
class frmAccept;
}

namespace zorvel {

class frmAccept final : public QDialog {
    Q_OBJECT

  public:
    // The user changes `draft`, which must outlive the dialog; it has no fault once the dialog is accepted.
    frmAccept(AcceptDraft& draft, QWidget* parent);
    ~frmAccept() override;

  private:
    void TakeTexts();
    void ShowCoverage();

    AcceptDraft& draft_;
    std::unique_ptr<Ui::frmAccept> ui_;
};

}  // namespace zorvel
