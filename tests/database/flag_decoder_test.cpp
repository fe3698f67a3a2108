// The decoding of the two flag attributes.
#include "database/flag_decoder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/errors.h"

namespace zorvel {
namespace {

using Cases = std::vector<std::pair<std::string, std::string>>;

TEST(FlagDecoder, NamesTheColumnOfEachApplicationFlag) {
    const std::vector<std::pair<std::int64_t, std::string>> bits = {
        {0x800000, "AFDisconnectable=0"},
        {0x1000000, "AFWaitOnForceRun=1"},
        {0x8000, "AFShowProgress=0"},
        {0x1000, "AFDistributeAlways=1"},
        {0x4000, "AFPromptBeforeDist=1"},
        {0x20000, "AFPromptForReboot=0"},
        {0x80, "AFInstallOnly=1"},
        {0x100, "AFRunOnce=1"},
        {0x20000000, "AFForceRunIfWS=1"},
        {0x40, "AFRun16BitSeparate=1"},
        {0x2, "AFClearUpNetwork=0"},
        {0x200000, "AFPreInstallSched=1"},
        {0x800, "AFRebootType='Never'"},
        {0x200, "AFRebootType='Always'"},
        {0x400000, "AFExeSecLevel='Unsecure System User'"},
        {0x40000, "AFExeSecLevel='Secure System User'"},
        {0x10000, "AFRunOption='Hidden'"},
        {0x4, "AFRunOption='Maximized'"},
        {0x1, "AFRunOption='Minimized'"},
    };
    std::string all;
    for (const auto& [mask, text] : bits) {
        EXPECT_EQ(ParseAppFlags(std::to_string(mask)), text);
        all += (all.empty() ? "" : ",") + text;
    }
    EXPECT_EQ(ParseAppFlags("-1"), all);
    EXPECT_EQ(ParseAppFlags("&hFFFFFFFF"), all);
}

TEST(FlagDecoder, NamesTheColumnOfEachDefaultAssociationFlag) {
    EXPECT_EQ(ParseDAFlags("511"),
              "DAFForceCache=1,DAFQuickLaunch=1,DAFSysTray=1,DAFDesktop=1,DAFStartMenu=1,DAFForceRun=1,"
              "DAFAppLaunch=1");
    EXPECT_EQ(ParseDAFlags("420"), "DAFForceCache=1,DAFQuickLaunch=1,DAFSysTray=1,DAFStartMenu=1");
    EXPECT_EQ(ParseDAFlags("2"), "DAFForceRun=1");
    EXPECT_EQ(ParseDAFlags("64"), "");
}

TEST(FlagDecoder, ReadsTheNumberThatATextBeginsWith) {
    const Cases cases = {
        {"", ""},
        {"0", ""},
        {"none", ""},
        {"8", ""},
        {"&h", ""},
        {"&hG1", ""},
        {"8388608", "AFDisconnectable=0"},
        {"  256 or so", "AFRunOnce=1"},
        {"&h805", "AFRebootType='Never',AFRunOption='Maximized',AFRunOption='Minimized'"},
        {" &H100x", "AFRunOnce=1"},
        {"2147483647", ParseAppFlags("-1")},
    };
    for (const auto& [text, list] : cases)
        EXPECT_EQ(ParseAppFlags(text), list) << text;
}

TEST(FlagDecoder, RefusesMoreThan32Bits) {
    for (const char* text : {"2147483648", "-2147483649", "&h100000000", "1e40"})
        EXPECT_EQ(test::RaisedBy([text] { ParseAppFlags(text); }).number(), errors::kOverflow) << text;
}

}  // namespace
}  // namespace zorvel
