// zorvel-batch accept and accepted: the list of accepted findings.
#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

#include "batch/command.h"
#include "batch/dataset_choice.h"
#include "batch/field.h"
#include "findings/accepted_file.h"
#include "findings/findings.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

std::optional<CatalogueRow> NewestOrNamed(BatchSession& session, const std::string& name) {
    const std::vector<CatalogueRow> rows = Catalogue(*session.controller().session().MasterConnection).List();
    const auto row = FindDataset(rows, name);
    if (row == rows.end()) return std::nullopt;
    return *row;
}

class AcceptCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command =
            program.add_subcommand("accept", "Accept findings, with a reason: adds to Accepted.toml");
        command->add_option("--code", code_, "Their issue code")->required();
        command
            ->add_option(
                "--application", application_,
                "The full name of their application, in which * and ? stand for any text and any character")
            ->required();
        command->add_option("--target", target_, "Their target, with * and ?; without it any");
        command->add_option("--reason", reason_, "Why they are accepted")->required();
        command->add_option("--until", until_, "The last day on which that counts, as 2027-06-01")
            ->check([](const std::string& text) {
                return DateFrom(text) ? "" : "expected a date, as 2027-06-01";
            });
        command->add_option("--by", by_, "Who accepts them");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        const AcceptedFinding accepted = Wanted();
        if (const std::string fault = FaultOf(accepted); !fault.empty()) return session.Fail(fault);
        if (!session.Start(FolderUse::kWrite)) return kFailed;
        const Date today = Today(session.controller().services().clock);
        AddAccepted(session.files(), accepted, today);
        const std::optional<CatalogueRow> dataset = NewestOrNamed(session, {});
        if (!dataset) return kDone;
        const Findings findings(session.files(), *dataset, today);
        session.out() << CountedFindings(RowsCoveredBy(accepted, findings.table()).size()) << " of "
                      << Field(dataset->DBName) << '\n';
        return kDone;
    }

  private:
    AcceptedFinding Wanted() const {
        AcceptedFinding accepted;
        accepted.code = UpperCase(FromUtf8(code_));
        accepted.application = FromUtf8(application_);
        if (!target_.empty()) accepted.target = FromUtf8(target_);
        accepted.reason = FromUtf8(reason_);
        if (!until_.empty()) accepted.until = DateFrom(until_);
        accepted.by = FromUtf8(by_);
        return accepted;
    }

    std::string code_;
    std::string application_;
    std::string target_;
    std::string reason_;
    std::string until_;
    std::string by_;
};

class AcceptedCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand("accepted",
                                                   "List what is accepted: code, application, target, "
                                                   "reason, until, by, findings that it covers in a "
                                                   "dataset, use");
        command->add_option("--dataset", dataset_, "The dataset's file; by default the newest");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(FolderUse::kRead)) return kFailed;
        const std::optional<CatalogueRow> dataset = NewestOrNamed(session, FromUtf8(dataset_));
        if (!dataset) return session.Fail(NoDataset(FromUtf8(dataset_)));
        const Findings findings(session.files(), *dataset, Today(session.controller().services().clock));
        if (!findings.fault().empty()) return session.Fail(findings.Notes().front());
        for (std::size_t i = 0; i < findings.accepted().size(); ++i) {
            const AcceptedFinding& accepted = findings.accepted()[i];
            session.out() << accepted.code << '\t' << Field(accepted.application) << '\t'
                          << Field(accepted.target.value_or("")) << '\t' << Field(accepted.reason) << '\t'
                          << (accepted.until ? DateText(*accepted.until) : "") << '\t' << Field(accepted.by)
                          << '\t' << findings.states().covered()[i] << '\t' << findings.UseOf(i) << '\n';
        }
        return kDone;
    }

  private:
    std::string dataset_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeAcceptCommand() {
    return std::make_unique<AcceptCommand>();
}

std::unique_ptr<BatchCommand> MakeAcceptedCommand() {
    return std::make_unique<AcceptedCommand>();
}

}  // namespace zorvel
