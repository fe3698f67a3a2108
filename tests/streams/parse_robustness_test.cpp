// Streams that are cut short.
#include <gtest/gtest.h>

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
        .IniValue("file", "section", "item", std::string(300, 'v'))
        .RegistryValue("key", "name", std::string(300, 'd'))
        .bytes();
}

// The rows before the cut stay as they are, and at most one record is reported, twice.
TEST(DamagedStreams, CutAnywhereKeepTheRowsBeforeTheCut) {
    const std::string stream = StreamOfAllTypes();
    TestParser parser;
    parser.Parse(stream);
    EXPECT_TRUE(parser.failures.noted.empty());
    const std::string all_rows = parser.rows;
    std::size_t last_size = 0;
    for (std::size_t size = 0; size <= stream.size(); ++size) {
        // A copy of its own size, so that a sanitizer sees a read behind the cut.
        parser.Parse(std::string(stream.data(), size));
        EXPECT_LE(parser.failures.noted.size(), 2U);
        EXPECT_GE(parser.signature, 0);
        EXPECT_TRUE(all_rows.starts_with(parser.rows)) << "cut at " << size;
        EXPECT_GE(parser.rows.size(), last_size) << "cut at " << size;
        last_size = parser.rows.size();
    }
    EXPECT_EQ(last_size, all_rows.size());
}

}  // namespace
}  // namespace zorvel::test
