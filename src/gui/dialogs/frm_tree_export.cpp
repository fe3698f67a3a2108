#include "gui/dialogs/frm_tree_export.h"

#include "gui/dialogs/chosen_file.h"
#include "gui/widgets/fit_text.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_tree_export.h"

namespace zorvel {

frmTreeExport::frmTreeExport(TreeEditor& editor, const DirectoryConfig::Tree& tree, QWidget* parent)
    : QDialog(parent), editor_(editor), name_(tree.name), ui_(std::make_unique<Ui::frmTreeExport>()) {
    ui_->setupUi(this);
    ui_->labFailure->hide();
    ui_->txtName->setText(ToQString(tree.name));
    ui_->txtFile->setText(ToQString(ShownPath(editor.files(), tree.ldif)));
    connect(ui_->butFile, &QPushButton::clicked, this, [this] {
        BrowseFor(*ui_->txtFile, "LDIF Export", "LDIF exports (*.ldif *.ldf *.LDIF *.LDF);;All files (*)");
        SetFile(ui_->txtFile->text());
    });
    connect(ui_->butOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmTreeExport::~frmTreeExport() = default;

void frmTreeExport::SetFile(const QString& path) {
    const std::string text = FromQString(path);
    ui_->txtFile->setText(ToQString(ShownPath(editor_.files(), PathOfShown(editor_.files(), text))));
    if (ui_->txtName->text().isEmpty()) ui_->txtName->setText(ToQString(editor_.NameForExport(text)));
}

void frmTreeExport::accept() {
    const std::string name = FromQString(ui_->txtName->text());
    if (editor_.Put(name_, {name, PathOfShown(editor_.files(), FromQString(ui_->txtFile->text())), {}})) {
        name_ = name;
        QDialog::accept();
        return;
    }
    ui_->labFailure->setText(ToQString(editor_.failure()));
    ui_->labFailure->setVisible(!editor_.failure().empty());
}

}  // namespace zorvel
