#include "gui/dialogs/frm_welcome.h"

#include <QIcon>
#include <QPushButton>
#include <QStyle>

#include "gui/widgets/fit_text.h"
#include "ui_frm_welcome.h"

namespace zorvel {

frmWelcome::frmWelcome(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmWelcome>()) {
    ui_->setupUi(this);
    const int size = 2 * style()->pixelMetric(QStyle::PM_LargeIconSize);
    ui_->labIcon->setPixmap(QIcon(QStringLiteral(":/icons/zorvel.svg")).pixmap(size));
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
    FitText(*this, 72);
}

frmWelcome::~frmWelcome() = default;

bool frmWelcome::suppress() const {
    return ui_->checkSuppress->isChecked();
}

}  // namespace zorvel
