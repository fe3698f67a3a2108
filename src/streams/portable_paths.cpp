#include "streams/portable_paths.h"

#include <algorithm>

#include "platform/code_page.h"

namespace zorvel {

bool CheckMacroReplacements(std::string_view target) {
    constexpr std::size_t kLastStart = 11;  // counted from 0
    for (std::size_t at = target.find('\\'); at <= kLastStart; at = target.find('\\', at + 1)) {
        const std::string_view rest = target.substr(at);
        if (std::any_of(HardCodedFolders.begin(), HardCodedFolders.end(), [rest](const HardCodedFolder& row) {
                return BeginsIgnoringCase(rest, row.folder);
            })) {
            return true;
        }
    }
    return false;
}

}  // namespace zorvel
