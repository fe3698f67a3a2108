// CheckMacroReplacements: paths that name a system folder where a folder macro should stand.
#pragma once

#include <array>
#include <string_view>

namespace zorvel {

// A fixed folder and the macro that stands for it on every workstation.
struct HardCodedFolder {
    std::string_view folder;  // upper case
    std::string_view macro;
};

inline constexpr std::array<HardCodedFolder, 7> HardCodedFolders = {{
    {.folder = R"(\PROGRAM FILES\COMMON FILES)", .macro = "%*ProgramFilesCommon% [Win2K+ ONLY]"},
    {.folder = R"(\WINDOWS\SYSTEM32)", .macro = "%*WinSysDir%"},
    {.folder = R"(\WINNT\SYSTEM32)", .macro = "%*WinSysDir%"},
    {.folder = R"(\WINDOWS\FONTS)", .macro = "%*Fonts%"},
    {.folder = R"(\WINNT\FONTS)", .macro = "%*Fonts%"},
    {.folder = R"(\WINDOWS)", .macro = "%*WinDir%"},
    {.folder = R"(\WINNT)", .macro = "%*WinDir%"},
}};

// True when one of HardCodedFolders begins at one of the first 12 characters of `target`, in any case. One
// that begins further in lies below a longer path, such as a share, and is none of the workstation's own.
bool CheckMacroReplacements(std::string_view target);

}  // namespace zorvel
