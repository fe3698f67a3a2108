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

TEST(FlagDecoder, NamesTheColumnOfEachApplicationFlag) {
    using Flag = std::pair<std::int64_t, std::string>;
    std::string all;
    for (const auto& [mask, text] :
         {Flag{0x800000, "AFDisconnectable=0"}, Flag{0x1000000, "AFWaitOnForceRun=1"},
          Flag{0x8000, "AFShowProgress=0"}, Flag{0x1000, "AFDistributeAlways=1"},
          Flag{0x4000, "AFPromptBeforeDist=1"}, Flag{0x20000, "AFPromptForReboot=0"},
          Flag{0x80, "AFInstallOnly=1"}, Flag{0x100, "AFRunOnce=1"}, Flag{0x20000000, "AFForceRunIfWS=1"},
          Flag{0x40, "AFRun16BitSeparate=1"}, Flag{0x2, "AFClearUpNetwork=0"},
          Flag{0x200000, "AFPreInstallSched=1"}, Flag{0x800, "AFRebootType='Never'"},
          Flag{0x200, "AFRebootType='Always'"}, Flag{0x400000, "AFExeSecLevel='Unsecure System User'"},
          Flag{0x40000, "AFExeSecLevel='Secure System User'"}, Flag{0x10000, "AFRunOption='Hidden'"},
          Flag{0x4, "AFRunOption='Maximized'"}, Flag{0x1, "AFRunOption='Minimized'"}}) {
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
    using Case = std::pair<const char*, std::string>;
    for (const auto& [text, list] :
         {Case{"", ""}, Case{"0", ""}, Case{"none", ""}, Case{"8", ""}, Case{"&h", ""}, Case{"&hG1", ""},
          Case{"8388608", "AFDisconnectable=0"}, Case{"  256 or so", "AFRunOnce=1"},
          Case{"&h805", "AFRebootType='Never',AFRunOption='Maximized',AFRunOption='Minimized'"},
          Case{" &H100x", "AFRunOnce=1"}, Case{"&h 1 00", "AFRunOnce=1"},
          Case{"2147483647", ParseAppFlags("-1")}})
        EXPECT_EQ(ParseAppFlags(text), list) << text;
}

TEST(FlagDecoder, RefusesMoreThan32Bits) {
    for (const char* text : {"2147483648", "-2147483649", "&h100000000", "1e40"})
        EXPECT_EQ(test::RaisedBy([text] { ParseAppFlags(text); }).number(), errors::kOverflow) << text;
}

}  // namespace
}  // namespace zorvel
