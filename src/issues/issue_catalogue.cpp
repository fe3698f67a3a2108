#include "issues/issue_catalogue.h"

#include <algorithm>

namespace zorvel {
namespace {

constexpr std::array<IssueDescription, kIssueCount> kCatalogue = {{
    {Issue::kNoDescription, "APPNODESC", IssueCategory::kBestPractices, IssueRaiser::kAttributes,
     Severity::kLow,
     "Nobody knows what the application is for when it has to be changed; users notice nothing.",
     "The application has no description",
     "Write on the object's Description page what the application is for and which version it delivers, so "
     "that others can tell it from its neighbours."},
    {Issue::kNoAdminNotes, "APPNOADMIN", IssueCategory::kBestPractices, IssueRaiser::kNotes, Severity::kLow,
     "Whoever changes the application next starts without its history; users notice nothing.",
     "The application has no administrator notes",
     "Note on the Administrator Notes page who built the application, when and how, and what was changed "
     "since. The notes are never shown to users."},
    {Issue::kNoAssociations, "APPNOASSOC", IssueCategory::kMiscellaneous, IssueRaiser::kAttributes,
     Severity::kLow, "It reaches nobody: it takes room in the tree and in every run.",
     "The application is associated with nobody",
     "Associate it with the users, groups, containers or workstations that need it, or delete the object "
     "when nobody does."},
    {Issue::kComplexIni, "APPCOMPLEXINI", IssueCategory::kComplexity, IssueRaiser::kThresholds,
     Severity::kLow, "Every start of the application waits until all its settings were compared.",
     "The application has very many INI settings",
     "Every setting is compared at each distribution. Remove settings that the capture took along by chance, "
     "or deliver the finished INI file as a file copy."},
    {Issue::kComplexText, "APPCOMPLEXTEXT", IssueCategory::kComplexity, IssueRaiser::kThresholds,
     Severity::kLow, "Every start of the application waits until all its files were searched.",
     "The application has very many text file changes",
     "Every change searches its file from the start. Remove changes that are not needed, or deliver the "
     "finished text file as a file copy."},
    {Issue::kComplexRegistry, "APPCOMPLEXREG", IssueCategory::kComplexity, IssueRaiser::kThresholds,
     Severity::kLow, "Every start of the application waits until all its settings were compared.",
     "The application has very many registry settings",
     "Every setting is read and written at each distribution. Remove the settings that the capture took "
     "along by chance, or split the application into parts that are distributed on their own."},
    {Issue::kInvalidName, "INVALIDAN", IssueCategory::kBestPractices, IssueRaiser::kName, Severity::kLow,
     "It works, but scripts that do not quote the name miss the application.",
     "The application's name contains a blank",
     "Rename the object without blanks (use \"_\" or \"-\"); names with blanks have to be quoted in scripts "
     "and command lines. Users see the caption, which may hold blanks."},
    {Issue::kInvalidRunOrder, "INVALIDRO", IssueCategory::kMiscellaneous, IssueRaiser::kAttributes,
     Severity::kMedium, "Icons and forced runs come in another order on another workstation.",
     "The icon or run order is out of range",
     "Set the icon order to a number from 0 to 999, or to -1 for none. Other values leave the order of icons "
     "and of forced runs undefined."},
    {Issue::kFileOld, "FILEOLD", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Nothing reads the file; it costs time and disk space on each workstation.",
     "Superseded copy of a file (.OLD)",
     "Remove the entry: an installer renamed the file when it put a newer one in its place, and nothing "
     "reads the old one."},
    {Issue::kFileCompressed, "FILECOMP", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Nothing can use the file as it is; it costs time and disk space on each workstation.",
     "Compressed installation file (name ends in \"_\")",
     "Remove the entry: the file is part of an installation source and has to be expanded before it is of "
     "use. Deliver the expanded file if the application needs it."},
    {Issue::kFileSystemDll, "FILESYSDLLFLAG", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kHigh,
     "An older system DLL takes the place of a newer one, and other programs or Windows itself no longer "
     "start.",
     "System DLL copied without regard to its version",
     "Set the copy mode to \"Copy If Newer Version\", so that a newer DLL on the workstation is not replaced "
     "by an older one."},
    {Issue::kFilePrefetch, "FILEPREFETCH", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Windows writes its own; the file only costs time and disk space.",
     "Prefetch file of the capture workstation",
     "Remove the entry: Windows writes prefetch files (.PF) for each workstation itself."},
    {Issue::kFileTemporary, "FILETEMP", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Nothing reads the file; it costs time and disk space on each workstation.", "Temporary file",
     "Remove the entry: the file was in use by a program while the capture was taken and has no use "
     "elsewhere."},
    {Issue::kFileVirusDefinitions, "FILEVIRUSDEFS", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kHigh, "The virus scanner of each workstation is told of definitions that it does not have.",
     "Usage file of a virus scanner's definitions",
     "Remove the entry: the file tells which definitions are in use on the capture workstation, and misleads "
     "the scanner on any other."},
    {Issue::kFileIconCache, "FILEICONCACHE", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Icons look wrong until Windows builds the cache anew.", "Icon cache of the desktop",
     "Remove the entry: Windows builds the icon cache on each workstation; a foreign one shows wrong icons."},
    {Issue::kFileTemporaryInternet, "FILETEMPIF", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kCritical,
     "Pages that one user has read, with what was typed into them, lie on the workstations of all others.",
     "File of the Internet Explorer cache (Temporary Internet Files)",
     "Remove the entry: cached pages belong to the user who browsed while the capture was taken."},
    {Issue::kFileLocalTemp, "FILELOCALTEMP", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Nothing reads the file; it costs time and disk space on each workstation.",
     "File in a user's temporary folder (Local Settings\\Temp)",
     "Remove the entry: what installers leave in the temporary folder is not needed once they are done."},
    {Issue::kFileIeHistory, "FILEIEHIST", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kCritical,
     "The addresses that one user has visited lie on the workstations of all others.",
     "Internet Explorer history",
     "Remove the entry: the history belongs to the user who browsed while the capture was taken."},
    {Issue::kFileIeContent, "FILEIECONT", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kCritical,
     "Pages that one user has read, with what was typed into them, lie on the workstations of all others.",
     "Internet Explorer content cache",
     "Remove the entry: cached content belongs to the user who browsed while the capture was taken."},
    {Issue::kFilePasswordList, "FILEPWL", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kCritical,
     "The file holds passwords, which whoever receives it can read, and it destroys those of the users it "
     "reaches.",
     "Windows password list (.PWL)",
     "Remove the entry at once: the file holds passwords of a user of the capture workstation and overwrites "
     "those of the users it is sent to."},
    {Issue::kFilePerformanceMonitor, "FILEPERFMON", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kLow, "The measurements are those of another workstation; they only cost time and disk space.",
     "Performance monitor file (.PML, .PMA)",
     "Remove the entry: such files record measurements or counters of the capture workstation."},
    {Issue::kFileQuarantine, "FILENAVQ", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kHigh,
     "The file holds an infected program, which the distribution carries to every workstation.",
     "Quarantined file of a virus scanner (.VBN)",
     "Remove the entry: the file holds a program that the scanner found infected. Check the capture "
     "workstation before capturing again."},
    {Issue::kFileExcelRecovery, "FILEEXCELAR", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kCritical,
     "The file is a workbook that somebody had open while the capture was taken: its content reaches "
     "everybody.",
     "Excel recovery file (.XAR)",
     "Remove the entry: Excel writes the file to save open workbooks; it is no part of an application."},
    {Issue::kFilePartialDownload, "FILEPDOWN", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "The file is a fragment that nothing can use; it costs time and disk space.", "Unfinished download",
     "Remove the entry: the file is a fragment that a download program left behind."},
    {Issue::kFileBackup, "FILEBAK", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Nothing reads the file; it costs time and disk space on each workstation.", "Backup copy of a file",
     "Remove the entry: the file was kept by an editor or an installer for a way back on the capture "
     "workstation only."},
    {Issue::kFileWindows3Swap, "FILEPART", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kHigh,
     "A swap file of another size and place takes the memory that Windows counts on.",
     "Swap file of Windows 3.x (386*.PAR)",
     "Remove the entry: the file is large, describes the capture workstation's memory and does harm on any "
     "other."},
    {Issue::kFileRegistryBackup, "FILEDA0", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kCritical,
     "The file is a whole registry, with the accounts, licences and secrets of the capture workstation.",
     "Backup of the Windows registry (.DA0)",
     "Remove the entry: the file is a copy of the capture workstation's registry and must not reach other "
     "workstations.",
     "The registry of Windows 95 is kept in .DAT files, and their backups end in .DA0 with a zero."},
    {Issue::kFileUserClasses, "FILEUSRCLASS", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kCritical,
     "The file is part of one user's registry, with that user's data, and it replaces that of others.",
     "User's class registry (USRCLASS.DAT)",
     "Remove the entry: the file is part of the registry of one user. Deliver the wanted values as registry "
     "settings."},
    {Issue::kFileUserRegistry, "FILENTUSER", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kCritical,
     "The file is one user's registry, with that user's data and secrets, and it replaces that of others.",
     "User's registry (NTUSER.DAT)",
     "Remove the entry: the file is the registry of one user, and replaces that of every user it is sent to. "
     "Deliver the wanted values as registry settings."},
    {Issue::kFilePageFile, "FILEPAGEFILE", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kCritical,
     "The file holds what lay in the memory of the capture workstation, passwords and documents included.",
     "Windows page file (PAGEFILE.SYS)",
     "Remove the entry: each workstation makes its own page file, which is in use while Windows runs."},
    {Issue::kFileSwap, "FILESWAP", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kCritical,
     "The file holds what lay in the memory of a program or of Windows, passwords and documents included.",
     "Swap file (.SWP)",
     "Remove the entry: the file held the memory of a program or of Windows while the capture was taken."},
    {Issue::kFileDump, "FILEDUMP", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kCritical,
     "The file holds what lay in memory at the crash, passwords and documents included.",
     "Memory dump of a crash",
     "Remove the entry: the file is large and may hold confidential data. Find out why the capture "
     "workstation crashed."},
    {Issue::kFileInstallShieldCleanUp, "FILEDELIS", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kHigh,
     "The installer deletes at the next start what the list names, on workstations that still need it.",
     "Leftover of an InstallShield clean-up (_DELIS32.INI)",
     "Remove the entry: the file tells the installer what to delete at the next start of the capture "
     "workstation."},
    {Issue::kFileInstallShieldUninstaller, "FILEUNINST", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kLow, "Users can start an uninstaller that knows nothing of how the application came.",
     "InstallShield uninstaller (ISUNINST.EXE)",
     "Remove the entry and the uninstall entries of the registry: the application is removed through the "
     "launcher, not by its own uninstaller."},
    {Issue::kFileWiseUninstaller, "FILEUNWISE", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kLow, "Users can start an uninstaller that knows nothing of how the application came.",
     "Wise uninstaller (UNWISE.EXE)",
     "Remove the entry and the uninstall entries of the registry: the application is removed through the "
     "launcher, not by its own uninstaller."},
    {Issue::kFileSchedulerLog, "FILESCHEDLOG", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "The log tells of tasks of another workstation, and the copy fails wherever the scheduler runs.",
     "Log of the task scheduler (SCHEDLGU.TXT)",
     "Remove the entry: the scheduler of each workstation writes its own log and keeps it open."},
    {Issue::kFileInstallerRollback, "FILECONFIGMSI", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kHigh, "An installation that fails later is rolled back to the state of another workstation.",
     "Windows Installer rollback file (Config.msi)",
     "Remove the entry: the folder serves only while an installation is running. Capture again after a "
     "restart."},
    {Issue::kFileDllCache, "FILEDLLCACHE", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kHigh,
     "Windows restores its protected files from this folder, and would restore foreign ones.",
     "Copy of a protected system file (DLLCACHE)",
     "Remove the entry: Windows File Protection keeps this folder itself and restores its own versions."},
    {Issue::kFilePerformanceData, "FILEPERFDATA", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kLow, "Nothing reads the file once its program has ended; it costs time and disk space.",
     "Performance counter data (Perflib_Perfdata)",
     "Remove the entry: the file existed only while a program on the capture workstation was running."},
    {Issue::kFileWindowsTemp, "FILEWINTEMP", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kLow,
     "Nothing reads the file; it costs time and disk space on each workstation.",
     "File in the temporary folder of Windows",
     "Remove the entry: what installers leave in the temporary folder is not needed once they are done."},
    {Issue::kFileMacroSyntax, "FILEMACROSYTAX", IssueCategory::kFiles, IssueRaiser::kFileRules,
     Severity::kHigh,
     "The launcher does not know the macro: the file goes to a folder of that name, and the application "
     "misses it.",
     "Folder macro written without its asterisk",
     "Write the macro with an asterisk after the first percent sign, for example %*WinSysDir% for "
     "%WinSysDir%; without it the launcher looks for an ordinary macro of that name.",
     "The code lacks the N of \"syntax\": it is known so to datasets and to those who filter them."},
    {Issue::kFileCustom, "FILECUSTOM", IssueCategory::kFiles, IssueRaiser::kFileRules, Severity::kMedium,
     "Your own list says that the file should not be distributed.", "File on the custom file issue list",
     "Remove the entry, or take the name off FileIssue.dat (Advanced menu, Edit Custom File Issue List) if "
     "the file should be distributed after all."},
    {Issue::kFilePortable, "FILEPORTABLE", IssueCategory::kFiles, IssueRaiser::kPortablePaths,
     Severity::kMedium, "The application breaks where Windows lies in another folder or on another drive.",
     "Fixed path of a Windows folder instead of a folder macro",
     "Windows may lie elsewhere on other workstations. Replace the beginning of the path by its folder "
     "macro: \\Program Files\\Common Files by %*ProgramFilesCommon% [Win2K+ ONLY]; \\Windows\\System32 and "
     "\\WinNT\\System32 by %*WinSysDir%; \\Windows\\Fonts and \\WinNT\\Fonts by %*Fonts%; any other path "
     "below \\Windows or \\WinNT by %*WinDir%."},
    {Issue::kRegistryUnc, "REGISTRYUNC", IssueCategory::kRegistry, IssueRaiser::kRegistryRules,
     Severity::kMedium,
     "The application breaks at sites that cannot reach the server, and everywhere once it moves.",
     "Registry value holds a UNC path",
     "The application depends on one server. Use a macro or a mapped drive for the path, so that it can be "
     "moved and reached at every site."},
    {Issue::kRegistryExclude, "REGISTRYEXCLUDE", IssueCategory::kRegistry, IssueRaiser::kRegistryRules,
     Severity::kHigh,
     "The key describes the capture workstation or its user; written elsewhere it breaks Windows or another "
     "user's settings.",
     "Registry key that should not be distributed",
     "Remove the setting: the key describes the capture workstation or its user. Take the key off "
     "RegExclude.dat (Advanced menu, Edit Registry Issue List) if it should be distributed after all."},
    {Issue::kMacroUnc, "MACROUNC", IssueCategory::kMacros, IssueRaiser::kMacroRules, Severity::kMedium,
     "The distribution breaks at sites that cannot reach the server, and everywhere once it moves.",
     "Macro value is a UNC path",
     "The application depends on one server. Use a mapped drive, or a macro that each site sets for itself."},
    {Issue::kMacroShortPath, "MACROSTP", IssueCategory::kMacros, IssueRaiser::kMacroRules, Severity::kMedium,
     "The application breaks on workstations where its programs need the short path.",
     "SHORT_TARGET_PATH is not in 8.3 form",
     "Shorten every folder of the value to its 8.3 name (for example C:\\PROGRA~1\\MYAPP); programs that "
     "need the short path fail with a long one."},
}};

constexpr bool InOrder() {
    for (std::size_t i = 0; i < kIssueCount; ++i) {
        if (static_cast<std::size_t>(kCatalogue[i].issue) != i) return false;
    }
    return true;
}
static_assert(InOrder());

struct CodeBeginning {
    std::string_view text;
    IssueCategory category;
};
// The first that a code begins with counts.
constexpr std::array<CodeBeginning, 5> kBeginnings = {{
    {"APPCOMPLEX", IssueCategory::kComplexity},
    {"APPNO", IssueCategory::kBestPractices},
    {"FILE", IssueCategory::kFiles},
    {"MACRO", IssueCategory::kMacros},
    {"REGISTRY", IssueCategory::kRegistry},
}};

}  // namespace

const std::array<IssueDescription, kIssueCount>& IssueCatalogue() {
    return kCatalogue;
}

const IssueDescription& Describe(Issue issue) {
    return kCatalogue.at(static_cast<std::size_t>(issue));
}

std::string_view CodeOf(Issue issue) {
    return Describe(issue).code;
}

const IssueDescription* FindIssue(std::string_view code) {
    const auto* const found =
        std::find_if(kCatalogue.begin(), kCatalogue.end(),
                     [code](const IssueDescription& issue) { return issue.code == code; });
    return found == kCatalogue.end() ? nullptr : found;
}

IssueCategory CategoryOf(std::string_view code) {
    if (const IssueDescription* const known = FindIssue(code)) return known->category;
    const auto* const beginning =
        std::find_if(kBeginnings.begin(), kBeginnings.end(),
                     [code](const CodeBeginning& begins) { return code.starts_with(begins.text); });
    return beginning == kBeginnings.end() ? IssueCategory::kMiscellaneous : beginning->category;
}

Severity SeverityOf(std::string_view code) {
    const IssueDescription* const known = FindIssue(code);
    return known == nullptr ? Severity::kMedium : known->severity;
}

std::string_view SeverityText(Severity severity) {
    return kSeverityTexts.at(static_cast<std::size_t>(severity));
}

std::optional<Severity> SeverityFrom(std::string_view text) {
    for (std::size_t i = 0; i < kSeverityTexts.size(); ++i)
        if (kSeverityTexts[i] == text) return static_cast<Severity>(i);
    return std::nullopt;
}

std::string_view RaiserText(IssueRaiser raiser) {
    switch (raiser) {
        case IssueRaiser::kName:
            return "the application's name";
        case IssueRaiser::kAttributes:
            return "the application's attributes";
        case IssueRaiser::kNotes:
            return "the administrator notes";
        case IssueRaiser::kThresholds:
            return "the number of entries, against a threshold of the options";
        case IssueRaiser::kPortablePaths:
            return "the paths of files, of the executable and of the working directory";
        case IssueRaiser::kFileRules:
            return "a file rule";
        case IssueRaiser::kRegistryRules:
            return "a registry rule";
        case IssueRaiser::kMacroRules:
            return "a macro rule";
    }
    return {};
}

}  // namespace zorvel
