// The log viewer, frmViewLog, without its window.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "shell/services.h"

namespace zorvel {

class LogView {
  public:
    // Loads an RTF file, given by its path text, into the window.
    using ShowDocument = std::function<void(std::string_view path)>;

    explicit LogView(const Services& services) : services_(services) {}

    // Opens the viewer: commits the log, copies it, goes on with it, and shows the copy as rich text. The
    // status line tells of it; the window shows the hourglass meanwhile. False when the log could not be
    // copied or shown: the user was told why, and the window stays away.
    bool Open(const ShowDocument& show);

    // Converts the copy of the log to rich text. Errors are shown and logged as a warning; what was written
    // before one stays.
    void GenerateRTF();

    // The path text of the rich text.
    std::string RTFFileName() const { return services_.files.Path("TempData\\Zorvel.rt$"); }

  private:
    void CopyLog();
    std::string CopyName() const { return services_.files.Path("TempData\\Zorvel.$$$"); }

    const Services& services_;
};

}  // namespace zorvel
