#include "database/import_kinds.h"

#include "issues/issue_catalogue.h"

namespace zorvel {
namespace {

using enum ValueForm;

constexpr std::array kAttributeFiles = {data_files::kAppDetails};
constexpr std::array kMacroFiles = {data_files::kMacros};
constexpr std::array kIssueFiles = {data_files::kIssues};
constexpr std::array kCopyFiles = {data_files::kCopyFiles, data_files::kCopyFilesAlways};
constexpr std::array kINIFiles = {data_files::kINISettings, data_files::kINISettingsAlways};
constexpr std::array kRegistryFiles = {data_files::kRegistrySettings, data_files::kRegistrySettingsAlways};
constexpr std::array kAppAssociationFiles = {data_files::kAppAssociations};
constexpr std::array kAssociationFiles = {data_files::kAssociations};

constexpr std::array<ValueRule, 4> kMacroValues = {
    {{kEscaped, 60}, {kEscaped, 255}, {kInteger}, {kEscaped, 255}}};
constexpr std::array<ValueRule, 4> kIssueValues = {
    {{kAsIs, 20, "the entry type"}, {kEscaped, 255}, {kEscaped, 255}, {kAsIs, 15, "the issue code"}}};
constexpr std::array<ValueRule, 3> kCopyFileValues = {
    {{kEscaped, 255}, {kEscaped, 255}, {kAsIs, 50, "the copy mode"}}};
constexpr std::array<ValueRule, 5> kINIValues = {
    {{kEscaped, 100}, {kEscaped, 100}, {kEscaped, 100}, {kEscaped, 250}, {kAsIs, kUncut, "the note"}}};
constexpr std::array<ValueRule, 4> kRegistryValues = {
    {{kEscaped, 255}, {kEscaped, 255}, {kEscaped}, {kAsIs, 50, "the mode"}}};
constexpr std::array<ValueRule, 5> kAppAssociationValues = {
    {{kEscaped}, {kEscaped}, {kEscaped}, {kBare}, {kAsIs, 70, "the fingerprint"}}};
constexpr std::array<ValueRule, 3> kAssociationValues = {{{kEscaped}, {kEscaped}, {kEscaped}}};

// What a run writes of an application even when it is then not found: an issue of its name alone.
bool IsIssueOfAName(const std::vector<std::string>& record) {
    return record[4] == CodeOf(Issue::kInvalidName);
}

constexpr std::array<ImportKind, 8> kKinds = {{
    {.section = "Apps:",
     .opening = "Adding application attributes to database..",
     .timing = "Apps import took: ",
     .files = kAttributeFiles,
     .progress_field = 0},
    {.section = "Macros:",
     .opening = "Adding application macros to database..",
     .timing = "Macros import took: ",
     .files = kMacroFiles,
     .progress_field = 1,
     .insert = "INSERT INTO Zorvel_Macros (AppUniqueRef,Macro,[Value],MinSpace,Prompt) VALUES (",
     .values = kMacroValues},
    {.section = "Issues:",
     .opening = "Adding applications issues to database..",
     .timing = "Issues import took: ",
     .files = kIssueFiles,
     .progress_field = 4,
     .insert = "INSERT INTO Zorvel_Issues (AppUniqueRef,EntryType,TargetFile,SourceFile,IssueCode) VALUES (",
     .values = kIssueValues,
     .needs_no_application = IsIssueOfAName},
    {.section = "Files:",
     .opening = "Adding application files to database..",
     .timing = "File import took: ",
     .files = kCopyFiles,
     .progress_field = 1,
     .insert = "INSERT INTO Zorvel_CopyFiles VALUES (",
     .values = kCopyFileValues},
    {.section = "INI:",
     .opening = "Adding application INI files to database..",
     .timing = "INI import took: ",
     .files = kINIFiles,
     .progress_field = 2,
     .insert = "INSERT INTO Zorvel_INISettings(AppUniqueRef,Data,[Section],[Value],Target,Notes) VALUES (",
     .values = kINIValues},
    {.section = "Registry:",
     .opening = "Adding application registry entries to database..",
     .timing = "Registry Settings import took: ",
     .files = kRegistryFiles,
     .progress_field = 1,
     .insert = "INSERT INTO Zorvel_RegistrySettings(AppUniqueRef,[Key],Data,[Value],Mode) VALUES (",
     .values = kRegistryValues},
    {.section = "App Assoc:",
     .opening = "Adding application Group associations to database..",
     .timing = "AppAssociations import took: ",
     .files = kAppAssociationFiles,
     .progress_field = 0,
     .shows_count = false,
     .moves_bar = false,
     .insert = "INSERT INTO Zorvel_AppAssociations "
               "(AppUniqueRef,AssocByGroup,AssocByOU,AssocByWS,TotAssociations,AppFingerPrint) VALUES (",
     .values = kAppAssociationValues},
    {.section = "App Assoc:",
     .opening = "Adding user associations to database..",
     .timing = "Associations import took: ",
     .files = kAssociationFiles,
     .progress_field = 0,
     .moves_bar = false,
     .insert =
         "INSERT INTO Zorvel_Associations (AppUniqueRef,FullUserID,FullAssociation,AssociationType) VALUES (",
     .values = kAssociationValues},
}};

}  // namespace

std::span<const ImportKind> ImportKinds() {
    return kKinds;
}

}  // namespace zorvel
