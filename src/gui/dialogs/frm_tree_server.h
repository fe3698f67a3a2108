// frmTreeServer: how a tree that directory servers hold is reached.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "controller/tree_editor.h"

namespace Ui {
class frmTreeServer;
}

namespace zorvel {

class frmTreeServer : public QDialog {
    Q_OBJECT

  public:
    // Edits `tree` of the editor, which has servers; one without a name is added.
    frmTreeServer(TreeEditor& editor, const DirectoryConfig::Tree& tree, QWidget* parent);
    ~frmTreeServer() override;

    // The name under which the tree was saved.
    const std::string& saved_name() const { return tree_.name; }

    void accept() override;

  private:
    // Where the password comes from: the entries of comPassword.
    enum Password { kAsked, kFromFile, kFromCommand };

    void ShowSettings();
    void PasswordChosen(int source);
    DirectoryConfig::Tree Entered() const;

    TreeEditor& editor_;
    DirectoryConfig::Tree tree_;
    std::unique_ptr<Ui::frmTreeServer> ui_;
};

}  // namespace zorvel
