#include "streams/file_rules.h"

#include <algorithm>
#include <array>
#include <cstdint>

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

// A target path in upper case, taken apart.
struct FileTarget {
    std::string_view folder;     // what precedes the last "\"
    std::string_view name;       // what follows it, or all
    std::string_view extension;  // of the name, without its "."; empty when the only "." begins the name
    std::string_view mode;
    const std::vector<std::string>& custom_names;
    std::uint64_t folder_pairs = PairsOf(folder);

    bool FolderContains(const FolderPart& part) const {
        return (part.pairs & ~folder_pairs) == 0 && folder.find(part.text) != std::string_view::npos;
    }
    // True for an extension of three characters that occurs in `list`.
    bool ExtensionIn(std::string_view list) const {
        return extension.size() == 3 && list.find(extension) != std::string_view::npos;
    }
};

// A file rule holds when the folder contains one of `folder_parts` (if there are any) and `condition` holds
// (if any).
struct FileRule {
    std::string_view code;
    std::array<FolderPart, 3> folder_parts;
    bool (*condition)(const FileTarget& file) = nullptr;

    bool Holds(const FileTarget& file) const {
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
    FileRule{"FILEOLD", {}, [](const FileTarget& file) { return file.extension == "OLD"; }},
    FileRule{"FILECOMP", {}, [](const FileTarget& file) { return file.name.ends_with('_'); }},
    FileRule{"FILESYSDLLFLAG",
             {R"(\WINDOWS\SYSTEM)", "WINSYSDIR", R"(\WINNT\SYSTEM)"},
             [](const FileTarget& file) {
                 return file.extension == "DLL" &&
                        kOverwritingModes.find(file.mode) != std::string_view::npos;
             }},
    FileRule{"FILEPREFETCH", {"PREFETCH"}, [](const FileTarget& file) { return file.extension == "PF"; }},
    FileRule{"FILETEMP",
             {},
             [](const FileTarget& file) {
                 return (file.extension.size() == 3 && file.name.starts_with('~')) ||
                        file.ExtensionIn(kTemporaryExtensions);
             }},
    FileRule{"FILEVIRUSDEFS", {"VIRUSDEFS"}, [](const FileTarget& file) { return file.name == "USAGE.DAT"; }},
    FileRule{"FILEICONCACHE", {"ICONCACHE.DB"}},
    FileRule{"FILETEMPIF", {"TEMPORARY INTERNET FILES"}},
    FileRule{"FILELOCALTEMP", {R"(LOCAL SETTINGS\TEMP)"}},
    FileRule{"FILEIEHIST", {"HISTORY.IE5"}},
    FileRule{"FILEIECONT", {"CONTENT.IE5"}},
    FileRule{"FILEPWL", {}, [](const FileTarget& file) { return file.extension == "PWL"; }},
    FileRule{"FILEPERFMON",
             {},
             [](const FileTarget& file) { return file.extension == "PML" || file.extension == "PMA"; }},
    FileRule{"FILENAVQ", {}, [](const FileTarget& file) { return file.extension == "VBN"; }},
    FileRule{"FILEEXCELAR", {}, [](const FileTarget& file) { return file.extension == "XAR"; }},
    FileRule{"FILEPDOWN",
             {},
             [](const FileTarget& file) {
                 return (file.extension == "DAT" && file.name.starts_with("DOWNLOAD")) ||
                        file.extension == "TORRENT" || file.extension == "REALDOWNLOAD" ||
                        file.extension == "__INCOMPLETE__" || file.extension == "PART";
             }},
    FileRule{"FILEBAK", {}, [](const FileTarget& file) { return file.ExtensionIn(kBackupExtensions); }},
    FileRule{"FILEPART",
             {},
             [](const FileTarget& file) { return file.extension == "PAR" && file.name.starts_with("386"); }},
    FileRule{"FILEDA0", {}, [](const FileTarget& file) { return file.extension == "DA0"; }},
    FileRule{"FILEUSRCLASS",
             {},
             [](const FileTarget& file) {
                 return file.name == "USRCLASS.DAT" || file.name == "USRCLASS.DAT.LOG";
             }},
    FileRule{"FILENTUSER", {}, [](const FileTarget& file) { return file.name == "NTUSER.DAT"; }},
    FileRule{"FILEPAGEFILE", {}, [](const FileTarget& file) { return file.name == "PAGEFILE.SYS"; }},
    FileRule{"FILESWAP", {}, [](const FileTarget& file) { return file.extension == "SWP"; }},
    FileRule{"FILEDUMP",
             {},
             [](const FileTarget& file) {
                 return file.extension == "DMP" &&
                        (file.name.starts_with("MEMORY") || file.name.starts_with("MINI"));
             }},
    FileRule{"FILEDELIS", {}, [](const FileTarget& file) { return file.name == "_DELIS32.INI"; }},
    FileRule{"FILEUNINST", {}, [](const FileTarget& file) { return file.name == "ISUNINST.EXE"; }},
    FileRule{"FILEUNWISE", {}, [](const FileTarget& file) { return file.name == "UNWISE.EXE"; }},
    FileRule{"FILESCHEDLOG", {}, [](const FileTarget& file) { return file.name == "SCHEDLGU.TXT"; }},
    FileRule{"FILECONFIGMSI", {"CONFIG.MSI"}},
    FileRule{"FILEDLLCACHE", {"DLLCACHE"}},
    FileRule{
        "FILEPERFDATA", {}, [](const FileTarget& file) { return file.name.starts_with("PERFLIB_PERFDATA"); }},
    FileRule{"FILEWINTEMP", {R"(\WINNT\TEMP)", R"(\WINDOWS\TEMP)"}},
    FileRule{
        "FILEMACROSYTAX", {}, [](const FileTarget& file) { return HasMacroWithoutAsterisk(file.folder); }},
    FileRule{"FILECUSTOM", {}, IsCustomName},
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
    return broken == kFileRules.end() ? kNoIssue : broken->code;
}

std::vector<std::string_view> AllFileIssueCodes() {
    std::vector<std::string_view> codes;
    codes.reserve(kFileRules.size());
    for (const FileRule& rule : kFileRules)
        codes.push_back(rule.code);
    return codes;
}

}  // namespace zorvel
