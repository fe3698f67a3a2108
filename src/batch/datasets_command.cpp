// zorvel-batch datasets: the imported runs, newest first.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>

#include "batch/command.h"
#include "database/catalogue.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

// `text` as one field of a line: what would end the field or the line becomes a blank.
std::string Field(std::string_view text) {
    std::string field = ToUtf8(text);
    std::replace_if(
        field.begin(), field.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return field;
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
