#include "gui/dialogs/frm_cache_tree.h"

#include <QCloseEvent>

#include "gui/widgets/fit_text.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_cache_tree.h"

namespace zorvel {

frmCacheTree::frmCacheTree(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      ui_(std::make_unique<Ui::frmCacheTree>()),
      labels_([this] { ShowLabels(); }) {
    ui_->setupUi(this);
    first_ou_ = FromQString(ui_->labOU->text());
    FitText(*this, 72);
}

frmCacheTree::~frmCacheTree() = default;

void frmCacheTree::ShowCacheTree(std::string_view title) {
    setWindowTitle(ToQString(title));
    ou_ = first_ou_;
    ou_count_.clear();
    apps_.clear();
    elapsed_.clear();
    labels_.Cancel();
    ShowLabels();
    show();
}

void frmCacheTree::SetLabOU(std::string_view text) {
    Set(ou_, text);
}

void frmCacheTree::SetLabOUCount(std::string_view text) {
    Set(ou_count_, text);
}

void frmCacheTree::SetLabApps(std::string_view text) {
    Set(apps_, text);
}

void frmCacheTree::SetLabElapsed(std::string_view text) {
    Set(elapsed_, text);
}

void frmCacheTree::Set(std::string& value, std::string_view text) {
    value = text;
    labels_.Request();
}

void frmCacheTree::ShowLabels() {
    ui_->labOU->setText(ToQString(ou_));
    ui_->labOUCount->setText(ToQString(ou_count_));
    ui_->labApps->setText(ToQString(apps_));
    ui_->labElapsed->setText(ToQString(elapsed_));
}

void frmCacheTree::CloseCacheTree() {
    labels_.Cancel();
    hide();
}

void frmCacheTree::closeEvent(QCloseEvent* event) {
    event->ignore();
}

}  // namespace zorvel
