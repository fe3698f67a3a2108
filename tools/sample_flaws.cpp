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
    FileFlaw{"FILEPORTABLE", R"(C:\WINNT\Help)", "overview.hlp", kIfNewer, true},
    FileFlaw{"FILEOLD", "", "readme.old", kAlways, true},
    FileFlaw{"FILECOMP", R"(C:\Install\Media)", "setup.ex_", kAlways, true},
    FileFlaw{"FILESYSDLLFLAG", R"(%*WinSysDir%)", "vbctl32.dll", kAlways, true},
    FileFlaw{"FILEPREFETCH", R"(%*WinDir%\Prefetch)", "SETUP.EXE-19C4A0E1.pf", kAlways, false},
    FileFlaw{"FILETEMP", "", "~df83c1.tmp", kAlways, true},
    FileFlaw{"FILEVIRUSDEFS", R"(%*ProgramFilesCommon%\Scanner\VirusDefs)", "usage.dat", kIfNewer, false},
    FileFlaw{"FILEICONCACHE", R"(%*UserProfile%\IconCache.db)", "cache0.bin", kAlways, false},
    FileFlaw{"FILETEMPIF", R"(%*UserProfile%\Local Settings\Temporary Internet Files\Q7XK2A0P)",
             "banner[1].gif", kAlways, true},
    FileFlaw{"FILELOCALTEMP", R"(%*UserProfile%\Local Settings\Temp)", "install.log", kAlways, false},
    FileFlaw{"FILEIEHIST", R"(%*UserProfile%\Local Settings\History\History.IE5)", "mshist01.bin", kAlways,
             false},
    FileFlaw{"FILEIECONT", R"(%*UserProfile%\Local Settings\Content.IE5\9RT2LM4C)", "logo[2].png", kAlways,
             false},
    FileFlaw{"FILEPWL", R"(%*WinDir%)", "jashdown.pwl", kAlways, false},
    FileFlaw{"FILEPERFMON", "", "baseline.pma", kAlways, false},
    FileFlaw{"FILENAVQ", R"(%*CommonAppData%\Scanner\Quarantine)", "0A3C0000.vbn", kAlways, false},
    FileFlaw{"FILEEXCELAR", R"(%*AppData%\Sheets)", "recover1.xar", kAlways, false},
    FileFlaw{"FILEPDOWN", R"(%*Personal%\Downloads)", "manual.pdf.part", kAlways, false},
    FileFlaw{"FILEBAK", "", "settings.bak", kAlways, true},
    FileFlaw{"FILEPART", R"(%*WinDir%)", "386spart.par", kAlways, false},
    FileFlaw{"FILEDA0", R"(%*WinDir%)", "system.da0", kAlways, false},
    FileFlaw{"FILEUSRCLASS", R"(%*UserProfile%\Local Settings\Application Data)", "UsrClass.dat", kAlways,
             false},
    FileFlaw{"FILENTUSER", R"(C:\Documents and Settings\Default User)", "ntuser.dat", kAlways, false},
    FileFlaw{"FILEPAGEFILE", "C:", "pagefile.sys", kAlways, false},
    FileFlaw{"FILESWAP", R"(%*WinDir%)", "win386.swp", kAlways, false},
    FileFlaw{"FILEDUMP", R"(%*WinDir%\Minidump)", "Mini071506-01.dmp", kAlways, false},
    FileFlaw{"FILEDELIS", R"(%*WinDir%)", "_delis32.ini", kAlways, false},
    FileFlaw{"FILEUNINST", R"(%*WinDir%)", "IsUninst.exe", kIfNewer, false},
    FileFlaw{"FILEUNWISE", "", "unwise.exe", kAlways, false},
    FileFlaw{"FILESCHEDLOG", R"(%*WinDir%)", "SchedLgU.Txt", kAlways, false},
    FileFlaw{"FILECONFIGMSI", R"(C:\Config.Msi)", "3f2a1.rbs", kAlways, false},
    FileFlaw{"FILEDLLCACHE", R"(%*WinSysDir%\dllcache)", "calc.exe", kIfNewer, false},
    FileFlaw{"FILEPERFDATA", R"(%*WinSysDir%)", "Perflib_Perfdata_2f4.dat", kAlways, false},
    FileFlaw{"FILEWINTEMP", R"(C:\WINDOWS\Temp)", "setup.log", kAlways, false},
    FileFlaw{"FILEMACROSYTAX", R"(%WinSysDir%)", "gridview.ocx", kIfNewer, false},
    FileFlaw{"FILECUSTOM", "", "Thumbs.db", kAlways, false}};

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
                                Flaw::kNoNotes,
                                File(17),
                                Flaw::kNoAssociations,
                                File(0),
                                File(3),
                                Flaw::kFixedPath,
                                File(34),
                                Flaw::kMacroUnc,
                                File(1),
                                Flaw::kRegistryUnc,
                                File(27),
                                Flaw::kFixedWorkingDirectory,
                                Flaw::kNoNotes,
                                File(5),
                                Flaw::kNoDescription,
                                File(26),
                                File(8)};

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
