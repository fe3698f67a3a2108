// zorvel-batch findings: the findings of a dataset, the most severe first.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "batch/command.h"
#include "batch/dataset_choice.h"
#include "batch/finding_lines.h"
#include "database/import_record.h"
#include "findings/finding_filter.h"
#include "findings/finding_list.h"
#include "findings/findings.h"
#include "platform/code_page.h"
#include "platform/write_in_place.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

using FindingWriter = void (*)(const FindingList&, OutputFile&, const AskInterrupted&);

template <std::size_t kSize>
std::vector<std::string> Names(const std::array<std::string_view, kSize>& names) {
    return {names.begin(), names.end()};
}

// The severities from the worst to `least`.
std::set<Severity> AtLeast(std::string_view least) {
    std::set<Severity> severities;
    for (const std::string_view text : kSeverityTexts) {
        severities.insert(*SeverityFrom(text));
        if (text == least) break;
    }
    return severities;
}

class FindingsCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand("findings",
                                                   "List the findings of a dataset, by default the newest: "
                                                   "severity, code, full name, where, target, "
                                                   "source, reach, state");
        command->add_option("--dataset", dataset_, "The dataset's file, as `datasets` names it");
        command->add_option("--severity", severity_, "Only findings that are at least so severe")
            ->check(CLI::IsMember(Names(kSeverityTexts)));
        command->add_option("--code", codes_, "Only findings of this issue code; may be repeated")
            ->allow_extra_args(false);
        command->add_option(
            "--application", application_,
            "Only applications of this full name, in which * and ? stand for any text and any "
            "character");
        std::vector<std::string> states = Names(kFindingStates);
        states.emplace_back(kAllStates);
        command->add_option("--state", state_, "Only findings of this state; expired ones are open, too")
            ->check(CLI::IsMember(states))
            ->capture_default_str();
        command->add_option("--format", format_, "What the list is written as")
            ->check(CLI::IsMember({kText, "csv", "json", "sarif"}))
            ->capture_default_str();
        command->add_option("--output", output_, "The file to write instead of standard output");
        command
            ->add_option("--fail-on", fail_on_,
                         "End with status 4 when an open finding of the list is at least so severe")
            ->check(CLI::IsMember(Names(kSeverityTexts)));
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        for (const std::string& code : codes_)
            if (FindIssue(UpperCase(FromUtf8(code))) == nullptr)
                return session.Fail("there is no issue '" + FromUtf8(code) + '\'');
        if (!session.Start(FolderUse::kRead)) return kFailed;
        const std::vector<CatalogueRow> rows =
            Catalogue(*session.controller().session().MasterConnection).List();
        const auto dataset = FindDataset(rows, FromUtf8(dataset_));
        if (dataset == rows.end()) return session.Fail(NoDataset(FromUtf8(dataset_)));
        try {
            return List(session, *dataset);
        } catch (const Interrupted&) {
            return kInterrupted;
        }
    }

  private:
    static constexpr const char* kText = "text";
    static constexpr const char* kAllStates = "all";

    ExitStatus List(BatchSession& session, const CatalogueRow& dataset) const {
        const AskInterrupted ask = [&session] { return session.window().interrupted(); };
        const DateTime now = session.controller().services().clock.Now();
        const Findings findings(session.files(), dataset, Today(session.controller().services().clock), ask);
        std::vector<std::uint32_t> rows = SelectRows(findings.table(), findings.states(), Query());
        FindingOrder(findings.table(), findings.states()).Sort(rows, FindingColumn::kSeverity);
        Write(session, {findings, rows, DateAndTime(now), MainController::Version()}, ask);
        if (findings.facts().incomplete)
            session.Fail(findings.facts().dataset + ": " + std::string(kImportNotCompleted));
        for (const std::string& note : findings.Notes())
            session.Fail(note);
        return FailsOn(findings, rows) ? kThreshold : kDone;
    }

    FindingQuery Query() const {
        FindingQuery query;
        if (!severity_.empty()) query.severities = AtLeast(severity_);
        for (const std::string& code : codes_)
            query.codes.push_back(FromUtf8(code));
        if (!application_.empty()) query.applications.emplace_back(FromUtf8(application_));
        for (std::size_t i = 0; i < kFindingStates.size(); ++i) {
            const auto state = static_cast<FindingState>(i);
            const bool open = state_ == StateText(FindingState::kOpen) && CountsAsOpen(state);
            if (open || state_ == StateText(state)) query.states.insert(state);
        }
        return query;
    }

    void Write(BatchSession& session, const FindingList& list, const AskInterrupted& ask) const {
        FindingWriter write = WriteFindingLines;
        for (const FindingFormat& format : FindingFormats())
            if (format.name == format_) write = format.write;
        if (!output_.empty()) {
            WriteInPlace(output_, [&](OutputFile& file) { write(list, file, ask); });
            return;
        }
        OutputFile out([&session](std::string_view bytes) { session.out() << bytes; }, "standard output");
        write(list, out, ask);
        out.Flush();
    }

    bool FailsOn(const Findings& findings, const std::vector<std::uint32_t>& rows) const {
        if (fail_on_.empty()) return false;
        const Severity least = *SeverityFrom(fail_on_);
        return std::any_of(rows.begin(), rows.end(), [&](std::uint32_t row) {
            return findings.table().RuleOf(row).severity <= least && CountsAsOpen(findings.states()[row]);
        });
    }

    std::string dataset_;
    std::string severity_;
    std::vector<std::string> codes_;
    std::string application_;
    std::string state_ = kAllStates;
    std::string format_ = kText;
    std::string output_;
    std::string fail_on_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeFindingsCommand() {
    return std::make_unique<FindingsCommand>();
}

}  // namespace zorvel
