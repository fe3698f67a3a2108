// frmLoadSelections: lists the saved selections of the current tree and loads the one that is chosen.
#pragma once

#include <QDialog>
#include <memory>

#include "browser/saved_selections.h"

namespace Ui {
class frmLoadSelections;
}

namespace zorvel {

class frmLoadSelections : public QDialog {
    Q_OBJECT

  public:
    // `selections` has been opened.
    explicit frmLoadSelections(LoadSelections& selections, QWidget* parent = nullptr);
    ~frmLoadSelections() override;

  private:
    void Select(int line);
    void Load();
    void ShowComment();

    LoadSelections& selections_;
    std::unique_ptr<Ui::frmLoadSelections> ui_;
};

}  // namespace zorvel
