#include "database/make_databases.h"

#include <array>
#include <string>
#include <system_error>

#include "issues/issue_catalogue.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/input_file.h"
#include "platform/new_file.h"
#include "platform/store.h"

namespace zorvel {
namespace fs = std::filesystem;
namespace {

void MoveTo(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    if (error) throw FileError(error.value(), to.string());
}

// `path` + kNewFileEnd, where a file is made before it takes the place of `path`.
fs::path NewBeside(const fs::path& path) {
    fs::path made = path;
    made += kNewFileEnd;
    std::error_code ignored;
    fs::remove(made, ignored);
    return made;
}

// Fills the table of what each issue means.
void AddIssues(Database& dataset) {
    dataset.Begin();
    Command insert = dataset.Prepare("INSERT INTO Zorvel_Resolutions VALUES (?1, ?2, ?3, ?4)");
    for (const IssueDescription& issue : IssueCatalogue())
        insert.Execute(std::array{std::string(issue.code), std::string(issue.short_text),
                                  std::string(issue.remedy), std::string(SeverityText(issue.severity))});
    dataset.Complete();
}

}  // namespace

void MakeDatabases(const fs::path& schema, const fs::path& template_file, const fs::path& master_file) {
    const std::string script = FromUtf8(InputFile(schema, schema.string()).Rest());
    const fs::path new_template = NewBeside(template_file);
    const fs::path new_master = NewBeside(master_file);
    {
        Database dataset(new_template, template_file.string(), Database::Access::kCreate);
        const Database master(new_master, master_file.string(), Database::Access::kCreate);
        dataset.Prepare("ATTACH ?1 AS Master").Execute(std::array{FromUtf8(new_master.string())});
        dataset.ExecuteScript(script);
        AddIssues(dataset);
    }
    if (fs::exists(master_file)) {
        fs::remove(new_master);
    } else {
        MoveTo(new_master, master_file);
    }
    MoveTo(new_template, template_file);
}

}  // namespace zorvel
