#include "search_streams.h"

#include <array>
#include <string_view>

#include "stream_builder.h"

namespace zorvel::tools {

std::string StreamWithoutMatch(std::size_t size, std::size_t number) {
    constexpr std::array<std::string_view, 8> kExtensions = {".dll", ".txt", ".hlp",    ".docx",
                                                             ".ini", ".gif", ".config", ".regs"};
    StreamBuilder builder;
    for (std::size_t entry = number * 7; builder.bytes().size() < size; ++entry) {
        const std::string digits = std::to_string(entry % 5000);
        const std::string_view extension = kExtensions.at(entry % kExtensions.size());
        builder.FileCopy(
            "\\\\SERVER\\SYS\\PUBLIC\\APPS\\OFFICE\\FILE" + digits + std::string(extension),
            "C:\\Program Files\\Office Suite 4.2\\Shared Components\\File" + digits + std::string(extension));
        builder.RegistryValue("HKEY_LOCAL_MACHINE\\Software\\Vendor\\Office Suite\\10.0." + digits, "Path",
                              "%TARGET_PATH%\\Component" + digits);
    }
    return builder.bytes();
}

}  // namespace zorvel::tools
