// frmViewLog: the session's log, errors on red and warnings on yellow.
#pragma once

#include <QDialog>
#include <memory>

#include "shell/services.h"

namespace Ui {
class frmViewLog;
}

namespace zorvel {

class frmViewLog final : public QDialog {
    Q_OBJECT

  public:
    explicit frmViewLog(QWidget* parent = nullptr);
    ~frmViewLog() override;

    // Loads the log as it is now, with the hourglass. False when there is nothing to show; the user was told.
    bool Open(const Services& services);

  private:
    std::unique_ptr<Ui::frmViewLog> ui_;
};

}  // namespace zorvel
