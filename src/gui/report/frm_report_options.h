// frmReportOptions: asks for the dataset, the order and the issues of a report.
#pragma once

#include <QDialog>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

#include "reporting/report_options.h"

class QTreeWidgetItem;

namespace Ui {
class frmReportOptions;
}

namespace zorvel {

class frmReportOptions final : public QDialog {
    Q_OBJECT

  public:
    // `options` has been opened.
    explicit frmReportOptions(ReportOptions& options, QWidget* parent = nullptr);
    ~frmReportOptions() override;

    // Shows the dialog and waits for it. An error that occurs meanwhile closes and cancels it, and is raised
    // from here: it must not pass through the event loop.
    int exec() override;
    // Also what the close box does: counts as cancel.
    void reject() override;

  private:
    void ShowOptions();
    void ShowSummary();
    void MakeTree();
    void ShowTree();
    void Connect();
    void ConnectTree();
    void ToggleAdvanced();
    void Guard(const std::function<void()>& operation);

    ReportOptions& options_;
    std::unique_ptr<Ui::frmReportOptions> ui_;
    std::vector<QTreeWidgetItem*> items_;  // of treeRO, in the order of the nodes
    std::exception_ptr failure_;
};

}  // namespace zorvel
