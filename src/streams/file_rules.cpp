#include "streams/file_rules.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "issues/issue_catalogue.h"
#include "platform/code_page.h"
#include "streams/folder_macros.h"
#include "streams/issue_rule.h"

namespace zorvel {
namespace {

// The pairs of neighbouring characters of a text, each as one of 64 bits. A text can hold another only when
// it has all of the other's pairs, which rules out nearly every folder without a search.
constexpr std::uint64_t PairsOf(std::string_view text) {
    std::uint64_t pairs = 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        const auto first = static_cast<unsigned char>(text[at - 1]);
        const auto second = static_cast<unsigned char>(text[at]);
        pairs |= std::uint64_t{1} << ((first * 5U + second) % 64U);
    }
    return pairs;
}

// A text that may occur anywhere in a folder.
struct FolderPart {
    constexpr FolderPart() = default;
    constexpr FolderPart(const char* part) : text(part), pairs(PairsOf(text)) {}

    std::string_view text;
    std::uint64_t pairs = 0;
};

// A text that is compared as a whole. Its length and first characters in one number tell nearly all others
// apart.
struct WholeText {
    constexpr WholeText() = default;
    constexpr WholeText(const char* whole) : WholeText(std::string_view(whole)) {}
    constexpr WholeText(std::string_view whole) : text(whole), key(whole.size()) {
        for (const char character : whole.substr(0, 7))
            key = key << 8U | static_cast<unsigned char>(character);
    }
    constexpr bool operator==(const WholeText& other) const {
        return key == other.key && (text.size() <= 7 || text == other.text);
    }

    std::string_view text;
    std::uint64_t key = 0;
};

// A target path in upper case, taken apart.
struct FileTarget {
    std::string_view folder;    // what precedes the last "\"
    WholeText whole_name;       // what follows it, or all
    WholeText whole_extension;  // of the name, without its "."; empty when the only "." begins the name
    std::string_view mode;
    const std::vector<std::string>& custom_names;
    std::uint64_t folder_pairs = PairsOf(folder);
    std::string_view name = whole_name.text;
    std::string_view extension = whole_extension.text;

    bool FolderContains(const FolderPart& part) const {
        return (part.pairs & ~folder_pairs) == 0 && folder.find(part.text) != std::string_view::npos;
    }
    // True for an extension of three characters that occurs in `list`.
    bool ExtensionIn(std::string_view list) const {
        return extension.size() == 3 && list.find(extension) != std::string_view::npos;
    }
};

// A file rule holds when the target has `name` and `extension` (those that are given), when its folder
// contains one of `folder_parts` (if there are any), and when `condition` holds (if any).
struct FileRule {
    Issue issue;
    WholeText name = {};
    WholeText extension = {};
    std::array<FolderPart, 3> folder_parts = {};
    bool (*condition)(const FileTarget& file) = nullptr;

    bool Holds(const FileTarget& file) const {
        if (extension.key != 0 && extension != file.whole_extension) return false;
        if (name.key != 0 && name != file.whole_name) return false;
        if (condition != nullptr && !condition(file)) return false;
        return folder_parts.front().text.empty() ||
               std::any_of(folder_parts.begin(), folder_parts.end(), [&file](const FolderPart& part) {
                   return !part.text.empty() && file.FolderContains(part);
               });
    }
};

// True when the folder holds a folder macro without its asterisk ("%WINDIR%").
bool HasMacroWithoutAsterisk(std::string_view folder) {
    std::size_t open = folder.find('%');
    while (open != std::string_view::npos) {
        const std::size_t close = folder.find('%', open + 1);
        if (close == std::string_view::npos) return false;
        const std::string_view name = folder.substr(open + 1, close - open - 1);
        if (std::any_of(FolderMacroNames.begin(), FolderMacroNames.end(),
                        [name](std::string_view macro) { return EqualIgnoringCase(name, macro); })) {
            return true;
        }
        open = close;
    }
    return false;
}

bool IsCustomName(const FileTarget& file) {
    return std::find(file.custom_names.begin(), file.custom_names.end(), file.name) !=
           file.custom_names.end();
}

// The texts in which an overwriting copy mode, a temporary and a backup extension are looked for.
constexpr std::string_view kOverwritingModes = "Copy Always|Copy If Exists|Copy If Different";
constexpr std::string_view kTemporaryExtensions = "TMP|$$$|###|&&&|(D)|)2(|---|DB$|$DB|W44|U96";
constexpr std::string_view kBackupExtensions = "BAK|BK$|BK!|B~K|BK0|BK1|BK2|BK3|BK4|BK5|BK6|BK7|BK8|BK9";

// Tried from the first; the first that holds gives the answer.
constexpr std::array kFileRules = {
    FileRule{.issue = Issue::kFileOld, .extension = "OLD"},
    FileRule{.issue = Issue::kFileCompressed,
             .condition = [](const FileTarget& file) { return file.name.ends_with('_'); }},
    FileRule{.issue = Issue::kFileSystemDll,
             .extension = "DLL",
             .folder_parts = {R"(\WINDOWS\SYSTEM)", "WINSYSDIR", R"(\WINNT\SYSTEM)"},
             .condition =
                 [](const FileTarget& file) {
                     return kOverwritingModes.find(file.mode) != std::string_view::npos;
                 }},
    FileRule{.issue = Issue::kFilePrefetch, .extension = "PF", .folder_parts = {"PREFETCH"}},
    FileRule{.issue = Issue::kFileTemporary,
             .condition =
                 [](const FileTarget& file) {
                     return (file.extension.size() == 3 && file.name.starts_with('~')) ||
                            file.ExtensionIn(kTemporaryExtensions);
                 }},
    FileRule{.issue = Issue::kFileVirusDefinitions, .name = "USAGE.DAT", .folder_parts = {"VIRUSDEFS"}},
    FileRule{.issue = Issue::kFileIconCache, .folder_parts = {"ICONCACHE.DB"}},
    FileRule{.issue = Issue::kFileTemporaryInternet, .folder_parts = {"TEMPORARY INTERNET FILES"}},
    FileRule{.issue = Issue::kFileLocalTemp, .folder_parts = {R"(LOCAL SETTINGS\TEMP)"}},
    FileRule{.issue = Issue::kFileIeHistory, .folder_parts = {"HISTORY.IE5"}},
    FileRule{.issue = Issue::kFileIeContent, .folder_parts = {"CONTENT.IE5"}},
    FileRule{.issue = Issue::kFilePasswordList, .extension = "PWL"},
    FileRule{.issue = Issue::kFilePerformanceMonitor, .extension = "PML"},
    FileRule{.issue = Issue::kFilePerformanceMonitor, .extension = "PMA"},
    FileRule{.issue = Issue::kFileQuarantine, .extension = "VBN"},
    FileRule{.issue = Issue::kFileExcelRecovery, .extension = "XAR"},
    FileRule{.issue = Issue::kFilePartialDownload,
             .extension = "DAT",
             .condition = [](const FileTarget& file) { return file.name.starts_with("DOWNLOAD"); }},
    FileRule{.issue = Issue::kFilePartialDownload, .extension = "TORRENT"},
    FileRule{.issue = Issue::kFilePartialDownload, .extension = "REALDOWNLOAD"},
    FileRule{.issue = Issue::kFilePartialDownload, .extension = "__INCOMPLETE__"},
    FileRule{.issue = Issue::kFilePartialDownload, .extension = "PART"},
    FileRule{.issue = Issue::kFileBackup,
             .condition = [](const FileTarget& file) { return file.ExtensionIn(kBackupExtensions); }},
    FileRule{.issue = Issue::kFileWindows3Swap,
             .extension = "PAR",
             .condition = [](const FileTarget& file) { return file.name.starts_with("386"); }},
    FileRule{.issue = Issue::kFileRegistryBackup, .extension = "DA0"},
    FileRule{.issue = Issue::kFileUserClasses, .name = "USRCLASS.DAT"},
    FileRule{.issue = Issue::kFileUserClasses, .name = "USRCLASS.DAT.LOG"},
    FileRule{.issue = Issue::kFileUserRegistry, .name = "NTUSER.DAT"},
    FileRule{.issue = Issue::kFilePageFile, .name = "PAGEFILE.SYS"},
    FileRule{.issue = Issue::kFileSwap, .extension = "SWP"},
    FileRule{.issue = Issue::kFileDump,
             .extension = "DMP",
             .condition =
                 [](const FileTarget& file) {
                     return file.name.starts_with("MEMORY") || file.name.starts_with("MINI");
                 }},
    FileRule{.issue = Issue::kFileInstallShieldCleanUp, .name = "_DELIS32.INI"},
    FileRule{.issue = Issue::kFileInstallShieldUninstaller, .name = "ISUNINST.EXE"},
    FileRule{.issue = Issue::kFileWiseUninstaller, .name = "UNWISE.EXE"},
    FileRule{.issue = Issue::kFileSchedulerLog, .name = "SCHEDLGU.TXT"},
    FileRule{.issue = Issue::kFileInstallerRollback, .folder_parts = {"CONFIG.MSI"}},
    FileRule{.issue = Issue::kFileDllCache, .folder_parts = {"DLLCACHE"}},
    FileRule{.issue = Issue::kFilePerformanceData,
             .condition = [](const FileTarget& file) { return file.name.starts_with("PERFLIB_PERFDATA"); }},
    FileRule{.issue = Issue::kFileWindowsTemp, .folder_parts = {R"(\WINNT\TEMP)", R"(\WINDOWS\TEMP)"}},
    FileRule{.issue = Issue::kFileMacroSyntax,
             .condition = [](const FileTarget& file) { return HasMacroWithoutAsterisk(file.folder); }},
    FileRule{.issue = Issue::kFileCustom, .condition = IsCustomName},
};

std::string_view ExtensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

}  // namespace

std::string_view FileValid(std::string_view target, std::string_view mode_text,
                           const std::vector<std::string>& FileIssueList) {
    std::string upper;  // stays empty for the parser's targets, which are in upper case already
    if (!IsUpperCase(target)) {
        upper = UpperCase(target);
        target = upper;
    }
    const std::size_t separator = target.rfind('\\');
    const std::string_view name = target.substr(separator + 1);
    const std::string_view folder = separator == std::string_view::npos ? "" : target.substr(0, separator);
    const FileTarget file{folder, name, ExtensionOf(name), mode_text, FileIssueList};

    const auto* const broken = std::find_if(kFileRules.begin(), kFileRules.end(),
                                            [&file](const FileRule& rule) { return rule.Holds(file); });
    return broken == kFileRules.end() ? kNoIssue : CodeOf(broken->issue);
}

}  // namespace zorvel
