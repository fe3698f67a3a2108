// zorvel-batch find: the stream entries of the chosen applications that match an expression.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "batch/application_choice.h"
#include "batch/command.h"
#include "batch/field.h"
#include "find/predefined_searches.h"
#include "find/stream_finder.h"
#include "platform/code_page.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// Prints the matches as they are found, and the total.
class MatchPrinter final : public FindDisplay, public FindListener {
  public:
    explicit MatchPrinter(BatchWindow& window) : window_(window) {}

    void HideLabInfo() override {}
    void LoadResults(std::string_view /*path*/) override {}
    void ShowLabInfo(std::string_view text) override { window_.PrintLine(Field(text)); }
    void AddMatch(std::string_view full_name, std::string_view stream_label,
                  std::string_view entry_text) override {
        window_.PrintLine(Field(full_name) + '\t' + Field(stream_label) + '\t' + Field(entry_text));
    }

  private:
    BatchWindow& window_;
};

// Refuses what the Find box would not search for either.
std::string BlankFault(const std::string& expression) {
    return expression.find_first_not_of(' ') == std::string::npos ? "there is nothing to find" : "";
}

class FindCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand(
            "find", "List the file and registry entries that match: full name, stream, entry");
        // No option group of the two: it would not take an expression behind "--".
        CLI::Option* expression = command
                                      ->add_option("expression", expression_,
                                                   "A regular expression, matched without regard to case")
                                      ->check(BlankFault);
        std::vector<std::string> names(PredefinedSearches.size());
        std::transform(PredefinedSearches.begin(), PredefinedSearches.end(), names.begin(),
                       [](const PredefinedSearch& search) { return std::string(search.name); });
        CLI::Option* preset = command->add_option("--preset", preset_, "A predefined search")
                                  ->check(CLI::IsMember(names, CLI::ignore_case))
                                  ->excludes(expression);
        command->callback([expression, preset] {
            if (expression->empty() && preset->empty()) throw CLI::RequiredError("an expression or --preset");
        });
        applications_.AddOptions(*command, "search");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        const std::string expression = Expression();
        if (preset_.empty() && ToUtf8(expression) != expression_) {
            return session.Fail("the expression holds a character that the code page of the streams lacks");
        }
        ExitStatus status = applications_.Start(session);
        if (status != kDone) return status;
        MainController& controller = session.controller();
        MatchPrinter printer(session.window());
        StreamFinder finder(controller.services(), printer, &printer);
        if (!finder.Prepare(expression)) return kFailed;
        AnalysisRun run(controller.MakeRunInputs(), &finder);
        status = DoRun(session, run);
        if (status != kDone) return status;
        if (finder.failed_entries() > 0) {
            status = session.Fail(Grouped(finder.failed_entries()) + " entries could not be searched");
        }
        return EndOfRun(session, run, status);
    }

  private:
    std::string Expression() const {
        for (const PredefinedSearch& search : PredefinedSearches) {
            if (EqualIgnoringCase(search.name, preset_)) return std::string(search.expression);
        }
        return FromUtf8(expression_);
    }

    std::string expression_;
    std::string preset_;
    ApplicationChoice applications_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeFindCommand() {
    return std::make_unique<FindCommand>();
}

}  // namespace zorvel
