#include "streams/file_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace zorvel {
namespace {

constexpr std::string_view kNewer = "Copy If Newer";

TEST(FileRules, NameTheFirstIssueOfATarget) {
    const std::vector<std::string> custom = {"UNWANTED.EXE", "GAME.COM"};
    const struct {
        std::string_view target, code;
        std::string_view mode = "Copy Always";
    } cases[] = {
        {R"(C:\PROGRAM FILES\APP\README.OLD)", "FILEOLD"},
        {R"(C:\WINNT\TEMP\~A.OLD)", "FILEOLD"},
        {R"(C:\APP\SETUP.EX_)", "FILECOMP"},
        {"SETUP_", "FILECOMP"},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", "FILESYSDLLFLAG"},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", "FILESYSDLLFLAG", "Copy If Exists"},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", "FILESYSDLLFLAG", "Copy If Different"},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", "FILESYSDLLFLAG", ""},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", "OK", kNewer},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", "OK", "?"},
        {R"(C:\WINDOWS\SYSTEM32\MSVCRT.EXE)", "OK"},
        {R"(%*WinSysDir%\a.dll)", "FILESYSDLLFLAG"},
        {R"(C:\WINNT\SYSTEM\A.DLL)", "FILESYSDLLFLAG"},
        {R"(WINDOWS\SYSTEM\A.DLL)", "OK"},
        {R"(C:\WINDOWS\PREFETCH\A.PF)", "FILEPREFETCH"},
        {R"(C:\WINDOWS\A.PF)", "OK"},
        {R"(C:\TEMP\~DF1234.TMP)", "FILETEMP"},
        {R"(C:\TEMP\~DF1234.DOC)", "FILETEMP"},
        {R"(C:\TEMP\~DF1234.HTML)", "OK"},
        {R"(C:\A.$$$)", "FILETEMP"},
        {R"(C:\A.)2()", "FILETEMP"},
        {R"(C:\A.W96)", "OK"},
        {R"(C:\A.MP|)", "FILETEMP"},
        {R"(C:\DATA\REPORT.~1)", "OK"},
        {R"(C:\A.TMP.TXT)", "OK"},
        {R"(C:\VIRUSDEFS\USAGE.DAT)", "FILEVIRUSDEFS"},
        {R"(C:\X\USAGE.DAT)", "OK"},
        {R"(C:\ICONCACHE.DB\A)", "FILEICONCACHE"},
        {R"(C:\ICONCACHE.DB)", "OK"},
        {R"(C:\Temporary Internet Files\a.htm)", "FILETEMPIF"},
        {R"(C:\LOCAL SETTINGS\TEMP\A)", "FILELOCALTEMP"},
        {R"(C:\HISTORY.IE5\A)", "FILEIEHIST"},
        {R"(C:\CONTENT.IE5\A)", "FILEIECONT"},
        {R"(C:\USER.PWL)", "FILEPWL"},
        {R"(C:\A.PML)", "FILEPERFMON"},
        {R"(C:\A.PMA)", "FILEPERFMON"},
        {R"(C:\A.VBN)", "FILENAVQ"},
        {R"(C:\A.XAR)", "FILEEXCELAR"},
        {R"(C:\DOWNLOAD1.DAT)", "FILEPDOWN"},
        {R"(C:\DOWNLOAD1.DATA)", "OK"},
        {R"(C:\A.TORRENT)", "FILEPDOWN"},
        {R"(C:\A.REALDOWNLOAD)", "FILEPDOWN"},
        {R"(C:\A.__INCOMPLETE__)", "FILECOMP"},
        {R"(C:\A.PART)", "FILEPDOWN"},
        {R"(C:\A.BAK)", "FILEBAK"},
        {R"(C:\A.B~K)", "FILEBAK"},
        {R"(C:\A.BK9)", "FILEBAK"},
        {R"(C:\A.BK3)", "FILEBAK"},
        {R"(C:\A.U96)", "FILETEMP"},
        {R"(C:\A.BK)", "OK"},
        {R"(C:\386SPART.PAR)", "FILEPART"},
        {R"(C:\SPART.PAR)", "OK"},
        {R"(C:\SYSTEM.DA0)", "FILEDA0"},
        {R"(C:\USRCLASS.DAT)", "FILEUSRCLASS"},
        {R"(C:\USRCLASS.DAT.LOG)", "FILEUSRCLASS"},
        {R"(C:\Documents and Settings\Someone\ntuser.dat)", "FILENTUSER"},
        {R"(C:\PAGEFILE.SYS)", "FILEPAGEFILE"},
        {"pagefile.sys", "FILEPAGEFILE"},
        {R"(C:\WIN386.SWP)", "FILESWAP"},
        {R"(C:\MEMORY.DMP)", "FILEDUMP"},
        {R"(C:\MINI061116.DMP)", "FILEDUMP"},
        {R"(C:\OTHER.DMP)", "OK"},
        {R"(C:\_DELIS32.INI)", "FILEDELIS"},
        {R"(C:\ISUNINST.EXE)", "FILEUNINST"},
        {R"(C:\UNWISE.EXE)", "FILEUNWISE"},
        {R"(C:\SCHEDLGU.TXT)", "FILESCHEDLOG"},
        {R"(C:\CONFIG.MSI\A)", "FILECONFIGMSI"},
        {R"(C:\DLLCACHE\A.EXE)", "FILEDLLCACHE"},
        {R"(C:\PERFLIB_PERFDATA_1A0.X)", "FILEPERFDATA"},
        {R"(C:\WINNT\TEMP\X.LOG)", "FILEWINTEMP"},
        {R"(C:\WINNT\TEMPLATES\X.DOT)", "FILEWINTEMP"},
        {R"(C:\WINDOWS\TEMP\X.LOG)", "FILEWINTEMP"},
        {R"(D:\MYWINNT\TEMPLATES\X.DOT)", "OK"},
        {R"(C:\%WINDIR%\NOTEPAD.EXE)", "FILEMACROSYTAX"},
        {R"(%UserProfile%\A.EXE)", "FILEMACROSYTAX"},
        {R"(100%%AppData%\A.EXE)", "FILEMACROSYTAX"},
        {R"(%*WinDir%Fonts%\A.EXE)", "FILEMACROSYTAX"},
        {R"(%*WinDir%\NOTEPAD.EXE)", "OK"},
        {R"(%WINDIR\NOTEPAD.EXE)", "OK"},
        {R"(C:\X\%WINDIR%)", "OK"},
        {R"(C:\X\Unwanted.exe)", "FILECUSTOM"},
        {"GAME.COM", "FILECUSTOM"},
        {R"(C:\X\UNWANTED.EXE2)", "OK"},
        {R"(C:\X\.OLD)", "OK"},
        {R"(C:\X\)", "OK"},
        {"", "OK"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(FileValid(row.target, row.mode, custom), row.code) << row.target << ", mode " << row.mode;
    }
}

}  // namespace
}  // namespace zorvel
