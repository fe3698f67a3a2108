#include "gui/frm_view_log.h"

#include "gui/hourglass.h"
#include "ui_frm_view_log.h"
#include "viewers/log_view.h"

namespace zorvel {

frmViewLog::frmViewLog(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmViewLog>()) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    ui_->barFind->Serve(*ui_->RichTextBox1, *ui_->RichTextBox1, *this);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

frmViewLog::~frmViewLog() = default;

bool frmViewLog::Open(const Services& services) {
    const Hourglass hourglass;
    return LogView(services).Open(
        [&](std::string_view path) { ui_->RichTextBox1->ReadFile(services.files, path); });
}

}  // namespace zorvel
