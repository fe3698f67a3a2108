// The status tab: what a run has counted and how far it has come.
#pragma once

#include <QWidget>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

#include "analysis/run_display.h"
#include "gui/widgets/paced_update.h"

class QLabel;

namespace Ui {
class StatusPage;
}

namespace zorvel {

// The main window passes on to it what a RunDisplay is told.
class StatusPage final : public QWidget {
    Q_OBJECT

  public:
    explicit StatusPage(QWidget* parent = nullptr);
    ~StatusPage() override;

    // Puts everything into its first state: counters and times at "-".
    void LayOut();

    void ShowSelectedCount(std::string_view text);
    void ShowCurrentApplication(std::string_view count, std::string_view name);
    // These may be called as often as a run likes: what they tell is shown at most 20 times a second.
    // `status` is not kept.
    void ShowStatusCounts(const RunStatus& status);
    void ShowStreamProgress(double value);
    void ShowOverallProgress(double value);
    // Shows the last state, at the end of a run.
    void Flush();

  private:
    using Labels = std::array<QLabel*, kCounterCount>;
    void ShowState();

    std::unique_ptr<Ui::StatusPage> ui_;
    Labels application_counts_;
    Labels run_counts_;
    // A copy of what was last told, until it is shown. It outlives the run, and so must not be asked for more
    // than its texts, which need the session's clock alone.
    std::optional<RunStatus> status_;
    int stream_progress_ = 0;
    int overall_progress_ = 0;
    PacedUpdate updates_;
};

}  // namespace zorvel
