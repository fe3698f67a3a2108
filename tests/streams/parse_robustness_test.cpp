// Damaged streams: whatever the bytes are, the parse ends, with at most one faulty record reported.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "stream_builder.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

std::string StreamOfAllTypes() {
    return StreamBuilder()
        .FileCopy("source", "C:\\WINDOWS\\target.dll", 513)
        .FileDelete("C:\\old")
        .DirectoryCreate("C:\\a\\b")
        .IniValue("file", "section", "item", "value")
        .RegistryValue("HKLM\\key", "name", "\\\\data")
        .RegistryValueDelete("key", "name")
        .RegistryKeyCreate("key")
        .RegistryKeyDelete("key")
        .NoEntry()
        .Macro("SHORT_TARGET_PATH", "C:\\Program Files")
        .TextFileChange(4, "file", "text", "new")
        .IniSectionDelete("file", "section")
        .EnvironmentSetting("name", "value", 'S')
        .PromptedMacro("name", "value", 5, "prompt")
        .bytes();
}

class DamagedStreams : public ::testing::Test {
  protected:
    // Parses a stream, and expects the whole rows of `whole_rows` up to a fault, and no more than two
    // reports.
    std::string ParseDamaged(const std::string& stream) {
        parser_.context.parse_errors = 0;
        parser_.context.error_wait = 0;
        parser_.Parse(stream);
        EXPECT_LE(parser_.context.parse_errors, 2);
        EXPECT_GE(parser_.signature, 0);
        return parser_.rows;
    }

    TestParser parser_;
};

TEST_F(DamagedStreams, CutAnywhereKeepTheRowsBeforeTheCut) {
    const std::string stream = StreamOfAllTypes();
    const std::string all_rows = ParseDamaged(stream);
    EXPECT_EQ(parser_.context.parse_errors, 0);
    std::size_t last_size = 0;
    for (std::size_t size = 0; size <= stream.size(); ++size) {
        // A copy of its own size, so that a sanitizer sees a read behind the cut.
        const std::string rows = ParseDamaged(std::string(stream.data(), size));
        EXPECT_TRUE(all_rows.starts_with(rows)) << "cut at " << size;
        EXPECT_GE(rows.size(), last_size) << "cut at " << size;
        last_size = rows.size();
    }
    EXPECT_EQ(last_size, all_rows.size());
}

TEST_F(DamagedStreams, WithFlippedBytesEnd) {
    const std::string stream = StreamOfAllTypes();
    std::mt19937 random(20061116);
    int sound = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = stream;
        for (unsigned flips = 1 + random() % 4; flips > 0; --flips) {
            damaged[8 + random() % (damaged.size() - 8)] = static_cast<char>(random());
        }
        ParseDamaged(damaged);
        if (parser_.context.parse_errors == 0) ++sound;
    }
    // Both kinds must have been met, or the damage tests nothing.
    EXPECT_GT(sound, 0);
    EXPECT_LT(sound, 3000);
}

}  // namespace
}  // namespace zorvel::test
