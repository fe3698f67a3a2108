#include "issues/issue_catalogue.h"

#include <algorithm>

namespace zorvel {
namespace {

constexpr std::array<IssueDescription, kIssueCount> kCatalogue = {{
    {Issue::kNoDescription, "APPNODESC", IssueCategory::kBestPractices, IssueRaiser::kAttributes,
     "The application has no description",
     "Write on the object's Description page what the application is for and which version it delivers, so "
     "that others can tell it from its neighbours."},
    {Issue::kNoAdminNotes, "APPNOADMIN", IssueCategory::kBestPractices, IssueRaiser::kNotes,
     "The application has no administrator notes",
     "Note on the Administrator Notes page who built the application, when and how, and what was changed "
     "since. The notes are never shown to users."},
    {Issue::kNoAssociations, "APPNOASSOC", IssueCategory::kMiscellaneous, IssueRaiser::kAttributes,
     "The application is associated with nobody",
     "Associate it with the users, groups, containers or workstations that need it, or delete the object "
     "when nobody does."},
    {Issue::kComplexIni, "APPCOMPLEXINI", IssueCategory::kComplexity, IssueRaiser::kThresholds,
     "The application has very many INI settings",
     "Every setting is compared at each distribution. Remove settings that the capture took along by chance, "
     "or deliver the finished INI file as a file copy."},
    {Issue::kComplexText, "APPCOMPLEXTEXT", IssueCategory::kComplexity, IssueRaiser::kThresholds,
     "The application has very many text file changes",
     "Every change searches its file from the start. Remove changes that are not needed, or deliver the "
     "finished text file as a file copy."},
    {Issue::kComplexRegistry, "APPCOMPLEXREG", IssueCategory::kComplexity, IssueRaiser::kThresholds,
     "The application has very many registry settings",
     "Every setting is read and written at each distribution. Remove the settings that the capture took "
     "along by chance, or split the application into parts that are distributed on their own."},
    {Issue::kInvalidName, "INVALIDAN", IssueCategory::kBestPractices, IssueRaiser::kName,
     "The application's name contains a blank",
     "Rename the object without blanks (use \"_\" or \"-\"); names with blanks have to be quoted in scripts "
     "and command lines. Users see the caption, which may hold blanks."},
    {Issue::kInvalidRunOrder, "INVALIDRO", IssueCategory::kMiscellaneous, IssueRaiser::kAttributes,
     "The icon or run order is out of range",
     "Set the icon order to a number from 0 to 999, or to -1 for none. Other values leave the order of icons "
     "and of forced runs undefined."},
    {Issue::kFileOld, "FILEOLD", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Superseded copy of a file (.OLD)",
     "Remove the entry: an installer renamed the file when it put a newer one in its place, and nothing "
     "reads the old one."},
    {Issue::kFileCompressed, "FILECOMP", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Compressed installation file (name ends in \"_\")",
     "Remove the entry: the file is part of an installation source and has to be expanded before it is of "
     "use. Deliver the expanded file if the application needs it."},
    {Issue::kFileSystemDll, "FILESYSDLLFLAG", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "System DLL copied without regard to its version",
     "Set the copy mode to \"Copy If Newer Version\", so that a newer DLL on the workstation is not replaced "
     "by an older one."},
    {Issue::kFilePrefetch, "FILEPREFETCH", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Prefetch file of the capture workstation",
     "Remove the entry: Windows writes prefetch files (.PF) for each workstation itself."},
    {Issue::kFileTemporary, "FILETEMP", IssueCategory::kFiles, IssueRaiser::kFileRules, "Temporary file",
     "Remove the entry: the file was in use by a program while the capture was taken and has no use "
     "elsewhere."},
    {Issue::kFileVirusDefinitions, "FILEVIRUSDEFS", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Usage file of a virus scanner's definitions",
     "Remove the entry: the file tells which definitions are in use on the capture workstation, and misleads "
     "the scanner on any other."},
    {Issue::kFileIconCache, "FILEICONCACHE", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Icon cache of the desktop",
     "Remove the entry: Windows builds the icon cache on each workstation; a foreign one shows wrong icons."},
    {Issue::kFileTemporaryInternet, "FILETEMPIF", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "File of the Internet Explorer cache (Temporary Internet Files)",
     "Remove the entry: cached pages belong to the user who browsed while the capture was taken."},
    {Issue::kFileLocalTemp, "FILELOCALTEMP", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "File in a user's temporary folder (Local Settings\\Temp)",
     "Remove the entry: what installers leave in the temporary folder is not needed once they are done."},
    {Issue::kFileIeHistory, "FILEIEHIST", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Internet Explorer history",
     "Remove the entry: the history belongs to the user who browsed while the capture was taken."},
    {Issue::kFileIeContent, "FILEIECONT", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Internet Explorer content cache",
     "Remove the entry: cached content belongs to the user who browsed while the capture was taken."},
    {Issue::kFilePasswordList, "FILEPWL", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Windows password list (.PWL)",
     "Remove the entry at once: the file holds passwords of a user of the capture workstation and overwrites "
     "those of the users it is sent to."},
    {Issue::kFilePerformanceMonitor, "FILEPERFMON", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Performance monitor file (.PML, .PMA)",
     "Remove the entry: such files record measurements or counters of the capture workstation."},
    {Issue::kFileQuarantine, "FILENAVQ", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Quarantined file of a virus scanner (.VBN)",
     "Remove the entry: the file holds a program that the scanner found infected. Check the capture "
     "workstation before capturing again."},
    {Issue::kFileExcelRecovery, "FILEEXCELAR", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Excel recovery file (.XAR)",
     "Remove the entry: Excel writes the file to save open workbooks; it is no part of an application."},
    {Issue::kFilePartialDownload, "FILEPDOWN", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Unfinished download", "Remove the entry: the file is a fragment that a download program left behind."},
    {Issue::kFileBackup, "FILEBAK", IssueCategory::kFiles, IssueRaiser::kFileRules, "Backup copy of a file",
     "Remove the entry: the file was kept by an editor or an installer for a way back on the capture "
     "workstation only."},
    {Issue::kFileWindows3Swap, "FILEPART", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Swap file of Windows 3.x (386*.PAR)",
     "Remove the entry: the file is large, describes the capture workstation's memory and does harm on any "
     "other."},
    {Issue::kFileRegistryBackup, "FILEDA0", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Backup of the Windows registry (.DA0)",
     "Remove the entry: the file is a copy of the capture workstation's registry and must not reach other "
     "workstations.",
     "The registry of Windows 95 is kept in .DAT files, and their backups end in .DA0 with a zero."},
    {Issue::kFileUserClasses, "FILEUSRCLASS", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "User's class registry (USRCLASS.DAT)",
     "Remove the entry: the file is part of the registry of one user. Deliver the wanted values as registry "
     "settings."},
    {Issue::kFileUserRegistry, "FILENTUSER", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "User's registry (NTUSER.DAT)",
     "Remove the entry: the file is the registry of one user, and replaces that of every user it is sent to. "
     "Deliver the wanted values as registry settings."},
    {Issue::kFilePageFile, "FILEPAGEFILE", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Windows page file (PAGEFILE.SYS)",
     "Remove the entry: each workstation makes its own page file, which is in use while Windows runs."},
    {Issue::kFileSwap, "FILESWAP", IssueCategory::kFiles, IssueRaiser::kFileRules, "Swap file (.SWP)",
     "Remove the entry: the file held the memory of a program or of Windows while the capture was taken."},
    {Issue::kFileDump, "FILEDUMP", IssueCategory::kFiles, IssueRaiser::kFileRules, "Memory dump of a crash",
     "Remove the entry: the file is large and may hold confidential data. Find out why the capture "
     "workstation crashed."},
    {Issue::kFileInstallShieldCleanUp, "FILEDELIS", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Leftover of an InstallShield clean-up (_DELIS32.INI)",
     "Remove the entry: the file tells the installer what to delete at the next start of the capture "
     "workstation."},
    {Issue::kFileInstallShieldUninstaller, "FILEUNINST", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "InstallShield uninstaller (ISUNINST.EXE)",
     "Remove the entry and the uninstall entries of the registry: the application is removed through the "
     "launcher, not by its own uninstaller."},
    {Issue::kFileWiseUninstaller, "FILEUNWISE", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Wise uninstaller (UNWISE.EXE)",
     "Remove the entry and the uninstall entries of the registry: the application is removed through the "
     "launcher, not by its own uninstaller."},
    {Issue::kFileSchedulerLog, "FILESCHEDLOG", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Log of the task scheduler (SCHEDLGU.TXT)",
     "Remove the entry: the scheduler of each workstation writes its own log and keeps it open."},
    {Issue::kFileInstallerRollback, "FILECONFIGMSI", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Windows Installer rollback file (Config.msi)",
     "Remove the entry: the folder serves only while an installation is running. Capture again after a "
     "restart."},
    {Issue::kFileDllCache, "FILEDLLCACHE", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Copy of a protected system file (DLLCACHE)",
     "Remove the entry: Windows File Protection keeps this folder itself and restores its own versions."},
    {Issue::kFilePerformanceData, "FILEPERFDATA", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Performance counter data (Perflib_Perfdata)",
     "Remove the entry: the file existed only while a program on the capture workstation was running."},
    {Issue::kFileWindowsTemp, "FILEWINTEMP", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "File in the temporary folder of Windows",
     "Remove the entry: what installers leave in the temporary folder is not needed once they are done."},
    {Issue::kFileMacroSyntax, "FILEMACROSYTAX", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "Folder macro written without its asterisk",
     "Write the macro with an asterisk after the first percent sign, for example %*WinSysDir% for "
     "%WinSysDir%; without it the launcher looks for an ordinary macro of that name.",
     "The code lacks the N of \"syntax\": it is known so to datasets and to those who filter them."},
    {Issue::kFileCustom, "FILECUSTOM", IssueCategory::kFiles, IssueRaiser::kFileRules,
     "File on the custom file issue list",
     "Remove the entry, or take the name off FileIssue.dat (Advanced menu, Edit Custom File Issue List) if "
     "the file should be distributed after all."},
    {Issue::kFilePortable, "FILEPORTABLE", IssueCategory::kFiles, IssueRaiser::kPortablePaths,
     "Fixed path of a Windows folder instead of a folder macro",
     "Windows may lie elsewhere on other workstations. Replace the beginning of the path by its folder "
     "macro: \\Program Files\\Common Files by %*ProgramFilesCommon% [Win2K+ ONLY]; \\Windows\\System32 and "
     "\\WinNT\\System32 by %*WinSysDir%; \\Windows\\Fonts and \\WinNT\\Fonts by %*Fonts%; any other path "
     "below \\Windows or \\WinNT by %*WinDir%."},
    {Issue::kRegistryUnc, "REGISTRYUNC", IssueCategory::kRegistry, IssueRaiser::kRegistryRules,
     "Registry value holds a UNC path",
     "The application depends on one server. Use a macro or a mapped drive for the path, so that it can be "
     "moved and reached at every site."},
    {Issue::kRegistryExclude, "REGISTRYEXCLUDE", IssueCategory::kRegistry, IssueRaiser::kRegistryRules,
     "Registry key that should not be distributed",
     "Remove the setting: the key describes the capture workstation or its user. Take the key off "
     "RegExclude.dat (Advanced menu, Edit Registry Issue List) if it should be distributed after all."},
    {Issue::kMacroUnc, "MACROUNC", IssueCategory::kMacros, IssueRaiser::kMacroRules,
     "Macro value is a UNC path",
     "The application depends on one server. Use a mapped drive, or a macro that each site sets for itself."},
    {Issue::kMacroShortPath, "MACROSTP", IssueCategory::kMacros, IssueRaiser::kMacroRules,
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

IssueCategory CategoryOf(std::string_view code) {
    const auto* const known =
        std::find_if(kCatalogue.begin(), kCatalogue.end(),
                     [code](const IssueDescription& issue) { return issue.code == code; });
    if (known != kCatalogue.end()) return known->category;
    const auto* const beginning =
        std::find_if(kBeginnings.begin(), kBeginnings.end(),
                     [code](const CodeBeginning& begins) { return code.starts_with(begins.text); });
    return beginning == kBeginnings.end() ? IssueCategory::kMiscellaneous : beginning->category;
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
