// frmTrees: lists the trees of Directory.toml, and adds, edits, removes and tests them.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "controller/tree_editor.h"

namespace Ui {
class frmTrees;
}

namespace zorvel {

class frmTrees : public QDialog {
    Q_OBJECT

  public:
    explicit frmTrees(TreeEditor& editor, QWidget* parent = nullptr);
    ~frmTrees() override;

    // Lets the user add the tree of an LDIF file; without a path he chooses it.
    void AddExport(const QString& path);

    // While a test runs it ends the test.
    void reject() override;

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void ConnectButtons();
    void ShowTrees(const std::string& selected);
    void EnableControls();
    const DirectoryConfig::Tree* Selected() const;
    void AddServer();
    void Edit();
    void Remove();
    void Prefer();
    void Test();
    // Shows what stood in the way of a change, or nothing.
    void ShowFailure();

    TreeEditor& editor_;
    std::unique_ptr<Ui::frmTrees> ui_;
    bool testing_ = false;
};

}  // namespace zorvel
