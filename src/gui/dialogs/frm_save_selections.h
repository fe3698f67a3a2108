// frmSaveSelections: asks for a comment and saves the current selection of applications under it.
#pragma once

#include <QDialog>
#include <memory>

#include "browser/saved_selections.h"

namespace Ui {
class frmSaveSelections;
}

namespace zorvel {

class frmSaveSelections : public QDialog {
    Q_OBJECT

  public:
    explicit frmSaveSelections(SaveSelections& selections, QWidget* parent = nullptr);
    ~frmSaveSelections() override;

  private:
    void Save();

    SaveSelections& selections_;
    std::unique_ptr<Ui::frmSaveSelections> ui_;
};

}  // namespace zorvel
