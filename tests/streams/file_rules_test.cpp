#include "streams/file_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace zorvel {
namespace {

TEST(FileRules, NameTheFirstIssueOfATarget) {
    const std::vector<std::string> custom = {"UNWANTED.EXE", "GAME.COM"};
    const struct {
        std::string_view code;
        std::vector<std::string_view> targets;
        std::string_view mode = "Copy Always";
    } cases[] = {
        {"FILEOLD", {R"(C:\PROGRAM FILES\APP\README.OLD)", R"(C:\WINNT\TEMP\~A.OLD)"}},
        {"FILECOMP", {R"(C:\APP\SETUP.EX_)", "SETUP_", R"(C:\A.__INCOMPLETE__)"}},
        {"FILESYSDLLFLAG",
         {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)", R"(%*WinSysDir%\a.dll)", R"(C:\WINNT\SYSTEM\A.DLL)"}},
        {"FILESYSDLLFLAG", {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)"}, "Copy If Exists"},
        {"FILESYSDLLFLAG", {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)"}, "Copy If Different"},
        {"FILESYSDLLFLAG", {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)"}, ""},
        {"OK", {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)"}, "Copy If Newer"},
        {"OK", {R"(C:\WINDOWS\SYSTEM32\MSVCRT.DLL)"}, "?"},
        {"FILEPREFETCH", {R"(C:\WINDOWS\PREFETCH\A.PF)"}},
        {"FILETEMP",
         {R"(C:\TEMP\~DF1234.TMP)", R"(C:\TEMP\~DF1234.DOC)", R"(C:\A.$$$)", R"(C:\A.)2()", R"(C:\A.MP|)",
          R"(C:\A.U96)"}},
        {"FILEVIRUSDEFS", {R"(C:\VIRUSDEFS\USAGE.DAT)"}},
        {"FILEICONCACHE", {R"(C:\ICONCACHE.DB\A)"}},
        {"FILETEMPIF", {R"(C:\Temporary Internet Files\a.htm)"}},
        {"FILELOCALTEMP", {R"(C:\LOCAL SETTINGS\TEMP\A)"}},
        {"FILEIEHIST", {R"(C:\HISTORY.IE5\A)"}},
        {"FILEIECONT", {R"(C:\CONTENT.IE5\A)"}},
        {"FILEPWL", {R"(C:\USER.PWL)"}},
        {"FILEPERFMON", {R"(C:\A.PML)", R"(C:\A.PMA)"}},
        {"FILENAVQ", {R"(C:\A.VBN)"}},
        {"FILEEXCELAR", {R"(C:\A.XAR)"}},
        {"FILEPDOWN", {R"(C:\DOWNLOAD1.DAT)", R"(C:\A.TORRENT)", R"(C:\A.REALDOWNLOAD)", R"(C:\A.PART)"}},
        {"FILEBAK", {R"(C:\A.BAK)", R"(C:\A.B~K)", R"(C:\A.BK9)", R"(C:\A.BK3)"}},
        {"FILEPART", {R"(C:\386SPART.PAR)"}},
        {"FILEDA0", {R"(C:\SYSTEM.DA0)"}},
        {"FILEUSRCLASS", {R"(C:\USRCLASS.DAT)", R"(C:\USRCLASS.DAT.LOG)"}},
        {"FILENTUSER", {R"(C:\Documents and Settings\Someone\ntuser.dat)"}},
        {"FILEPAGEFILE", {R"(C:\PAGEFILE.SYS)", "pagefile.sys"}},
        {"FILESWAP", {R"(C:\WIN386.SWP)"}},
        {"FILEDUMP", {R"(C:\MEMORY.DMP)", R"(C:\MINI061116.DMP)"}},
        {"FILEDELIS", {R"(C:\_DELIS32.INI)"}},
        {"FILEUNINST", {R"(C:\ISUNINST.EXE)"}},
        {"FILEUNWISE", {R"(C:\UNWISE.EXE)"}},
        {"FILESCHEDLOG", {R"(C:\SCHEDLGU.TXT)"}},
        {"FILECONFIGMSI", {R"(C:\CONFIG.MSI\A)"}},
        {"FILEDLLCACHE", {R"(C:\DLLCACHE\A.EXE)"}},
        {"FILEPERFDATA", {R"(C:\PERFLIB_PERFDATA_1A0.X)"}},
        {"FILEWINTEMP",
         {R"(C:\WINNT\TEMP\X.LOG)", R"(C:\WINNT\TEMPLATES\X.DOT)", R"(C:\WINDOWS\TEMP\X.LOG)"}},
        {"FILEMACROSYTAX",
         {R"(C:\%WINDIR%\NOTEPAD.EXE)", R"(%UserProfile%\A.EXE)", R"(100%%AppData%\A.EXE)",
          R"(%*WinDir%Fonts%\A.EXE)"}},
        {"FILECUSTOM", {R"(C:\X\Unwanted.exe)", "GAME.COM"}},
        {"OK",
         {R"(C:\WINDOWS\SYSTEM32\MSVCRT.EXE)", R"(WINDOWS\SYSTEM\A.DLL)", R"(C:\WINDOWS\A.PF)",
          R"(C:\ICONCACHE.DB)", R"(D:\MYWINNT\TEMPLATES\X.DOT)"}},
        {"OK",
         {R"(C:\TEMP\~DF1234.HTML)", R"(C:\A.W96)", R"(C:\DATA\REPORT.~1)", R"(C:\A.TMP.TXT)",
          R"(C:\DOWNLOAD1.DATA)", R"(C:\A.BK)"}},
        {"OK",
         {R"(C:\X\USAGE.DAT)", R"(C:\SPART.PAR)", R"(C:\OTHER.DMP)", R"(C:\X\UNWANTED.EXE2)", R"(C:\X\.OLD)",
          R"(C:\X\)", ""}},
        {"OK", {R"(%*WinDir%\NOTEPAD.EXE)", R"(%WINDIR\NOTEPAD.EXE)", R"(C:\X\%WINDIR%)"}},
    };
    for (const auto& row : cases) {
        for (const std::string_view target : row.targets)
            EXPECT_EQ(FileValid(target, row.mode, custom), row.code) << target << ", mode " << row.mode;
    }
}

}  // namespace
}  // namespace zorvel
