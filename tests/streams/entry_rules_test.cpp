#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "streams/macro_rules.h"
#include "streams/portable_paths.h"
#include "streams/registry_rules.h"

namespace zorvel {
namespace {

TEST(RegistryRules, NameTheFirstIssueOfAValue) {
    const std::vector<std::string> exclusions = {R"(HKEY_LOCAL_MACHINE\SOFTWARE\MICROSOFT\EXPLORER)",
                                                 R"(HKEY_CURRENT_USER\SOFTWARE\POLICIES)"};
    const struct {
        std::string_view key, data, code;
    } cases[] = {
        {R"(HKEY_CURRENT_USER\Software\Policies)", R"(\\SERVER\SHARE\APP)", "REGISTRYUNC"},
        {R"(HKEY_CURRENT_USER\Software\Policies\Microsoft)", "1", "REGISTRYEXCLUDE"},
        {R"(HKEY_CURRENT_USER\Software\Policies)", "", "REGISTRYEXCLUDE"},
        {R"(HKEY_LOCAL_MACHINE\HKEY_CURRENT_USER\SOFTWARE\POLICIES)", "1", "OK"},
        {R"(HKEY_CURRENT_USER\Software\Policie)", "1", "OK"},
        {R"(HKEY_CURRENT_USER\Software\PolicieS2)", R"(\SERVER)", "REGISTRYEXCLUDE"},
        {"", "", "OK"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(RegistryValid(row.key, R"(\\name)", row.data, exclusions), row.code)
            << row.key << ", " << row.data;
    }
}

TEST(MacroRules, NameTheFirstIssueOfAMacro) {
    const struct {
        std::string_view name, value, code;
    } cases[] = {
        {"TARGET_PATH", R"(\\SERVER\APPS)", "MACROUNC"},
        {"TARGET_PATH", R"(C:\PROGRAMFILES\MYAPP)", "OK"},
        {"TARGET_PATH", R"(\SERVER)", "OK"},
        {"SHORT_TARGET_PATH", R"(\\SERVER\APPS)", "OK"},
        {"Short_Target_Path", R"(C:\PROGRAMFILES\MYAPP)", "MACROSTP"},
        {"SHORT_TARGET_PATH", R"(C:\PROGRA~1\MYAPP)", "OK"},
        {"SHORT_TARGET_PATH", R"(C:\PROGRA~1\LONGNAME1)", "MACROSTP"},
        {"SHORT_TARGET_PATH", R"(C:\PROGRA~1\LONGNAME.EXE)", "OK"},
        {"SHORT_TARGET_PATH", R"(C:\PROGRA~1\LONGNAME1.EXE)", "MACROSTP"},
        {"SHORT_TARGET_PATH", R"(C:\A.B\12345678)", "OK"},
        {"SHORT_TARGET_PATH", "NINECHARS", "MACROSTP"},
        {"SHORT_TARGET_PATH", R"(C:\NAME.LONG\)", "MACROSTP"},
        {"SHORT_TARGET_PATH", R"(C:\)", "OK"},
        {"SHORT_TARGET_PATH", "", "OK"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(MacroValid(row.name, row.value), row.code) << row.name << ", " << row.value;
}

TEST(PortablePaths, AreThoseWithoutASystemFolderNearTheirBeginning) {
    const struct {
        std::string_view target;
        bool fixed;
    } cases[] = {
        {R"(C:\WINDOWS\SYSTEM32\X.DLL)", true},
        {R"(c:\winnt\x.ini)", true},
        {R"(C:\Program Files\Common Files\a)", true},
        {R"(C:\Program Files\a)", false},
        {R"(\\SERVER\SHARE\WINDOWS\X.DLL)", false},
        {R"(%*WinSysDir%\X.DLL)", false},
        {R"(C:\WINDOWSX)", true},
        {R"(\WINDOWS)", true},
        {R"(WINDOWS\A)", false},
        {R"(C:\45678901\WINNT)", true},    // begins at character 12
        {R"(C:\456789012\WINNT)", false},  // begins at character 13
        {"", false},
    };
    for (const auto& row : cases)
        EXPECT_EQ(CheckMacroReplacements(row.target), row.fixed) << row.target;
}

}  // namespace
}  // namespace zorvel
