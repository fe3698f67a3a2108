// frmTreeExport: the name and the file of a tree that is read from an LDIF export.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "controller/tree_editor.h"

namespace Ui {
class frmTreeExport;
}

namespace zorvel {

class frmTreeExport : public QDialog {
    Q_OBJECT

  public:
    // Edits `tree` of the editor; one without a name is added.
    frmTreeExport(TreeEditor& editor, const DirectoryConfig::Tree& tree, QWidget* parent);
    ~frmTreeExport() override;

    // Shows a file, and a name for its tree unless there is one.
    void SetFile(const QString& path);
    // The name under which the tree was saved.
    const std::string& saved_name() const { return name_; }

    void accept() override;

  private:
    TreeEditor& editor_;
    std::string name_;
    std::unique_ptr<Ui::frmTreeExport> ui_;
};

}  // namespace zorvel
