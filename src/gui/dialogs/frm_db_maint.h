// frmDBMaint: lists the datasets, and compacts or deletes the selected one.
#pragma once

#include <QDialog>
#include <memory>

#include "database/maintenance.h"

namespace Ui {
class frmDBMaint;
}

namespace zorvel {

class frmDBMaint : public QDialog {
    Q_OBJECT

  public:
    // `maintenance` has been opened.
    explicit frmDBMaint(DatabaseMaintenance& maintenance, QWidget* parent = nullptr);
    ~frmDBMaint() override;

  private:
    void Select(int line);
    void Delete();
    void ShowList();
    void ShowSummary();

    DatabaseMaintenance& maintenance_;
    std::unique_ptr<Ui::frmDBMaint> ui_;
};

}  // namespace zorvel
