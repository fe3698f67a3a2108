// The issues that an application can have: the one place that says what each is called, where it belongs,
// what raises it and what to do about it. The rules, the datasets' seed rows, the report options and
// docs/issues.md come from it.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace zorvel {

enum class Issue : std::size_t {
    kNoDescription,
    kNoAdminNotes,
    kNoAssociations,
    kComplexIni,
    kComplexText,
    kComplexRegistry,
    kInvalidName,
    kInvalidRunOrder,
    kFileOld,
    kFileCompressed,
    kFileSystemDll,
    kFilePrefetch,
    kFileTemporary,
    kFileVirusDefinitions,
    kFileIconCache,
    kFileTemporaryInternet,
    kFileLocalTemp,
    kFileIeHistory,
    kFileIeContent,
    kFilePasswordList,
    kFilePerformanceMonitor,
    kFileQuarantine,
    kFileExcelRecovery,
    kFilePartialDownload,
    kFileBackup,
    kFileWindows3Swap,
    kFileRegistryBackup,
    kFileUserClasses,
    kFileUserRegistry,
    kFilePageFile,
    kFileSwap,
    kFileDump,
    kFileInstallShieldCleanUp,
    kFileInstallShieldUninstaller,
    kFileWiseUninstaller,
    kFileSchedulerLog,
    kFileInstallerRollback,
    kFileDllCache,
    kFilePerformanceData,
    kFileWindowsTemp,
    kFileMacroSyntax,
    kFileCustom,
    kFilePortable,
    kRegistryUnc,
    kRegistryExclude,
    kMacroUnc,
    kMacroShortPath,
};
inline constexpr std::size_t kIssueCount = 47;

// Where the report options list an issue, in their order.
enum class IssueCategory : std::size_t {
    kComplexity,
    kBestPractices,
    kMiscellaneous,
    kFiles,
    kRegistry,
    kMacros,
};
struct IssueCategoryText {
    std::string_view key;
    std::string_view text;
};
inline constexpr std::array<IssueCategoryText, 6> kIssueCategories = {{
    {"AC", "Application Complexity"},
    {"BP", "Best Practices"},
    {"MISC", "Miscellaneous Issues"},
    {"FRI", "File Related Issues"},
    {"RRI", "Registry Related Issues"},
    {"MRI", "Macro Related Issues"},
}};

// What raises an issue.
enum class IssueRaiser {
    kName,           // the application's own name
    kAttributes,     // its attributes
    kNotes,          // its administrator notes
    kThresholds,     // how many entries it has
    kPortablePaths,  // the check for paths that a folder macro should begin
    kFileRules,
    kRegistryRules,
    kMacroRules,
};

// How bad an issue is, the worst first.
enum class Severity : std::size_t {
    kCritical,  // secrets, or data of other users, leave the workstation they belong to
    kHigh,      // workstations break
    kMedium,    // it breaks in another place or at another site
    kLow,       // slow, untidy or undocumented
};
inline constexpr std::array<std::string_view, 4> kSeverityTexts = {"critical", "high", "medium", "low"};

struct IssueDescription {
    Issue issue;
    std::string_view code;  // in data files, datasets and reports
    IssueCategory category;
    IssueRaiser raiser;
    Severity severity;
    std::string_view severity_reason;  // why it is as bad as that: a sentence
    std::string_view short_text;
    std::string_view remedy;
    std::string_view remark = {};  // on a code or a pattern that looks like a mistake and is meant
};

// All issues, in the order of Issue.
const std::array<IssueDescription, kIssueCount>& IssueCatalogue();
const IssueDescription& Describe(Issue issue);
std::string_view CodeOf(Issue issue);
// The issue of a code; null for a code that is not in the catalogue.
const IssueDescription* FindIssue(std::string_view code);

// The category of a code. Codes that are not in the catalogue, as rows of a template can have, belong where
// their beginning says.
IssueCategory CategoryOf(std::string_view code);
// The severity of a code. One that is not in the catalogue is medium: nobody has said that it does not
// matter.
Severity SeverityOf(std::string_view code);
// "critical"
std::string_view SeverityText(Severity severity);
// The severity that such a text names, or nothing.
std::optional<Severity> SeverityFrom(std::string_view text);
// What raises an issue, as it is told to users: "a file rule".
std::string_view RaiserText(IssueRaiser raiser);

}  // namespace zorvel
