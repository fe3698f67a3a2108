// The LDIF that the tools write.
#include "ldif_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_folder.h"

namespace zorvel::tools {
namespace {

// What `write` puts below the version line.
template <typename Write>
std::string Written(Write write) {
    const test::TempFolder folder;
    OutputFile file(folder.path() / "out.ldif", "out.ldif", OutputFile::Mode::kTruncate);
    LdifWriter ldif(file, "");
    write(ldif);
    file.Close();
    const std::string text = folder.Read("out.ldif");
    EXPECT_EQ(text.substr(0, 11), "version: 1\n");
    return text.substr(11);
}

TEST(LdifWriter, WritesPlainTextAsItIsAndAllElseAsBase64) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [value, line] :
         {Case{"Word processing", "a: Word processing\n"}, Case{"", "a:\n"},
          Case{"2#entry#cn=X#:<", "a: 2#entry#cn=X#:<\n"}, Case{" leading", "a:: IGxlYWRpbmc=\n"},
          Case{"trailing ", "a:: dHJhaWxpbmcg\n"}, Case{":colon", "a:: OmNvbG9u\n"},
          Case{"<less", "a:: PGxlc3M=\n"}, Case{"two\nlines", "a:: dHdvCmxpbmVz\n"},
          Case{"caf\xe9", "a:: Y2Fmw6k=\n"}}) {
        EXPECT_EQ(Written([&value = value](LdifWriter& ldif) { ldif.Text("a", value); }), line);
    }
}

TEST(LdifWriter, WritesBytesAndNumbers) {
    EXPECT_EQ(Written([](LdifWriter& ldif) {
                  ldif.Record("o=CORP");
                  ldif.Bytes("b", std::string("\0\xff\x10\x80", 4));
                  ldif.Long("n", -5);
              }),
              "\ndn: o=CORP\nb:: AP8QgA==\nn: -5\n");
}

TEST(LdifWriter, FoldsAt76Columns) {
    const std::string fits(73, 'x');
    EXPECT_EQ(Written([&](LdifWriter& ldif) { ldif.Text("a", fits); }), "a: " + fits + "\n");
    EXPECT_EQ(Written([&](LdifWriter& ldif) { ldif.Text("a", fits + "y"); }), "a: " + fits + "\n y\n");
    const std::string long_text = fits + std::string(75, 'y') + "z";
    EXPECT_EQ(Written([&](LdifWriter& ldif) { ldif.Text("a", long_text); }),
              "a: " + fits + "\n " + std::string(75, 'y') + "\n z\n");
}

TEST(LdifWriter, PutsACommentAboveTheVersion) {
    const test::TempFolder folder;
    OutputFile file(folder.path() / "out.ldif", "out.ldif", OutputFile::Mode::kTruncate);
    const LdifWriter ldif(file, "one\ntwo");
    file.Close();
    EXPECT_EQ(folder.Read("out.ldif"), "# one\n# two\nversion: 1\n");
}

TEST(RelativeDN, EscapesWhatIsSpecial) {
    EXPECT_EQ(RelativeDN("cn", "Plan,Build"), "cn=Plan\\,Build");
    EXPECT_EQ(RelativeDN("cn", R"(a+b"c\d<e>f;g=h)"), R"(cn=a\+b\"c\\d\<e\>f\;g\=h)");
    EXPECT_EQ(RelativeDN("ou", "#1 "), "ou=\\#1\\ ");
    EXPECT_EQ(RelativeDN("ou", "Reader 7.0 #2"), "ou=Reader 7.0 #2");
}

}  // namespace
}  // namespace zorvel::tools
