// What each record type leaves behind: rows, issues, counters, signature and the entries handed to a search.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "stream_builder.h"
#include "support/raw_record.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

using namespace std::string_literals;

constexpr std::string_view kApp = TestParser::kFullName;

std::int32_t Sum(std::string_view text) {
    std::int32_t sum = 0;
    for (const char character : text)
        sum += static_cast<unsigned char>(character);
    return sum;
}

// The row of an entry of the application.
std::string Row(const std::vector<std::string_view>& fields) {
    std::string row = Lines({kApp});
    for (const std::string_view field : fields)
        row += Lines({field});
    return row;
}

struct RecordCase {
    std::string name;
    std::string counts;  // files, INI, text, macros, registry, issues: a digit each
    StreamBuilder stream;
    std::string rows;
    std::string signed_text = {};  // in upper case
    std::string issues = {};       // a line each, without the application
    std::string found = {};        // what is handed to a search
};

void Check(const std::vector<RecordCase>& cases) {
    for (const RecordCase& row : cases) {
        SCOPED_TRACE(row.name);
        TestParser parser;
        FakeFinder finder;
        parser.context.finder = &finder;
        parser.rules.FileIssueList = {"GAME.EXE"};
        parser.rules.RegExcludeList = {"HKLM\\OFF"};
        EXPECT_EQ(parser.Parse(row.stream.bytes()), ParseResult::kParsed);
        EXPECT_EQ(parser.rows, row.rows);
        EXPECT_EQ(parser.signature, Sum(row.signed_text));
        std::string counts;
        for (const std::int32_t count : parser.counters.application)
            counts += std::to_string(count);
        EXPECT_EQ(counts, row.counts);
        EXPECT_EQ(parser.counters.run, parser.counters.application);
        std::string issues;
        for (const std::string& issue : parser.issues.issues) {
            EXPECT_EQ(issue.substr(0, kApp.size()), kApp);
            issues += (issues.empty() ? "" : "\n") + issue.substr(kApp.size() + 1);
        }
        EXPECT_EQ(issues, row.issues);
        EXPECT_EQ(finder.entries, std::vector<std::string>(row.found.empty() ? 0 : 1, row.found));
        EXPECT_TRUE(parser.failures.noted.empty());
        EXPECT_EQ(parser.progress.ended, 1);
    }
}

TEST(StreamRecords, OfFilesAndDirectories) {
    const std::string long_path = "C:\\" + std::string(250, 'p');
    Check({
        {"copy", "100000", StreamBuilder().FileCopy("\\\\srv\\App.exe", "c:\\App\\app.exe", 8),
         Row({"C:\\APP\\APP.EXE", "\\\\srv\\App.exe", "Copy If Newer"}), "C:\\APP\\APP.EXE", "",
         "F:C:\\APP\\APP.EXE"},
        {"copy into a fixed folder", "100001", StreamBuilder().FileCopy("s", "c:\\Windows\\Fonts\\a.ttf"),
         Row({"C:\\WINDOWS\\FONTS\\A.TTF", "s", "Copy Always"}), "C:\\WINDOWS\\FONTS\\A.TTF",
         "File|C:\\WINDOWS\\FONTS\\A.TTF|s|FILEPORTABLE", "F:C:\\WINDOWS\\FONTS\\A.TTF"},
        {"copy with two issues", "100002", StreamBuilder().FileCopy("s", "c:\\winnt\\system32\\a.dll", 513),
         Row({"C:\\WINNT\\SYSTEM32\\A.DLL", "s", "Copy Always, Shared"}), "C:\\WINNT\\SYSTEM32\\A.DLL",
         "File|C:\\WINNT\\SYSTEM32\\A.DLL|s|FILESYSDLLFLAG\nFile|C:\\WINNT\\SYSTEM32\\A.DLL|s|FILEPORTABLE",
         "F:C:\\WINNT\\SYSTEM32\\A.DLL"},
        {"copy of a listed name", "100001", StreamBuilder().FileCopy("s", "d:\\Game.exe"),
         Row({"D:\\GAME.EXE", "s", "Copy Always"}), "D:\\GAME.EXE", "File|D:\\GAME.EXE|s|FILECUSTOM",
         "F:D:\\GAME.EXE"},
        {"delete", "100000", StreamBuilder().FileDelete("c:\\winnt\\old.tmp"),
         Row({"", "c:\\winnt\\old.tmp", "Delete"}), "", "", "F:"},
        {"create a directory", "000000", StreamBuilder().DirectoryCreate("C:\\Program Files\\App"),
         Row({"App", "C:\\Program Files", "Create Directory"}), "APP", "", "F:C:\\Program Files\\App"},
        {"delete a directory without a parent", "000000", StreamBuilder().DirectoryDelete("App"),
         Row({"App", "", "Delete Directory"}), "APP", "", "F:App"},
        {"a directory too long for its length byte", "000000", StreamBuilder().DirectoryCreate(long_path),
         Row({std::string(250, 'p'), "C:", "Create Directory"}), std::string(250, 'P'), "", "F:" + long_path},
    });
}

TEST(StreamRecords, OfIniAndTextFiles) {
    const std::string long_value(70'000 - 5'000, 'v');
    const std::string file(255, 'f');
    const std::string section(250, 'S');
    const std::string item(255, 'i');
    Check({
        {"INI value", "010000", StreamBuilder().IniValue("a.ini", "Sect", "it'em", "va\tlue"),
         Row({"a.ini", "Sect", "it''em", "va.lue", ""}), "SECT"},
        {"INI item deleted", "010000", StreamBuilder().IniItemDelete("a.ini", "Sect", "item", ""),
         Row({"a.ini", "Sect", "item", "", "[ITEM DELETED]"}), "SECT"},
        {"INI value too long for its length word", "010000",
         StreamBuilder().IniValue(file, section, item, long_value),
         Row({file, section, item, long_value, ""}), section},
        {"INI section deleted", "010000", StreamBuilder().IniSectionDelete("a.ini", "Sect"),
         Row({"a.ini", "Sect", "", "", "[SECTION DELETED]"}), "SECT"},
        {"text added, after a replacement", "002000",
         StreamBuilder().TextFileChange(4, "f", "old", "new").TextFileChange(2, "g", "line"),
         Row({"f", "old", "new", "Find and Replace"}) + Row({"g", "line", "", "Addition to end of file"}),
         "FOLDNEWFIND AND REPLACEGLINEADDITION TO END OF FILE"},
        {"text at the beginning, and deleted", "002000",
         StreamBuilder().TextFileChange(1, "f", "a").TextFileChange(3, "f", "a"),
         Row({"f", "a", "", "Addition to beginning of file"}) + Row({"f", "a", "", "Deleted text string"}),
         "FAADDITION TO BEGINNING OF FILEFADELETED TEXT STRING"},
        {"a text change of unknown kind", "001000", StreamBuilder().TextFileChange(9, "f", "a"),
         Row({"f", "a", "", ""}), "FA"},
    });
}

TEST(StreamRecords, OfTheRegistry) {
    const std::string data(300, 'd');
    Check({
        {"value", "000010", StreamBuilder().RegistryValue("HKLM\\App", "Name", "it's"),
         Row({"HKLM\\App", "Name", "it''s", "Create Always"}), "HKLM\\APPNAMEIT''S", "",
         "R:HKLM\\App  Name  it''s"},
        {"binary value of an excluded key", "000011",
         StreamBuilder().RegistryValue("hklm\\Off\\x", "N", "a\0b"s, 2, 3),
         Row({"hklm\\Off\\x", "N", "a.b", "Create If Exists"}), "HKLM\\OFF\\XNA.B",
         "Registry|hklm\\Off\\x\\N|a.b|REGISTRYEXCLUDE", "R:hklm\\Off\\x  N  a.b"},
        {"UNC value", "000011", StreamBuilder().RegistryValue("k", "", "\\\\srv", 4),
         Row({"k", "", "\\\\srv", "Create If Doesnt Exist"}), "K\\\\SRV", "Registry|k\\|\\\\srv|REGISTRYUNC",
         "R:k    \\\\srv"},
        {"value of unknown mode", "000010", StreamBuilder().RegistryValue("k", "n", data, 3),
         Row({"k", "n", data, ""}), "KN" + std::string(300, 'D'), "", "R:k  n  " + data},
        {"value deleted", "000011", StreamBuilder().RegistryValueDelete("HKLM\\OFF", "n"),
         Row({"HKLM\\OFF", "n", "", "Delete"}), "HKLM\\OFFN", "Registry|HKLM\\OFF\\n||REGISTRYEXCLUDE",
         "R:HKLM\\OFF  n  "},
        {"key created", "000010", StreamBuilder().RegistryKeyCreate("Hklm\\Off"),
         Row({"Hklm\\Off", "", "", "Create"}), "HKLM\\OFF", "", "R:HKLM\\OFF"},
        {"key deleted", "000010", StreamBuilder().RegistryKeyDelete("Hklm"), Row({"Hklm", "", "", "Delete"}),
         "HKLM", "", "R:HKLM"},
    });
}

TEST(StreamRecords, OfMacrosAndTheEnvironment) {
    const std::string long_value(255, 'v');
    Check({
        {"macro", "000101", StreamBuilder().Macro("Target_Path", "\\\\Srv"),
         Row({"Target_Path", "\\\\Srv", "", ""}), "TARGET_PATH\\\\SRV", "Macro|Target_Path|\\\\Srv|MACROUNC"},
        {"a macro too long for its length byte", "000100", StreamBuilder().Macro("M", long_value),
         Row({"M", long_value, "", ""}), "M" + std::string(255, 'V')},
        {"prompted macros", "000200",
         StreamBuilder().PromptedMacro("Drive", "C:", 200, "Which?").PromptedMacro("d", "\\\\s", 0, ""),
         Row({"Drive", "C:", "200", "Which?"}) + Row({"d", "\\\\s", "", ""}), "DRIVEC:D\\\\S"},
        {"environment", "000000", StreamBuilder().EnvironmentSetting("PATH", "C:\\bin", 'A'),
         Lines({"PATH", "C:\\bin", "A"})},
        {"no entry", "000100", StreamBuilder().NoEntry().Macro("m", "v"), Row({"m", "v", "", ""}), "MV"},
    });
}

// Records laid out by hand, so that a builder with the same mistake as the parser is found out.
TEST(StreamRecords, LieAtTheOffsetsOfTheFormat) {
    constexpr char kAny = '\xAA';  // what stands in the bytes between is of no matter
    const auto slot = [](std::string_view text) { return Slot(text, 0, kAny); };
    TestParser parser;
    const std::string stream =
        "AOT FILE" + Header({.type = 1, .length = 0xAA00, .flags = 2, .at_first = 2, .unused = kAny}) + "s1" +
        slot("T:x") + Header({.type = 5, .length = 0xAAAA, .flags = 0xAA04, .unused = kAny}) + slot("k") +
        slot("nn") + slot(std::string(257, 'd')) +
        ShortHeader({.type = 38, .action = 0xAA, .length = 0xAA28, .unused = kAny}) + std::string(4, kAny) +
        Slot("", 7, kAny) + slot("m") + slot("v") + slot("pp") +
        Header({.type = 24, .action = 0xAA, .length = 30, .at_first = 'Z', .unused = kAny}) + slot("e") +
        slot("f");
    EXPECT_EQ(parser.Parse(stream), ParseResult::kParsed);
    EXPECT_EQ(parser.rows, Lines({kApp, "T:X", "s1", "Copy If Exists",                               //
                                  kApp, "k", "nn", std::string(257, 'd'), "Create If Doesnt Exist",  //
                                  kApp, "m", "v", "7", "pp",                                         //
                                  "e", "f", "Z"}));
    EXPECT_TRUE(parser.failures.noted.empty());
}

TEST(StreamRecords, NameTheCopyModeOfEveryFlagsWord) {
    const struct {
        std::string_view mode;
        std::vector<std::uint16_t> flags;
    } cases[] = {
        {"Copy Always", {1}},
        {"Copy If Exists", {2}},
        {"Copy If Does Not Exist", {4}},
        {"Copy If Newer", {8}},
        {"Copy If Newer And Exists", {16}},
        {"Request Confirmation", {32}},
        {"?", {64, 512, 2048, 16384}},
        {"Copy If Newer Version", {1024}},
        {"Copy If Different", {32768}},
        {"", {0, 3}},
        {"Copy Always, Shared", {513}},
        {"?, Shared", {576}},
        {", Shared", {1025}},
        {"Copy If Newer Version, Shared", {1536}},
        {"Copy If Different, Shared", {33280}},
    };
    for (const auto& row : cases) {
        for (const std::uint16_t flags : row.flags) {
            TestParser parser;
            parser.Parse(StreamBuilder().FileCopy("s", "t", flags).bytes());
            EXPECT_EQ(parser.rows, Row({"T", "s", row.mode})) << flags;
        }
    }
}

// A length value that does not fit the strings cuts the first string short; the strings' own lengths lead on.
TEST(StreamRecords, FollowTheLengthsInForce) {
    const auto record = [](const StreamBuilder& builder) { return builder.bytes().substr(8); };
    const std::string after = record(StreamBuilder().Macro("m", "v"));
    const std::string after_row = Row({"m", "v", "", ""});
    // The last 28 characters of a prompted macro's name begin a record that reaches to that macro's end.
    const std::string hidden = ShortHeader({.type = 10, .length = 36, .at_first = 1}) + "a" + Slot("b");
    const std::string name = std::string(12, 'x') + hidden + "yyyyyy";
    const auto prompted = [&](int length) {
        return ShortHeader({.type = 38, .length = length}) + std::string(8, '\0') + Slot(name) + Slot("") +
               Slot("");
    };
    const std::string prompted_rows = Row({name, "", "", ""}) + Row({"a", "b", "", ""});
    const std::string text(255, 't');
    const struct {
        std::string name, records, rows;
    } cases[] = {
        {"type 1: length value bounds the source",
         Header({.type = 1, .length = 2, .flags = 1, .at_first = 5}) + "ab" + Slot("t"),
         Row({"T", "ab", "Copy Always"})},
        {"type 1: length value beyond the record",
         Header({.type = 1, .length = 255, .flags = 1, .at_first = 1}) + "a" + Slot("t"),
         Row({"T", "a", "Copy Always"})},
        {"type 2: path cut by the length value", Header({.type = 2, .length = 22, .at_first = 5}) + "ab",
         Row({"ab", "", "Create Directory"})},
        {"type 6: gap after the key", Header({.type = 6, .length = 24, .at_first = 1}) + "k???",
         Row({"k", "", "", "Create"})},
        {"type 6: a deleted key goes by its string",
         Header({.type = 6, .action = 2, .length = 23, .at_first = 1}) + "k", Row({"k", "", "", "Delete"})},
        {"type 8: length 0 stands for the first length", ShortHeader({.type = 8, .at_first = 20}) + "????",
         ""},
        {"type 10: gap after the value",
         ShortHeader({.type = 10, .length = 25, .at_first = 1}) + "n" + Slot("w") + "???",
         Row({"n", "w", "", ""})},
        {"type 21: length value bounds the file",
         Header({.type = 21, .action = 2, .length = 1, .at_first = 5}) + "f" + Slot("t"),
         Row({"f", "t", "", "Addition to end of file"})},
        {"type 38: the length value alone leads on", prompted(40), prompted_rows},
        {"type 38: length 0 stands for the name's", prompted(0), prompted_rows},
        {"type 3: length word", record(StreamBuilder().IniValue("f", "s", "i", text)),
         Row({"f", "s", "i", text, ""})},
        {"type 6: length word", record(StreamBuilder().RegistryKeyCreate(text)),
         Row({text, "", "", "Create"})},
        {"type 24: length word", record(StreamBuilder().EnvironmentSetting("e", text, 'Z')),
         Lines({"e", text, "Z"})},
        {"type 24: the length value alone leads on",
         Header({.type = 24, .length = 32, .at_first = 'Z'}) + Slot("e") + Slot("f") + "??",
         Lines({"e", "f", "Z"})},
    };
    for (const auto& row : cases) {
        TestParser parser;
        parser.Parse("AOT FILE" + row.records + after);
        EXPECT_EQ(parser.rows, row.rows + after_row) << row.name;
        EXPECT_TRUE(parser.failures.noted.empty()) << row.name;
    }
}

TEST(StreamBuilder, RefusesWhatTheFormatCannotHold) {
    const std::string text(256, 'x');
    EXPECT_THROW(StreamBuilder().FileCopy(text, "t"), Error);
    EXPECT_THROW(StreamBuilder().Macro("m", text), Error);
    EXPECT_THROW(StreamBuilder().RegistryValue("k", "n", std::string(65536, 'd')), Error);
    EXPECT_THROW(StreamBuilder().PromptedMacro("m", std::string(200, 'v'), 0, std::string(50, 'p')), Error);
}

}  // namespace
}  // namespace zorvel::test
