// What the command line asks of a report, put through the options that the window shows.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/catalogue.h"
#include "platform/interruption.h"
#include "reporting/report_display.h"
#include "shell/services.h"

namespace zorvel {

// The options of the command line; texts of the code page, empty when not given.
struct ReportRequest {
    std::string dataset;
    std::string sort;
    bool descending = false;
    std::vector<std::string> excluded;

    bool IsEmpty() const { return dataset.empty() && sort.empty() && !descending && excluded.empty(); }
};

// Answers the report options from a request, and keeps the report that was made.
class RequestedReport final : public ReportDisplay {
  public:
    // `ask` tells whether the user has interrupted the program.
    RequestedReport(Services& services, const Catalogue& catalogue, const ReportRequest& request,
                    AskInterrupted ask);

    void ShowReportOptions(ReportChoice& choice) override;
    bool Interrupted() override { return ask_(); }
    void ShowReport(std::shared_ptr<const Report> report) override;

    // The report; null when there is none.
    const Report* report() const { return report_.get(); }
    // Why the options could not be set as requested; empty when the user was told, or when all went well.
    const std::string& refusal() const { return refusal_; }

  private:
    // The reason why the request cannot be met, or nothing.
    std::string Fill(ReportChoice& choice);

    Services& services_;
    const Catalogue& catalogue_;
    const ReportRequest& request_;
    AskInterrupted ask_;
    std::shared_ptr<const Report> report_;
    std::string refusal_;
};

}  // namespace zorvel
