// zorvel-batch report: a report as a file.
#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

#include "batch/command.h"
#include "batch/report_request.h"
#include "platform/code_page.h"
#include "platform/write_in_place.h"
#include "reporting/report_catalogue.h"
#include "reporting/report_export.h"
#include "reporting/reports.h"

namespace zorvel {
namespace {

class ReportCommand final : public BatchCommand {
  public:
    explicit ReportCommand(ReportWriter write_pdf) : write_pdf_(std::move(write_pdf)) {}

    CLI::App* Register(CLI::App& program) override {
        CLI::App* command =
            program.add_subcommand("report", "Make a report over a dataset, by default the newest");
        command->add_option("CAPTION", caption_, "The report, as `reports` names it")->required();
        command->add_option("--output", output_, "The file to write: .pdf, .html, .csv or .json")
            ->required()
            ->check([](const std::string& path) {
                return FormatOf(path) == nullptr ? "its name must end in .pdf, .html, .csv or .json" : "";
            });
        command->add_option("--dataset", dataset_, "The dataset's file, as `datasets` names it");
        command->add_option(
            "--sort", sort_,
            "\"Application Name\", \"Application Caption\" or \"Application Icon/Run Order\"");
        command->add_flag("--descending", request_.descending, "The other way round within each container");
        // One code each time: what follows it may be the caption.
        command->add_option("--exclude", excluded_, "An issue code to leave out; may be repeated")
            ->allow_extra_args(false);
        command->add_option("--definition", definition_,
                            "Another definition file of Reports than the report's own");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        const std::string caption = FromUtf8(caption_);
        const CatalogueReport* const report = Find(caption);
        if (report == nullptr) return session.Fail("there is no report '" + caption + '\'');
        request_.dataset = FromUtf8(dataset_);
        request_.sort = FromUtf8(sort_);
        for (const std::string& code : excluded_)
            request_.excluded.push_back(FromUtf8(code));
        if (report->caption == kCaptureDetailsReport && !request_.IsEmpty())
            return session.Fail("'" + std::string(report->caption) + "' has no options");
        if (!session.Start(FolderUse::kRead)) return kFailed;

        Services& services = session.controller().services();
        const Catalogue catalogue(*session.controller().session().MasterConnection);
        const AskInterrupted interrupted = [&session] { return session.window().interrupted(); };
        RequestedReport requested(services, catalogue, request_, interrupted);
        ReportChoice choice;
        const ReportOutcome outcome =
            Reports(services, catalogue, choice, requested)
                .Generate(report->caption,
                          definition_.empty() ? std::string(report->definition) : FromUtf8(definition_));
        if (outcome == ReportOutcome::kInterrupted) return kInterrupted;
        if (!requested.refusal().empty()) return session.Fail(requested.refusal());
        if (requested.report() == nullptr) return session.Fail("the report was not made");
        if (Write(*requested.report(), interrupted)) return kDone;
        services.log.WriteLog("Reporting: Interrupted at user request");
        return kInterrupted;
    }

  private:
    // Writes the report in the place of the output. False when the user interrupted that: an older file
    // stays.
    bool Write(const Report& report, const AskInterrupted& interrupted) const {
        const ReportFormat& format = *FormatOf(output_);
        if (interrupted()) return false;
        if (format.write == nullptr) return write_pdf_(report, output_, interrupted);
        try {
            WriteInPlace(output_, [&](OutputFile& file) {
                format.write(report, file, interrupted);
                EndIfInterrupted(interrupted);
            });
        } catch (const Interrupted&) {
            return false;
        }
        return true;
    }
    static const CatalogueReport* Find(const std::string& caption) {
        for (const CatalogueReport& report : CatalogueReports()) {
            if (EqualIgnoringCase(report.caption, caption)) return &report;
        }
        return nullptr;
    }

    ReportWriter write_pdf_;
    std::string caption_;
    std::string output_;
    std::string dataset_;
    std::string sort_;
    std::vector<std::string> excluded_;
    std::string definition_;
    ReportRequest request_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeReportCommand(ReportWriter write_pdf) {
    return std::make_unique<ReportCommand>(std::move(write_pdf));
}

}  // namespace zorvel
