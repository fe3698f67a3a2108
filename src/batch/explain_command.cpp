// zorvel-batch explain: what the catalogue of issues says of a code.
#include <CLI/CLI.hpp>

#include <string>

#include "batch/command.h"
#include "issues/issue_catalogue.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

class ExplainCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command =
            program.add_subcommand("explain", "Print what an issue code means and what to do about it");
        command->add_option("CODE", code_, "The code, as findings and reports name it")->required();
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        const std::string code = FromUtf8(code_);
        const IssueDescription* const issue = FindIssue(UpperCase(code));
        if (issue == nullptr) return session.Fail("there is no issue '" + code + '\'');
        const auto line = [&session](std::string_view name, std::string_view text) {
            if (!text.empty()) session.out() << name << ": " << ToUtf8(text) << '\n';
        };
        session.out() << issue->code << '\t' << ToUtf8(issue->short_text) << '\n';
        line("Category", kIssueCategories.at(static_cast<std::size_t>(issue->category)).text);
        line("Severity", SeverityText(issue->severity));
        line("Why", issue->severity_reason);
        line("Raised by", RaiserText(issue->raiser));
        line("What to do", issue->remedy);
        line("Remark", issue->remark);
        return kDone;
    }

  private:
    std::string code_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeExplainCommand() {
    return std::make_unique<ExplainCommand>();
}

}  // namespace zorvel
