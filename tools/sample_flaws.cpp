#include "sample_flaws.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace zorvel::tools {
namespace {

// Copy modes.
constexpr std::uint16_t kAlways = 1;
constexpr std::uint16_t kIfNewer = 8;

// A file for each issue that a file entry can have.
constexpr std::array kFileFlaws = {
    FileFlaw{"FILEPORTABLE", R"(C:\WINNT\Help)", "overview.hlp", kIfNewer},
    FileFlaw{"FILEOLD", "", "readme.old", kAlways},
    FileFlaw{"FILECOMP", R"(C:\Install\Media)", "setup.ex_", kAlways},
    FileFlaw{"FILESYSDLLFLAG", R"(%*WinSysDir%)", "vbctl32.dll", kAlways},
    FileFlaw{"FILEPREFETCH", R"(%*WinDir%\Prefetch)", "SETUP.EXE-19C4A0E1.pf", kAlways},
    FileFlaw{"FILETEMP", "", "~df83c1.tmp", kAlways},
    FileFlaw{"FILEVIRUSDEFS", R"(%*ProgramFilesCommon%\Scanner\VirusDefs)", "usage.dat", kIfNewer},
    FileFlaw{"FILEICONCACHE", R"(%*UserProfile%\IconCache.db)", "cache0.bin", kAlways},
    FileFlaw{"FILETEMPIF", R"(%*UserProfile%\Local Settings\Temporary Internet Files\Q7XK2A0P)",
             "banner[1].gif", kAlways},
    FileFlaw{"FILELOCALTEMP", R"(%*UserProfile%\Local Settings\Temp)", "install.log", kAlways},
    FileFlaw{"FILEIEHIST", R"(%*UserProfile%\Local Settings\History\History.IE5)", "mshist01.bin", kAlways},
    FileFlaw{"FILEIECONT", R"(%*UserProfile%\Local Settings\Content.IE5\9RT2LM4C)", "logo[2].png", kAlways},
    FileFlaw{"FILEPWL", R"(%*WinDir%)", "jashdown.pwl", kAlways},
    FileFlaw{"FILEPERFMON", "", "baseline.pma", kAlways},
    FileFlaw{"FILENAVQ", R"(%*CommonAppData%\Scanner\Quarantine)", "0A3C0000.vbn", kAlways},
    FileFlaw{"FILEEXCELAR", R"(%*AppData%\Sheets)", "recover1.xar", kAlways},
    FileFlaw{"FILEPDOWN", R"(%*Personal%\Downloads)", "manual.pdf.part", kAlways},
    FileFlaw{"FILEBAK", "", "settings.bak", kAlways},
    FileFlaw{"FILEPART", R"(%*WinDir%)", "386spart.par", kAlways},
    FileFlaw{"FILEDA0", R"(%*WinDir%)", "system.da0", kAlways},
    FileFlaw{"FILEUSRCLASS", R"(%*UserProfile%\Local Settings\Application Data)", "UsrClass.dat", kAlways},
    FileFlaw{"FILENTUSER", R"(C:\Documents and Settings\Default User)", "ntuser.dat", kAlways},
    FileFlaw{"FILEPAGEFILE", "C:", "pagefile.sys", kAlways},
    FileFlaw{"FILESWAP", R"(%*WinDir%)", "win386.swp", kAlways},
    FileFlaw{"FILEDUMP", R"(%*WinDir%\Minidump)", "Mini071506-01.dmp", kAlways},
    FileFlaw{"FILEDELIS", R"(%*WinDir%)", "_delis32.ini", kAlways},
    FileFlaw{"FILEUNINST", R"(%*WinDir%)", "IsUninst.exe", kIfNewer},
    FileFlaw{"FILEUNWISE", "", "unwise.exe", kAlways},
    FileFlaw{"FILESCHEDLOG", R"(%*WinDir%)", "SchedLgU.Txt", kAlways},
    FileFlaw{"FILECONFIGMSI", R"(C:\Config.Msi)", "3f2a1.rbs", kAlways},
    FileFlaw{"FILEDLLCACHE", R"(%*WinSysDir%\dllcache)", "calc.exe", kIfNewer},
    FileFlaw{"FILEPERFDATA", R"(%*WinSysDir%)", "Perflib_Perfdata_2f4.dat", kAlways},
    FileFlaw{"FILEWINTEMP", R"(C:\WINDOWS\Temp)", "setup.log", kAlways},
    FileFlaw{"FILEMACROSYTAX", R"(%WinSysDir%)", "gridview.ocx", kIfNewer},
    FileFlaw{"FILECUSTOM", "", "Thumbs.db", kAlways}};

constexpr Flaw File(std::size_t row) {
    return static_cast<Flaw>(static_cast<std::size_t>(Flaw::kFirstFile) + row);
}

// Flaws that come again and again, in the order in which they are dealt once all flaws have been.
constexpr std::array kCommon = {Flaw::kNoNotes,
                                File(1),
                                Flaw::kNameWithBlanks,
                                File(0),
                                Flaw::kNoDescription,
                                File(5),
                                Flaw::kRegistryExclude,
                                File(17),
                                Flaw::kNoAssociations,
                                File(3),
                                Flaw::kFixedPath,
                                File(34),
                                Flaw::kMacroUnc,
                                Flaw::kRegistryUnc,
                                File(27),
                                Flaw::kFixedWorkingDirectory};

// So many flaws are dealt from one turn of all flaws to the next.
constexpr std::size_t kRound = 240;

}  // namespace

std::span<const FileFlaw> FileFlaws() {
    return kFileFlaws;
}

std::size_t FlawCount() {
    return static_cast<std::size_t>(Flaw::kFirstFile) + FileFlaws().size();
}

FlawDealer::FlawDealer(std::size_t applications) : applications_(applications), step_(1) {
    // A step near the golden section that has no divisor in common with the number of applications visits
    // each once, neighbours far apart.
    step_ = std::max<std::size_t>(1, applications * 618 / 1000);
    while (std::gcd(step_, applications) != 1)
        ++step_;
}

std::vector<Flaw> FlawDealer::FlawsOf(std::size_t application) const {
    const std::size_t place = application % applications_ * step_ % applications_;
    const std::size_t first = place + (place % 4 == 0 ? 0 : 1);
    const std::size_t count = place % 4 == 0 ? 2 : place % 4 == 3 ? 0 : 1;
    std::vector<Flaw> flaws;
    for (std::size_t dealt = first; dealt < first + count; ++dealt) {
        const std::size_t turn = dealt % kRound;
        flaws.push_back(turn < FlawCount() ? static_cast<Flaw>(turn)
                                           : kCommon[(turn - FlawCount()) % kCommon.size()]);
    }
    return flaws;
}

}  // namespace zorvel::tools
