// The Reports menu, the options it asks for, and the windows of the reports that are open.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "controller/main_controller.h"
#include "gui/widgets/hourglass.h"
#include "reporting/report_display.h"

class QMenu;

namespace zorvel {

class frmReport;

class ReportWindows final : public ReportDisplay {
  public:
    // Runs an operation of the main window.
    using Run = std::function<void(const std::function<void()>&)>;

    // Fills `menu` with the reports. Dialogs belong to `window`.
    ReportWindows(MainController& controller, QMenu& menu, QWidget& window, const Run& run);
    ReportWindows(const ReportWindows&) = delete;
    ReportWindows& operator=(const ReportWindows&) = delete;
    ReportWindows(ReportWindows&&) = delete;
    ReportWindows& operator=(ReportWindows&&) = delete;
    // Deletes the report windows that are open.
    ~ReportWindows() override;

    // Closes all report windows. False when one stays open, because it is saving or printing.
    bool CloseAll();

    void ShowReportOptions(ReportChoice& choice) override;
    // Lets pending events run, ESC among them.
    bool Interrupted() override;
    void ShowReport(std::shared_ptr<const Report> report) override;

  private:
    void Generate(std::string_view caption);

    MainController& controller_;
    QWidget& window_;
    ReportChoice choice_;
    std::optional<Hourglass> preparing_;
    QElapsedTimer since_events_;  // ran
    QList<QPointer<frmReport>> windows_;
};

}  // namespace zorvel
