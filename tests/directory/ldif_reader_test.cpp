// What LDIF files give, and how faults in them are told.
#include "directory/ldif_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/error.h"
#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

using namespace std::string_literals;

// All that a file holds: "[dn]" for each record, and "name=value" for each value; or the error's detail.
std::string ReadAll(const std::string& ldif, const TempFolder& folder = {}) {
    folder.Write("x.ldif", ldif);
    std::string all;
    try {
        LdifReader reader(InputFile(folder.path() / "x.ldif", "x.ldif"), folder.path() / "x.ldif");
        LdifAttribute attribute;
        while (reader.NextRecord()) {
            all += "[" + reader.dn() + "]";
            while (reader.NextAttribute(attribute)) {
                all += std::string(attribute.name) + "=" + std::string(attribute.value) + ";";
            }
        }
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errors::kDirectoryUnreadable);
        return error.detail();
    }
    return all;
}

struct Case {
    const char* name;
    std::string ldif;
    std::string expected;
};
void PrintTo(const Case& test, std::ostream* out) {
    *out << test.name;
}

class LdifReaderTest : public testing::TestWithParam<Case> {};

TEST_P(LdifReaderTest, GivesTheFilesContentOrTheFaultsLine) {
    EXPECT_EQ(ReadAll(GetParam().ldif), GetParam().expected);
}

const std::vector<Case> kReadable = {
    {"Empty", "", ""},
    {"OnlyComments", "# a\n#\n\n\n# b", ""},
    {"Plain", "dn: o=A\no: A\n", "[o=A]o=A;"},
    {"WithoutLastLineEnd", "dn: o=A\no: A", "[o=A]o=A;"},
    {"CarriageReturns", "version: 1\r\n\r\ndn: o=A\r\no: A\r\n\r\n\r\ndn: o=B\r\no: B\r\n",
     "[o=A]o=A;[o=B]o=B;"},
    {"VersionWithoutBlankLine", "version: 1\ndn: o=A\no: A\n", "[o=A]o=A;"},
    {"ByteOrderMark",
     "\xEF\xBB\xBF"
     "dn: o=A\no: A\n",
     "[o=A]o=A;"},
    {"FoldedValue", "dn: o=A\ndescription: one\n  two\n \n three\n", "[o=A]description=one twothree;"},
    {"FoldedName", "dn: o=A\ndescr\n iption: one\n", "[o=A]description=one;"},
    {"FoldedWithCarriageReturns", "dn: o=\r\n A\r\ndescr\r\n iption:\r\n  one\r\n", "[o=A]description=one;"},
    {"FoldedComment", "# one\n two: 3\ndn: o=A\n# in the\n  record\no: A\n", "[o=A]o=A;"},
    {"Base64", "dn: o=A\no:: QQ==\no:: QUI=\no:: QUJD\no::QUJDRA==\n", "[o=A]o=A;o=AB;o=ABC;o=ABCD;"},
    {"EmptyBase64", "dn: o=A\no::\no:: \n", "[o=A]o=;o=;"},
    {"EmptyValue", "dn: o=A\no:\no: \n", "[o=A]o=;o=;"},
    {"FoldedBase64", "dn:: bz\n 1B\no:: Q\n U\n J\n D\n", "[o=A]o=ABC;"},
    {"BinaryBase64", "dn: o=A\no:: AP8A\n", "[o=A]o=\0\xFF\0;"s},
    {"ValueAsItStands", "dn:  o=A \nx:   a: \t:b  \n", "[o=A]x=a: \t:b  ;"},
    {"TabIsPartOfTheValue", "dn: o=A\nx:\tb\n", "[o=A]x=\tb;"},
    {"NulBytes", "dn: o=A\nx: a\0b\n"s, "[o=A]x=a\0b;"s},
    {"OptionsIgnored", "dn: o=A\ncn;lang-de;x-1: a\n2.5.4.3: b\n", "[o=A]cn=a;2.5.4.3=b;"},
    {"ChangeTypeAdd", "dn: o=A\ncontrol: 1.2.3 true\nchangetype: add\no: A\n", "[o=A]o=A;"},
    {"RecordWithoutAttributes", "dn: o=A\n\ndn:\no: B\n", "[o=A][]o=B;"},
};
INSTANTIATE_TEST_SUITE_P(Readable, LdifReaderTest, testing::ValuesIn(kReadable),
                         [](const auto& param) { return param.param.name; });

const std::vector<Case> kFaults = {
    {"ContinuationFirst", " dn: o=A\n", "x.ldif, line 1: A continuation line that continues nothing"},
    {"ContinuationOfABlankLine", "dn: o=A\n\n x\n",
     "x.ldif, line 3: A continuation line that continues nothing"},
    {"NoDn", "version: 1\n\no: A\n", "x.ldif, line 3: A record that does not begin with its DN"},
    {"SecondDn", "dn: o=A\no: A\ndn: o=B\n", "x.ldif, line 3: A second DN within a record"},
    {"DnUrl", "dn:< file:///x\n", "x.ldif, line 1: A DN cannot be a URL"},
    {"Version", "version: 2\n", "x.ldif, line 1: Not version 1 of LDIF"},
    {"NoColon", "# c\n  c\ndn: o=A\n\r\ndn: o=B\nabc\n", "x.ldif, line 6: A line without a colon"},
    {"NoColonBehindAFold", "dn: o=\n A\nx: y\n z\nabc\n", "x.ldif, line 5: A line without a colon"},
    {"FaultAtAFold", "dn: o=A\nx\n !: y\n", "x.ldif, line 3: Not the name of an attribute"},
    {"NoName", "dn: o=A\n: x\n", "x.ldif, line 2: Not the name of an attribute"},
    {"NulInAName", "dn: o=A\nx\0: x\n"s, "x.ldif, line 2: Not the name of an attribute"},
    {"TabContinuation", "dn: o=A\nx: y\n\tz\n", "x.ldif, line 3: Not the name of an attribute"},
    {"Modify", "dn: o=A\nchangetype: modify\n", "x.ldif, line 2: A change type other than add"},
    {"Base64Character", "dn: o=A\nx:: QU\n JD\n Q*JD\n QUJD\n", "x.ldif, line 4: Not base64"},
    {"Base64TooShort", "dn: o=A\nx:: QUJD\n QUJ\n", "x.ldif, line 3: Not base64"},
    {"Base64PaddingInside", "dn: o=A\nx:: QQ==QUJD\n", "x.ldif, line 2: Not base64"},
    {"Base64PaddingOnly", "dn: o=A\nx:: ====\n", "x.ldif, line 2: Not base64"},
    {"Base64ThreePaddings", "dn: o=A\nx:: Q===\n", "x.ldif, line 2: Not base64"},
    {"UrlOfAnotherKind", "dn: o=A\nx:< http://a/b\n", "x.ldif, line 2: Not a URL of a local file"},
    {"UrlOfADevice", "dn: o=A\nx:< file:///dev/zero\n", "x.ldif, line 2: The URL names no file"},
    {"UrlOfNothing", "dn: o=A\nx:< file:///no/such/file\n", "x.ldif, line 2: The URL names no file"},
};
INSTANTIATE_TEST_SUITE_P(Faults, LdifReaderTest, testing::ValuesIn(kFaults),
                         [](const auto& param) { return param.param.name; });

TEST(LdifReader, TakesTheBytesOfAFileThatAUrlNamesInItsOwnFolderOrBelow) {
    const TempFolder folder;
    const TempFolder other;
    folder.Write("a b.bin", "\0\r\n bytes"s);
    folder.Write("Trees/b", "b");
    other.Write("secret", "s");
    std::filesystem::create_symlink(other.path() / "secret", folder.path() / "link");
    std::filesystem::create_symlink(folder.path(), other.path() / "back");
    const std::string here = folder.path().string();
    const std::string there = other.path().string();
    const std::string outside =
        "x.ldif, line 2: The file of the URL lies outside of the folder of the LDIF file";
    const std::pair<std::string, std::string> cases[] = {
        {here + "/a%20b.bin", "[o=A]x=\0\r\n bytes;y=z;"s},
        {here + "/TempData/../Trees/b", "[o=A]x=b;y=z;"},
        {there + "/back/Trees/b", "[o=A]x=b;y=z;"},
        {there + "/secret", outside},
        {here + "/Trees/../../" + other.path().filename().string() + "/secret", outside},
        {here + "/link", outside},
        {"/proc/self/status", outside},
        {"/etc/passwd", outside},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(ReadAll("dn: o=A\nx:< file://" + path + "\ny: z\n", folder), expected) << path;

    // Not even for an export that lies there itself.
    folder.Write("x.ldif", "dn: o=A\nx:< file:///proc/self/status\n");
    LdifReader reader(InputFile(folder.path() / "x.ldif", "x.ldif"), "/proc/version");
    ASSERT_TRUE(reader.NextRecord());
    LdifAttribute attribute;
    EXPECT_EQ(RaisedBy([&] { reader.NextAttribute(attribute); }).detail(),
              "x.ldif, line 2: The URL names a file of the system");
}

// The reader's buffer ends within lines, folds and line ends of every kind.
TEST(LdifReader, ReadsLinesOfAnyLengthWhole) {
    for (const std::string fold : {"\n ", "\r\n "}) {
        std::string text(3 * InputFile::kBufferSize + 1, 'x');
        for (std::size_t at = 0; at < text.size(); ++at)
            text[at] = static_cast<char>('a' + at % 23);
        std::string folded;
        for (std::size_t at = 0; at < text.size(); at += 76)
            folded += text.substr(at, 76) + fold;
        EXPECT_EQ(ReadAll("dn: o=A\nx: " + folded + "\ny: " + text), "[o=A]x=" + text + ";y=" + text + ";");
    }
}

TEST(LdifReader, GivesValuesAwayInTheirBuffers) {
    const TempFolder folder;
    folder.Write("bytes", "url");
    folder.Write("x.ldif", "dn: o=A\nx: plain\nx::\n QUJ\n DRA==\nx:< file://" +
                               (folder.path() / "bytes").string() + "\nx:\n y\nx: kept\n");
    const std::filesystem::path path = folder.path() / "x.ldif";
    LdifReader reader(InputFile(path, "x.ldif"), path);
    ASSERT_TRUE(reader.NextRecord());
    LdifAttribute attribute;
    for (const char* expected : {"plain", "ABCD", "url", "y"}) {
        ASSERT_TRUE(reader.NextAttribute(attribute));
        const ByteBuffer value = reader.TakeValue(attribute);
        EXPECT_EQ(value.view(), expected);
    }
    ASSERT_TRUE(reader.NextAttribute(attribute));
    EXPECT_EQ(attribute.value, "kept");
    EXPECT_FALSE(reader.NextRecord());
}

TEST(LdifReader, NeverCrashesOnAFileCutShort) {
    const std::string whole =
        "version: 1\r\n\r\n# c\n d\ndn:: bz1B\nchangetype: add\nx:: QUJD\n RA==\n\ndn: o=B\nz;q: 1\n";
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const std::string result = ReadAll(whole.substr(0, size));
        const bool told = result.starts_with("x.ldif, line ");
        EXPECT_TRUE(told || result.empty() || result.starts_with("[")) << size << ": " << result;
    }
    EXPECT_EQ(ReadAll(whole), "[o=A]x=ABCD;[o=B]z=1;");
}

}  // namespace
}  // namespace zorvel::test
