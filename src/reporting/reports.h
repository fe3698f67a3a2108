// Reports from the menu entry to the prepared report: the options, the data source, the definition, the
// query.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/catalogue.h"
#include "reporting/report_catalogue.h"
#include "reporting/report_choice.h"
#include "reporting/report_display.h"
#include "shell/services.h"

namespace zorvel {

enum class ReportOutcome { kShown, kCancelled, kInterrupted, kFailed };

class Reports {
  public:
    Reports(Services& services, const Catalogue& catalogue, ReportChoice& choice, ReportDisplay& display);

    // Makes the report of a caption of the catalogue; that is Busy once its options are chosen. Of a failure
    // the user is told; an interruption is logged.
    ReportOutcome Generate(std::string_view caption);
    // The same with a definition file of Reports in the place of the catalogue's.
    ReportOutcome Generate(std::string_view caption, std::string_view definition_file);

  private:
    void RegisterDsn();
    std::string DatasetPath() const;
    ReportOutcome ReportLaunch(std::string_view definition_file, std::string_view sort,
                               std::string_view filter);
    std::shared_ptr<const Report> MakeReport(const std::string& definition_path, std::string_view sort,
                                             std::string_view filter) const;
    // What the report says about itself, but for its order and what it leaves out.
    ReportFacts Facts(const AskInterrupted& ask) const;
    std::string FindingsFact(const CatalogueRow& dataset, const AskInterrupted& ask) const;
    std::vector<std::string> Incomplete(const Database& database) const;
    // Reports the exception being handled: `module` is what the log calls the place, `title` what the message
    // does.
    void Fail(const std::string& module, const std::string& title);

    Services& services_;
    const Catalogue& catalogue_;
    ReportChoice& choice_;
    ReportDisplay& display_;
};

}  // namespace zorvel
