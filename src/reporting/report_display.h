// Whom reports are shown to, and who is asked about them: a window, a file, or a test.
#pragma once

#include <memory>

#include "reporting/report.h"
#include "reporting/report_choice.h"

namespace zorvel {

class ReportDisplay {
  public:
    virtual ~ReportDisplay() = default;
    // Has the user fill in `choice` for the report `choice.caption`; returns when the dialog is closed.
    virtual void ShowReportOptions(ReportChoice& choice) = 0;
    // True once the user wants no report any more; asked time and again while one is made.
    virtual bool Interrupted() = 0;
    // Shows a prepared report, without waiting. Raises an Error when that fails, or Interrupted.
    virtual void ShowReport(std::shared_ptr<const Report> report) = 0;
};

}  // namespace zorvel
