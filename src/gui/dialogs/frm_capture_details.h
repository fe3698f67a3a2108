// frmCaptureDetails: confirms the import of the last run, and shows it at work.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "database/capture_details.h"
#include "gui/widgets/paced_update.h"

namespace Ui {
class frmCaptureDetails;
}

namespace zorvel {

class frmCaptureDetails : public QDialog, private ImportDisplay {
    Q_OBJECT

  public:
    // `details` has been opened.
    explicit frmCaptureDetails(CaptureDetails& details, QWidget* parent = nullptr);
    ~frmCaptureDetails() override;

    // The close box, ESC and butCancel: nothing while the import runs.
    void reject() override;

  private:
    void ShowDetails();
    void BeginImport();
    void ShowTexts();

    void ShowStatusFrame() override;
    void Status(std::string_view application, std::string_view section, std::string_view activity,
                std::string_view count) override;
    void Progress(int value, int maximum) override;

    CaptureDetails& details_;
    std::unique_ptr<Ui::frmCaptureDetails> ui_;
    // The texts of the import's last call: it calls more often than anyone can read.
    struct {
        std::string application, section, activity, count;
    } texts_;
    PacedUpdate show_texts_;
};

}  // namespace zorvel
