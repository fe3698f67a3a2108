// zorvel-batch datasets: the imported runs, newest first.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <string_view>

#include "batch/command.h"
#include "database/catalogue.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

// True for the control characters of the code page, the five codes that it leaves open among them.
bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 ||
           std::string_view("\x7F\x81\x8D\x8F\x90\x9D").find(character) != std::string_view::npos;
}

// `text` as one field of a line: what could end the field or the line, or command a terminal, becomes a
// blank.
std::string Field(std::string_view text) {
    std::string field(text);
    std::replace_if(field.begin(), field.end(), IsControl, ' ');
    return ToUtf8(field);
}

class DatasetsCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        return program.add_subcommand(
            "datasets", "List the datasets: captured, tree, container, applications, issues, file, comment");
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start()) return kFailed;
        const Catalogue catalogue(*session.controller().session().MasterConnection);
        for (const CatalogueRow& row : catalogue.List()) {
            session.out() << Field(row.Captured) << '\t' << Field(row.Tree) << '\t' << Field(row.OU) << '\t'
                          << row.AppCount << '\t' << row.CountIssues() << '\t' << Field(row.DBName) << '\t'
                          << Field(row.Description) << '\n';
        }
        return kDone;
    }
};

}  // namespace

std::unique_ptr<BatchCommand> MakeDatasetsCommand() {
    return std::make_unique<DatasetsCommand>();
}

}  // namespace zorvel
