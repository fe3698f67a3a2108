// frmViewLog: the session's log, errors on red and warnings on yellow.
#pragma once

#include <QDialog>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "shell/services.h"
#include "viewers/log_problems.h"

namespace Ui {
class frmViewLog;
}

namespace zorvel {

class frmViewLog final : public QDialog {
    Q_OBJECT

  public:
    explicit frmViewLog(QWidget* parent = nullptr);
    ~frmViewLog() override;

    // Loads the log as it is now, with the hourglass, and shows its end. False when there is nothing to show;
    // the user was told.
    bool Open(const Services& services);

  private:
    void Show(std::string_view path, const Files& files);
    // Goes to a problem, if there is one.
    void GoTo(std::optional<std::size_t> line);
    void ShowProblem();

    std::unique_ptr<Ui::frmViewLog> ui_;
    LogProblems problems_;
};

}  // namespace zorvel
