#include "database/flag_decoder.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/hex.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

struct FlagRow {
    std::uint32_t mask;
    std::string_view assignment;
};

// In the order in which the assignments are listed: of two rows for one column the later wins.
constexpr std::array<FlagRow, 19> kApplicationFlagTable = {{
    {0x800000, "AFDisconnectable=0,"},
    {0x1000000, "AFWaitOnForceRun=1,"},
    {0x8000, "AFShowProgress=0,"},
    {0x1000, "AFDistributeAlways=1,"},
    {0x4000, "AFPromptBeforeDist=1,"},
    {0x20000, "AFPromptForReboot=0,"},
    {0x80, "AFInstallOnly=1,"},
    {0x100, "AFRunOnce=1,"},
    {0x20000000, "AFForceRunIfWS=1,"},
    {0x40, "AFRun16BitSeparate=1,"},
    {0x2, "AFClearUpNetwork=0,"},
    {0x200000, "AFPreInstallSched=1,"},
    {0x800, "AFRebootType='Never',"},
    {0x200, "AFRebootType='Always',"},
    {0x400000, "AFExeSecLevel='Unsecure System User',"},
    {0x40000, "AFExeSecLevel='Secure System User',"},
    {0x10000, "AFRunOption='Hidden',"},
    {0x4, "AFRunOption='Maximized',"},
    {0x1, "AFRunOption='Minimized',"},
}};

constexpr std::array<FlagRow, 7> kDefaultAssociationFlagTable = {{
    {0x100, "DAFForceCache=1,"},
    {0x80, "DAFQuickLaunch=1,"},
    {0x20, "DAFSysTray=1,"},
    {0x8, "DAFDesktop=1,"},
    {0x4, "DAFStartMenu=1,"},
    {0x2, "DAFForceRun=1,"},
    {0x1, "DAFAppLaunch=1,"},
}};

// Digits up to the first character that is none, as 32 bits.
std::uint32_t HexValue(std::string_view digits) {
    std::uint64_t bits = 0;
    for (const char character : digits) {
        if (character == ' ') continue;
        const std::optional<unsigned> digit = HexDigitValue(character);
        if (!digit) break;
        bits = bits << 4 | *digit;
        if (bits > 0xFFFFFFFF) throw Error(errors::kOverflow).With("flags '&h" + std::string(digits) + "'");
    }
    return static_cast<std::uint32_t>(bits);
}

std::uint32_t FlagBits(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos) return 0;
    const std::string_view number = text.substr(start);
    if (BeginsIgnoringCase(number, "&h")) return HexValue(number.substr(2));
    return static_cast<std::uint32_t>(WholeValue(number));
}

std::string Assignments(std::string_view text, std::span<const FlagRow> table) {
    const std::uint32_t flags = FlagBits(text);
    std::string list;
    for (const FlagRow& row : table) {
        if ((flags & row.mask) != 0) list += row.assignment;
    }
    if (list.ends_with(',')) list.pop_back();
    return list;
}

}  // namespace

std::string ParseAppFlags(std::string_view flags) {
    return Assignments(flags, kApplicationFlagTable);
}

std::string ParseDAFlags(std::string_view flags) {
    return Assignments(flags, kDefaultAssociationFlagTable);
}

}  // namespace zorvel
