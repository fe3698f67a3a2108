#include "faults/operations.h"

namespace zorvel::test {
namespace {

using Words = std::vector<std::string>;

const Words kRead = {"containers", "--refresh"};
const Words kAnalyse = {"analyse", "--all", "--pace", "0"};
const Words kAnalyseAnew = {"analyse", "--all", "--pace", "0", "--refresh"};

Words Report(const std::string& format) {
    return {"report", "Issue Summary", "--output", "Issues." + format};
}

}  // namespace

std::vector<Operation> Operations(const std::string& ldif) {
    const auto first_tree = [ldif](const AuditFolder& folder) {
        ldif.empty() ? folder.SetTree(3, 3) : folder.SetTree(ldif);
    };
    const auto second_tree = [](const AuditFolder& folder) { folder.SetTree(4, 5); };
    const auto read = [=](const AuditFolder& folder) {
        first_tree(folder);
        folder.Need(kRead);
    };
    const auto analysed = [=](const AuditFolder& folder) {
        first_tree(folder);
        folder.Need(kAnalyse);
    };
    const auto imported = [=](const AuditFolder& folder) {
        analysed(folder);
        folder.Need({"import"});
    };
    const auto reported = [=](const std::string& format) {
        return [=](const AuditFolder& folder) {
            imported(folder);
            folder.Need({"report", "Issue Detail", "--output", "Issues." + format});
        };
    };
    return {
        {"first read", {"containers"}, first_tree},
        {"read anew", kRead,
         [=](const AuditFolder& folder) {
             read(folder);
             second_tree(folder);
         }},
        {"read what changed", kRead,
         [=](const AuditFolder& folder) {
             read(folder);
             folder.ChangeTree();
         }},
        {"first analysis", kAnalyse, read, true},
        {"next analysis", kAnalyseAnew,
         [=](const AuditFolder& folder) {
             imported(folder);
             second_tree(folder);
         },
         true},
        {"first import", {"import"}, analysed},
        {"import again", {"import"}, imported},
        {"next import",
         {"import"},
         [=](const AuditFolder& folder) {
             imported(folder);
             second_tree(folder);
             folder.Need(kAnalyseAnew);
         }},
        {"analysis with import", {"analyse", "--all", "--pace", "0", "--import"}, imported, true},
        {"compact", {"compact", "{D}"}, imported},
        {"delete", {"delete", "{D}"}, imported},
        {"repair",
         {"datasets", "--repair"},
         [=](const AuditFolder& folder) {
             imported(folder);
             const std::filesystem::path databases = folder.path() / "Databases";
             std::filesystem::copy_file(folder.path() / "Empty_Zorvel.mdb",
                                        databases / "Zorvel_261101120000.MDB");
             std::filesystem::copy_file(folder.path() / "Empty_Zorvel.mdb",
                                        databases / "Zorvel_261101120001.MDB.partial");
         }},
        {"accept",
         {"accept", "--code", "FILEOLD", "--application", "*", "--reason", "old"},
         [=](const AuditFolder& folder) {
             imported(folder);
             folder.Need({"accept", "--code", "FILEBAK", "--application", "*", "--reason", "older"});
         }},
        {"options and selection", {"save_settings"}, read},
        {"report PDF", Report("pdf"), reported("pdf")},
        {"report HTML", Report("html"), reported("html")},
        {"report CSV", Report("csv"), reported("csv")},
        {"report JSON", Report("json"), reported("json")},
    };
}

}  // namespace zorvel::test
