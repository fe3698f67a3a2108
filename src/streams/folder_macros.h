// The names of the launcher's folder macros, which an Application object writes as %*Name%.
#pragma once

#include <array>
#include <string_view>

namespace zorvel {

inline constexpr std::array<std::string_view, 35> FolderMacroNames = {"AppData",         "CommonDesktop",
                                                                      "CommonPrograms",  "CommonStartMenu",
                                                                      "CommonStartup",   "CommonWinDesktop",
                                                                      "Cookies",         "Desktop",
                                                                      "Favorites",       "Fonts",
                                                                      "History",         "NetHood",
                                                                      "Personal",        "PrintHood",
                                                                      "Programs",        "Recent",
                                                                      "SendTo",          "StartMenu",
                                                                      "Startup",         "TempDir",
                                                                      "Templates",       "WinDesktop",
                                                                      "WinDir",          "WinDisk",
                                                                      "WinSysDir",       "WinSysDisk",
                                                                      "AdminTools",      "CommonAdminTools",
                                                                      "CommonAppData",   "CommonDocuments",
                                                                      "CommonTemplates", "MyPictures",
                                                                      "ProgramFiles",    "ProgramFilesCommon",
                                                                      "UserProfile"};

}  // namespace zorvel
