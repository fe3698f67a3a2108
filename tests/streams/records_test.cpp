// What each record type leaves behind: rows, issues, counters, signature and the entries handed to a search.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "stream_builder.h"
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

struct RecordCase {
    std::string name;
    std::string stream;
    std::string rows;
    std::string signed_text;  // in upper case
    RunCounters::Values counts;
    std::vector<std::string> issues = {};
    std::vector<std::string> found = {};
};

void Check(const RecordCase& row) {
    SCOPED_TRACE(row.name);
    TestParser parser;
    FakeFinder finder;
    parser.context.finder = &finder;
    parser.rules.FileIssueList = {"GAME.EXE"};
    parser.rules.RegExcludeList = {"HKLM\\OFF"};
    EXPECT_EQ(parser.Parse(row.stream), ParseResult::kParsed);
    EXPECT_EQ(parser.rows, row.rows);
    EXPECT_EQ(parser.signature, Sum(row.signed_text));
    EXPECT_EQ(parser.counters.application, row.counts);
    EXPECT_EQ(parser.counters.run, row.counts);
    EXPECT_EQ(parser.issues.issues, row.issues);
    EXPECT_EQ(finder.entries, row.found);
    EXPECT_EQ(parser.context.parse_errors, 0);
    EXPECT_EQ(parser.progress.stream_progress, 100);
}

TEST(StreamRecords, OfFilesAndDirectories) {
    const std::string long_path = "C:\\" + std::string(250, 'p');
    const RecordCase cases[] = {
        {"copy",
         StreamBuilder().FileCopy("\\\\srv\\App.exe", "c:\\App\\app.exe", 8).bytes(),
         Lines({kApp, "C:\\APP\\APP.EXE", "\\\\srv\\App.exe", "Copy If Newer"}),
         "C:\\APP\\APP.EXE",
         {1, 0, 0, 0, 0, 0},
         {},
         {"F:C:\\APP\\APP.EXE"}},
        {"copy into a fixed folder",
         StreamBuilder().FileCopy("s", "c:\\Windows\\Fonts\\a.ttf").bytes(),
         Lines({kApp, "C:\\WINDOWS\\FONTS\\A.TTF", "s", "Copy Always"}),
         "C:\\WINDOWS\\FONTS\\A.TTF",
         {1, 0, 0, 0, 0, 1},
         {"Word.APPS.SITE|File|C:\\WINDOWS\\FONTS\\A.TTF|s|FILEPORTABLE"},
         {"F:C:\\WINDOWS\\FONTS\\A.TTF"}},
        {"copy with two issues",
         StreamBuilder().FileCopy("s", "c:\\winnt\\system32\\a.dll", 513).bytes(),
         Lines({kApp, "C:\\WINNT\\SYSTEM32\\A.DLL", "s", "Copy Always, Shared"}),
         "C:\\WINNT\\SYSTEM32\\A.DLL",
         {1, 0, 0, 0, 0, 2},
         {"Word.APPS.SITE|File|C:\\WINNT\\SYSTEM32\\A.DLL|s|FILESYSDLLFLAG",
          "Word.APPS.SITE|File|C:\\WINNT\\SYSTEM32\\A.DLL|s|FILEPORTABLE"},
         {"F:C:\\WINNT\\SYSTEM32\\A.DLL"}},
        {"copy of a listed name",
         StreamBuilder().FileCopy("s", "d:\\Game.exe").bytes(),
         Lines({kApp, "D:\\GAME.EXE", "s", "Copy Always"}),
         "D:\\GAME.EXE",
         {1, 0, 0, 0, 0, 1},
         {"Word.APPS.SITE|File|D:\\GAME.EXE|s|FILECUSTOM"},
         {"F:D:\\GAME.EXE"}},
        {"delete",
         StreamBuilder().FileDelete("c:\\winnt\\old.tmp").bytes(),
         Lines({kApp, "", "c:\\winnt\\old.tmp", "Delete"}),
         "",
         {1, 0, 0, 0, 0, 0},
         {},
         {"F:"}},
        {"create a directory",
         StreamBuilder().DirectoryCreate("C:\\Program Files\\App").bytes(),
         Lines({kApp, "App", "C:\\Program Files", "Create Directory"}),
         "APP",
         {},
         {},
         {"F:C:\\Program Files\\App"}},
        {"delete a directory without a parent",
         StreamBuilder().DirectoryDelete("App").bytes(),
         Lines({kApp, "App", "", "Delete Directory"}),
         "APP",
         {},
         {},
         {"F:App"}},
        {"a directory too long for its length byte",
         StreamBuilder().DirectoryCreate(long_path).bytes(),
         Lines({kApp, std::string(250, 'p'), "C:", "Create Directory"}),
         std::string(250, 'P'),
         {},
         {},
         {"F:" + long_path}},
    };
    for (const RecordCase& row : cases)
        Check(row);
}

TEST(StreamRecords, OfIniAndTextFiles) {
    const std::string long_value(70'000 - 5'000, 'v');
    const RecordCase cases[] = {
        {"INI value",
         StreamBuilder().IniValue("a.ini", "Sect", "it'em", "va\tlue").bytes(),
         Lines({kApp, "a.ini", "Sect", "it''em", "va.lue", ""}),
         "SECT",
         {0, 1, 0, 0, 0, 0}},
        {"INI item deleted",
         StreamBuilder().IniItemDelete("a.ini", "Sect", "item", "").bytes(),
         Lines({kApp, "a.ini", "Sect", "item", "", "[ITEM DELETED]"}),
         "SECT",
         {0, 1, 0, 0, 0, 0}},
        {"INI value too long for its length word",
         StreamBuilder()
             .IniValue(std::string(255, 'f'), std::string(250, 'S'), std::string(255, 'i'), long_value)
             .bytes(),
         Lines({kApp, std::string(255, 'f'), std::string(250, 'S'), std::string(255, 'i'), long_value, ""}),
         std::string(250, 'S'),
         {0, 1, 0, 0, 0, 0}},
        {"INI section deleted",
         StreamBuilder().IniSectionDelete("a.ini", "Sect").bytes(),
         Lines({kApp, "a.ini", "Sect", "", "", "[SECTION DELETED]"}),
         "SECT",
         {0, 1, 0, 0, 0, 0}},
        {"text added, after a replacement",
         StreamBuilder().TextFileChange(4, "f", "old", "new").TextFileChange(2, "g", "line").bytes(),
         Lines(
             {kApp, "f", "old", "new", "Find and Replace", kApp, "g", "line", "", "Addition to end of file"}),
         "FOLDNEWFIND AND REPLACEGLINEADDITION TO END OF FILE",
         {0, 0, 2, 0, 0, 0}},
        {"text at the beginning, and deleted",
         StreamBuilder().TextFileChange(1, "f", "a").TextFileChange(3, "f", "a").bytes(),
         Lines({kApp, "f", "a", "", "Addition to beginning of file", kApp, "f", "a", "",
                "Deleted text string"}),
         "FAADDITION TO BEGINNING OF FILEFADELETED TEXT STRING",
         {0, 0, 2, 0, 0, 0}},
        {"a text change of unknown kind",
         StreamBuilder().TextFileChange(9, "f", "a").bytes(),
         Lines({kApp, "f", "a", "", ""}),
         "FA",
         {0, 0, 1, 0, 0, 0}},
    };
    for (const RecordCase& row : cases)
        Check(row);
}

TEST(StreamRecords, OfTheRegistry) {
    const RecordCase cases[] = {
        {"value",
         StreamBuilder().RegistryValue("HKLM\\App", "Name", "it's").bytes(),
         Lines({kApp, "HKLM\\App", "Name", "it''s", "Create Always"}),
         "HKLM\\APPNAMEIT''S",
         {0, 0, 0, 0, 1, 0},
         {},
         {"R:HKLM\\App  Name  it''s"}},
        {"binary value of an excluded key",
         StreamBuilder().RegistryValue("hklm\\Off\\x", "N", "a\0b"s, 2, 3).bytes(),
         Lines({kApp, "hklm\\Off\\x", "N", "a.b", "Create If Exists"}),
         "HKLM\\OFF\\XNA.B",
         {0, 0, 0, 0, 1, 1},
         {"Word.APPS.SITE|Registry|hklm\\Off\\x\\N|a.b|REGISTRYEXCLUDE"},
         {"R:hklm\\Off\\x  N  a.b"}},
        {"UNC value",
         StreamBuilder().RegistryValue("k", "", "\\\\srv", 4).bytes(),
         Lines({kApp, "k", "", "\\\\srv", "Create If Doesnt Exist"}),
         "K\\\\SRV",
         {0, 0, 0, 0, 1, 1},
         {"Word.APPS.SITE|Registry|k\\|\\\\srv|REGISTRYUNC"},
         {"R:k    \\\\srv"}},
        {"value of unknown mode",
         StreamBuilder().RegistryValue("k", "n", std::string(300, 'd'), 3).bytes(),
         Lines({kApp, "k", "n", std::string(300, 'd'), ""}),
         "KN" + std::string(300, 'D'),
         {0, 0, 0, 0, 1, 0},
         {},
         {"R:k  n  " + std::string(300, 'd')}},
        {"value deleted",
         StreamBuilder().RegistryValueDelete("HKLM\\OFF", "n").bytes(),
         Lines({kApp, "HKLM\\OFF", "n", "", "Delete"}),
         "HKLM\\OFFN",
         {0, 0, 0, 0, 1, 1},
         {"Word.APPS.SITE|Registry|HKLM\\OFF\\n||REGISTRYEXCLUDE"},
         {"R:HKLM\\OFF  n  "}},
        {"key created",
         StreamBuilder().RegistryKeyCreate("Hklm\\Off").bytes(),
         Lines({kApp, "Hklm\\Off", "", "", "Create"}),
         "HKLM\\OFF",
         {0, 0, 0, 0, 1, 0},
         {},
         {"R:HKLM\\OFF"}},
        {"key deleted",
         StreamBuilder().RegistryKeyDelete("Hklm").bytes(),
         Lines({kApp, "Hklm", "", "", "Delete"}),
         "HKLM",
         {0, 0, 0, 0, 1, 0},
         {},
         {"R:HKLM"}},
    };
    for (const RecordCase& row : cases)
        Check(row);
}

TEST(StreamRecords, OfMacrosAndTheEnvironment) {
    const std::string long_value(255, 'v');
    const RecordCase cases[] = {
        {"macro",
         StreamBuilder().Macro("Target_Path", "\\\\Srv").bytes(),
         Lines({kApp, "Target_Path", "\\\\Srv", "", ""}),
         "TARGET_PATH\\\\SRV",
         {0, 0, 0, 1, 0, 1},
         {"Word.APPS.SITE|Macro|Target_Path|\\\\Srv|MACROUNC"}},
        {"a macro too long for its length byte",
         StreamBuilder().Macro("M", long_value).bytes(),
         Lines({kApp, "M", long_value, "", ""}),
         "M" + std::string(255, 'V'),
         {0, 0, 0, 1, 0, 0}},
        {"prompted macros",
         StreamBuilder()
             .PromptedMacro("Drive", "C:", 200, "Which?")
             .PromptedMacro("d", "\\\\s", 0, "")
             .bytes(),
         Lines({kApp, "Drive", "C:", "200", "Which?", kApp, "d", "\\\\s", "", ""}),
         "DRIVEC:D\\\\S",
         {0, 0, 0, 2, 0, 0}},
        {"environment",
         StreamBuilder().EnvironmentSetting("PATH", "C:\\bin", 'A').bytes(),
         Lines({"PATH", "C:\\bin", "A"}),
         "",
         {}},
        {"no entry",
         StreamBuilder().NoEntry().Macro("m", "v").bytes(),
         Lines({kApp, "m", "v", "", ""}),
         "MV",
         {0, 0, 0, 1, 0, 0}},
    };
    for (const RecordCase& row : cases)
        Check(row);
}

// Records laid out by hand, so that a builder with the same mistake as the parser is found out.
TEST(StreamRecords, LieAtTheOffsetsOfTheFormat) {
    const auto header = [](std::string bytes, std::size_t size) {
        bytes.resize(size);
        return bytes;
    };
    TestParser parser;
    std::string stream =
        "AOT FILE"s + header("\1\xAA\xAA\xAA\1\xAA\xAA\xAA\0\xAA\xAA\xAA\2\0\xAA\xAA\2\xAA\xAA\xAA"s, 20);
    stream += "s1\3\xAA\xAA\xAAT:x"s;
    stream += header("\5\xAA\xAA\xAA\1\xAA\xAA\xAA\xAA\xAA\xAA\xAA\4\xAA\xAA\xAA\1\xAA\xAA\xAA"s, 20) +
              "\1\xAA\xAA\xAAk"s;
    stream += "\2\xAA\xAA\xAAnn\1\1\xAA\xAA"s + std::string(257, 'd');
    stream += "\46\xAA\xAA\xAA\xAA\xAA\xAA\xAA\50\xAA\xAA\xAA\xAA\xAA\xAA\xAA\xAA\xAA\xAA\xAA\7\xAA\xAA\xAA"s;
    stream += "\1\xAA\xAA\xAAm\1\xAA\xAA\xAAv\2\xAA\xAA\xAApp"s;
    stream += "\30\xAA\xAA\xAA\xAA\xAA\xAA\xAA\36\0\xAA\xAA\xAA\xAA\xAA\xAAZ\xAA\xAA\xAA\1\xAA\xAA\xAA"s;
    stream += "e\1\xAA\xAA\xAA"s + "f";
    EXPECT_EQ(parser.Parse(stream), ParseResult::kParsed);
    EXPECT_EQ(parser.rows, Lines({kApp, "T:X", "s1", "Copy If Exists",                               //
                                  kApp, "k", "nn", std::string(257, 'd'), "Create If Doesnt Exist",  //
                                  kApp, "m", "v", "7", "pp",                                         //
                                  "e", "f", "Z"}));
    EXPECT_EQ(parser.context.parse_errors, 0);
}

TEST(StreamRecords, NameTheCopyModeOfEveryFlagsWord) {
    const struct {
        std::uint16_t flags;
        std::string_view mode;
    } cases[] = {
        {1, "Copy Always"},
        {2, "Copy If Exists"},
        {4, "Copy If Does Not Exist"},
        {8, "Copy If Newer"},
        {16, "Copy If Newer And Exists"},
        {32, "Request Confirmation"},
        {64, "?"},
        {512, "?"},
        {1024, "Copy If Newer Version"},
        {2048, "?"},
        {16384, "?"},
        {32768, "Copy If Different"},
        {0, ""},
        {3, ""},
        {513, "Copy Always, Shared"},
        {576, "?, Shared"},
        {1025, ", Shared"},
        {1536, "Copy If Newer Version, Shared"},
        {33280, "Copy If Different, Shared"},
    };
    for (const auto& row : cases) {
        TestParser parser;
        parser.Parse(StreamBuilder().FileCopy("s", "t", row.flags).bytes());
        EXPECT_EQ(parser.rows, Lines({kApp, "T", "s", row.mode})) << row.flags;
    }
}

// A length value that does not fit the strings cuts the first string short; the strings' own lengths lead on.
TEST(StreamRecords, FollowTheLengthsInForce) {
    const std::string after = StreamBuilder().Macro("m", "v").bytes().substr(8);
    const std::string after_row = Lines({kApp, "m", "v", "", ""});
    // The last 28 characters of a prompted macro's name begin a record that reaches to that macro's end.
    const std::string hidden = "\12\0\0\0\1\0\0\0\44\0\0\0\1\0\0\0a\1\0\0\0b"s;
    const std::string name = std::string(12, 'x') + hidden + "yyyyyy";
    const std::string prompted = std::string(15, '\0') + "\50\0\0\0"s + name + std::string(8, '\0');
    const std::string prompted_rows = Lines({kApp, name, "", "", "", kApp, "a", "b", "", ""});
    const std::string text(255, 't');
    const struct {
        std::string name, stream, rows;
    } cases[] = {
        {"type 1: length value bounds the source",
         "AOT FILE\1\0\0\0\1\0\0\0\2\0\0\0\1\0\0\0\5\0\0\0"s
         "ab\1\0\0\0t"s,
         Lines({kApp, "T", "ab", "Copy Always"})},
        {"type 1: length value beyond the record",
         "AOT FILE\1\0\0\0\1\0\0\0\377\0\0\0\1\0\0\0\1\0\0\0"s
         "a\1\0\0\0t"s,
         Lines({kApp, "T", "a", "Copy Always"})},
        {"type 2: path cut by the length value", "AOT FILE\2\0\0\0\1\0\0\0\26\0\0\0\0\0\0\0\5\0\0\0ab"s,
         Lines({kApp, "ab", "", "Create Directory"})},
        {"type 6: gap after the key", "AOT FILE\6\0\0\0\1\0\0\0\30\0\0\0\0\0\0\0\1\0\0\0k???"s,
         Lines({kApp, "k", "", "", "Create"})},
        {"type 6: a deleted key goes by its string", "AOT FILE\6\0\0\0\2\0\0\0\27\0\0\0\0\0\0\0\1\0\0\0k"s,
         Lines({kApp, "k", "", "", "Delete"})},
        {"type 8: length 0 stands for the first length", "AOT FILE\10\0\0\0\0\0\0\0\0\0\0\0\24\0\0\0????"s,
         ""},
        {"type 10: gap after the value", "AOT FILE\12\0\0\0\1\0\0\0\31\0\0\0\1\0\0\0n\1\0\0\0w???"s,
         Lines({kApp, "n", "w", "", ""})},
        {"type 21: length value bounds the file",
         "AOT FILE\25\0\0\0\2\0\0\0\1\0\0\0\0\0\0\0\5\0\0\0"s
         "f\1\0\0\0t"s,
         Lines({kApp, "f", "t", "", "Addition to end of file"})},
        {"type 38: the length value alone leads on", "AOT FILE\46\0\0\0\0\0\0\0\50"s + prompted,
         prompted_rows},
        {"type 38: length 0 stands for the name's", "AOT FILE\46\0\0\0\0\0\0\0\0"s + prompted, prompted_rows},
        {"type 3: length word", StreamBuilder().IniValue("f", "s", "i", text).bytes(),
         Lines({kApp, "f", "s", "i", text, ""})},
        {"type 6: length word", StreamBuilder().RegistryKeyCreate(text).bytes(),
         Lines({kApp, text, "", "", "Create"})},
        {"type 24: length word", StreamBuilder().EnvironmentSetting("e", text, 'Z').bytes(),
         Lines({"e", text, "Z"})},
        {"type 24: the length value alone leads on",
         "AOT FILE\30\0\0\0\0\0\0\0\40\0\0\0\0\0\0\0Z\0\0\0\1\0\0\0e\1\0\0\0f??"s, Lines({"e", "f", "Z"})},
    };
    for (const auto& row : cases) {
        TestParser parser;
        parser.Parse(row.stream + after);
        EXPECT_EQ(parser.rows, row.rows + after_row) << row.name;
        EXPECT_EQ(parser.context.parse_errors, 0) << row.name;
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
