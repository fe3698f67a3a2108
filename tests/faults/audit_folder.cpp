#include "faults/audit_folder.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "database/make_databases.h"
#include "platform/output_file.h"
#include "sample_tree_writer.h"
#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

namespace fs = std::filesystem;

// Files that are written as a whole and whose bytes depend on nothing but their content.
constexpr const char* kWholeFiles[] = {"Zorvel.ini",  "TempData/T-0000001.AppSelection",
                                       "Issues.csv",  "Issues.json",
                                       "Issues.html", "Accepted.toml"};

std::vector<std::string> Fields(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream rest(line);
    for (std::string field; std::getline(rest, field, '\t');)
        fields.push_back(field);
    return fields;
}

// A report without the moment at which it was made, "dd/mm/yyyy hh:mm:ss".
std::string WithoutTime(std::string report) {
    constexpr std::size_t kLength = 19;
    const std::size_t generated = report.find("enerated");
    const std::size_t moment = report.find_first_of("0123456789", generated);
    if (generated != std::string::npos && moment != std::string::npos) report.erase(moment, kLength);
    return report;
}

}  // namespace

AuditFolder::AuditFolder(const fs::path& parent, const std::string& name)
    : path_(parent / name), scratch_(parent / (name + ".scratch")) {
    fs::create_directories(scratch_);
    fs::remove_all(path_);
    for (const char* folder : {"TempData", "Databases", "Trees"})
        fs::create_directories(path_ / folder);
    const fs::path program = ZORVEL_SOURCE_DIR "/program";
    fs::copy(program / "Reports", path_ / "Reports");
    for (const char* file : {"Zorvel.ini", "FileIssue.dat", "RegExclude.dat", "Trees/nds-schema.ldif"})
        fs::copy_file(program / file, path_ / file);
    MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", path_ / "Empty_Zorvel.mdb",
                  path_ / "Databases/ZorvelMaster.mdb");
    std::ofstream(path_ / "Directory.toml") << "[[tree]]\nname = \"T\"\nldif = \"Trees/T.ldif\"\n";
}

AuditFolder::AuditFolder(const fs::path& parent, const std::string& name, const AuditFolder& other)
    : path_(parent / name), scratch_(parent / (name + ".scratch")) {
    fs::create_directories(scratch_);
    fs::remove_all(path_);
    fs::copy(other.path_, path_, fs::copy_options::recursive);
}

void AuditFolder::SetTree(unsigned seed, std::size_t applications) const {
    OutputFile ldif(path_ / "Trees/T.ldif", "T.ldif", OutputFile::Mode::kTruncate);
    tools::WriteSampleTree(
        {.tree = "T", .seed = seed, .containers = 4, .applications = applications, .entries = 6}, ldif);
    ldif.Close();
}

void AuditFolder::ChangeTree() const {
    const fs::path path = path_ / "Trees/T.ldif";
    std::string ldif = ReadFile(path);
    const std::string begin = "\ndn: cn=";
    const std::size_t name = ldif.find(begin) + begin.size();
    const std::string old_name = ldif.substr(name, ldif.find(',', name) - name);
    for (const std::string& before : {"cn=" + old_name + ",", "cn: " + old_name + "\n"}) {
        for (std::size_t at = ldif.find(before); at != std::string::npos; at = ldif.find(before, at))
            ldif.replace(at + 3, 1, "~");
    }
    std::ofstream(path) << ldif << "\ndn: ou=EMPTY,o=T\nobjectClass: organizationalUnit\nou: EMPTY\n";
}

void AuditFolder::SetTree(const fs::path& ldif) const {
    fs::copy_file(ldif, path_ / "Trees/T.ldif", fs::copy_options::overwrite_existing);
}

std::vector<std::string> AuditFolder::Command(const std::vector<std::string>& arguments) const {
    if (arguments.front() == "save_settings") return {ZORVEL_SAVE_SETTINGS, path_.string()};
    std::vector<std::string> command = {ZORVEL_BATCH_PROGRAM, "--folder", path_.string(), "--yes"};
    for (const std::string& argument : arguments) {
        const std::vector<std::string> datasets =
            argument == "{D}" ? DatasetFiles() : std::vector<std::string>();
        command.push_back(datasets.empty() ? argument : datasets.front());
        if (argument.starts_with("Issues.")) command.back() = (path_ / argument).string();
    }
    return command;
}

Outcome AuditFolder::Run(const std::vector<std::string>& arguments, const std::string& fault) const {
    return ProgramRun(Command(arguments), path_, scratch_, fault).Wait();
}

std::string AuditFolder::Need(const std::vector<std::string>& arguments) const {
    const Outcome outcome = Run(arguments);
    if (outcome.status == 0) return outcome.output;
    throw std::runtime_error("'" + arguments.front() + "' ended with " + std::to_string(outcome.status) +
                             ": " + outcome.errors);
}

ProgramRun AuditFolder::Start(const std::vector<std::string>& arguments, const std::string& scratch) const {
    const fs::path own = scratch_ / scratch;
    fs::create_directories(own);
    return {Command(arguments), path_, own};
}

std::vector<std::string> AuditFolder::DatasetFiles() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& file : fs::directory_iterator(path_ / "Databases")) {
        const std::string name = file.path().filename().string();
        if (!name.starts_with("ZorvelMaster.mdb")) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> AuditFolder::AllFiles() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& file : fs::recursive_directory_iterator(path_)) {
        if (file.is_regular_file()) names.push_back(fs::relative(file.path(), path_).string());
    }
    return names;
}

// A number made of all rows, but for those that tell of the import itself.
std::string AuditFolder::Digest(const std::string& dataset) const {
    const SQLite::Database database((path_ / "Databases" / dataset).string(), SQLite::OPEN_READWRITE);
    std::string text;
    SQLite::Statement tables(database, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
    while (tables.executeStep()) {
        const std::string table = tables.getColumn(0).getString();
        if (table == "Zorvel_Import") continue;
        text += table + '\n';
        SQLite::Statement rows(database, "SELECT * FROM \"" + table + "\" ORDER BY rowid");
        while (rows.executeStep()) {
            for (int column = 0; column < rows.getColumnCount(); ++column)
                text += rows.getColumn(column).getString() + '\t';
            text += '\n';
        }
    }
    return std::to_string(std::hash<std::string>{}(text));
}

// A cache without its heading and its date.
std::string AuditFolder::Records(const std::string& cache) const {
    const std::string text = ReadFile(path_ / "TempData" / ("T." + cache));
    return text.substr(std::min(text.find('\n', text.find('\n') + 1), text.size()));
}

FolderState AuditFolder::State() const {
    FolderState state;
    std::istringstream datasets(Need({"datasets"}));
    for (std::string line; std::getline(datasets, line);) {
        const std::vector<std::string> fields = Fields(line);
        const std::string& file = fields.at(5);
        const bool whole =
            line.find("import not completed") == std::string::npos && fs::exists(path_ / "Databases" / file);
        state.datasets[file] = whole ? Digest(file) : kNotCompleted;
    }
    for (const char* name : kWholeFiles) {
        if (fs::exists(path_ / name)) state.files[name] = WithoutTime(ReadFile(path_ / name));
    }
    state.tree = Need({"containers"});
    state.tree += Records("TreeCache") + Records("AppCache");  // of the tree that was listed now
    return state;
}

}  // namespace zorvel::test
