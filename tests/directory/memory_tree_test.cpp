// How the objects of an LDIF file appear: their places, names, classes and values.
#include <gtest/gtest.h>

#include "directory/directory_fixture.h"

namespace zorvel::test {
namespace {

using Lines = std::vector<std::string>;

TEST(MemoryTree, ListsChildrenInFileOrderAndMissingContainersLast) {
    DirectoryFixture fixture(
        "dn: cn=Word,ou=Gone,o=SITE\nobjectClass: appApplication\n\n"
        "dn: cn=Late,ou=APPS,o=SITE\nobjectClass: appApplication\n\n"
        "dn: l=Here,o=SITE\nobjectClass: locality\n\n"
        "dn: o=SITE\nobjectClass: organization\n\n"
        "dn: ou=APPS,o=SITE\nobjectClass: organizationalUnit\n\n"
        "dn: cn=Early,ou=APPS,o=SITE\nobjectClass: appApplication\n\n"
        "dn: cn=x,dc=odd,c=AU\nobjectClass: user\n");
    EXPECT_EQ(fixture.Walk(),
              (Lines{R"(NDS:\\TREE\SITE (Organization))", R"(NDS:\\TREE\SITE\Here (Locality))",
                     R"(NDS:\\TREE\SITE\APPS (Organizational Unit))",
                     R"(NDS:\\TREE\SITE\APPS\Late (App:Application))",
                     R"(NDS:\\TREE\SITE\APPS\Early (App:Application))",
                     R"(NDS:\\TREE\SITE\Gone (Organizational Unit))",
                     R"(NDS:\\TREE\SITE\Gone\Word (App:Application))", R"(NDS:\\TREE\AU (Country))",
                     R"(NDS:\\TREE\AU\odd (Unknown))", R"(NDS:\\TREE\AU\odd\x (User))"}));
    EXPECT_TRUE(fixture.directory.AttributeNames(fixture.directory.LookUp("Gone.SITE")).empty());
}

TEST(MemoryTree, NamesObjectsByPathAndFullName) {
    DirectoryFixture fixture(
        "dn: ou=Apps 1.0,o=Caf\xC3\xA9\nobjectClass: organizationalUnit\n\n"
        "dn: cn=A\\5CB\\, C+ou=D,ou=Apps 1.0,o=Caf\xC3\xA9\nobjectClass: appApplication\n\n"
        "dn: cn=B,ou=Apps 1.0,o=Caf\xC3\xA9\nobjectClass: appApplication\n");
    TreeDirectory& directory = fixture.directory;
    const Entry entry = directory.FindEntry("NDS:\\\\TREE\\caf\xC9\\apps 1.0\\a\\b, c+d");
    EXPECT_EQ(entry.short_name, R"(A\B, C+D)");
    EXPECT_EQ(entry.path, "NDS:\\\\TREE\\Caf\xE9\\Apps 1.0\\A\\B, C+D");
    EXPECT_EQ(directory.FullName(entry.path), "A\\B, C+D.Apps 1\\.0.Caf\xE9");
    EXPECT_EQ(directory.LookUp(".a\\b, C+D.APPS 1\\.0.caf\xC9").path, entry.path);
    EXPECT_EQ(directory.FullName("b.apps 1\\.0.caf\xE9"), "B.Apps 1\\.0.Caf\xE9");

    EXPECT_EQ(directory.FullName(R"(NDS:\\TREE\no\such.one)"), R"(such\.one.no)");
    EXPECT_EQ(directory.FullName(RootPath("TREE")), "[Root]");
    EXPECT_EQ(directory.LookUp("[root]").path, R"(NDS:\\TREE\[Root])");
    for (const char* missing : {R"(NDS:\\TREE\Caf)", R"(NDS:\\TREE\)", R"(NDS:\\TREE)", "x.y", "", "."}) {
        EXPECT_EQ(ErrorOf([&] { directory.LookUp(missing); }), errors::kNoSuchObject) << missing;
    }
    EXPECT_EQ(directory.TreeNameOf(entry.path), "TREE");
}

// "A" holds "B\C", "A\B" holds "C": both readings of the same text are found where they lead to an object.
TEST(MemoryTree, FindsNamesThatHoldABackslash) {
    DirectoryFixture fixture(
        "dn: ou=x,ou=B\\\\C,o=A\nobjectClass: organizationalUnit\n\n"
        "dn: ou=y,ou=C,o=A\\\\B\nobjectClass: organizationalUnit\n");
    EXPECT_EQ(fixture.directory.FullName(R"(NDS:\\TREE\a\b\c\X)"), R"(x.B\C.A)");
    EXPECT_EQ(fixture.directory.FullName(R"(NDS:\\TREE\a\b\c\Y)"), R"(y.C.A\B)");
    EXPECT_EQ(ErrorOf([&] { fixture.directory.FindEntry(R"(NDS:\\TREE\a\b\c\Z)"); }), errors::kNoSuchObject);
}

TEST(MemoryTree, ChoosesTheClassByRank) {
    DirectoryFixture fixture(
        "dn: cn=a,o=S\nobjectClass: top\nobjectClass: INETORGPERSON\nobjectClass: person\n\n"
        "dn: cn=b,o=S\nobjectClass: organization\nobjectClass: user\nobjectClass: Alias\n\n"
        "dn: cn=c,o=S\nobjectClass: top\nobjectClass: Printer\n\n"
        "dn: cn=d,o=S\nobjectClass: nCPServer\nobjectClass: workstation\n\n"
        "dn: cn=e,o=S\nobjectClass: workstation\nobjectClass: server\n\n"
        "dn: cn=f,o=S\nobjectClass: zenWorkstationGroup\n\n"
        "dn: cn=g,o=S\ncn: g\n");
    const std::pair<const char*, const char*> expected[] = {
        {"User", "User"},
        {"Alias", "Alias"},
        {"Generic NDS Object (default)", "Printer"},
        {"NCP Server", "NCP Server"},
        {"NCP Server", "Workstation"},
        {"Generic NDS Object (default)", "zenWorkstationGroup"},
        {"Generic NDS Object (default)", "Unknown"},
        {"Organization", "Organization"},
        {"Generic NDS Object (default)", "[Root]"},
    };
    std::size_t at = 0;
    for (const char* name : {"a.S", "b.S", "c.S", "d.S", "e.S", "f.S", "g.S", "S", "[Root]"}) {
        const ObjectDescription description = fixture.directory.Describe(fixture.directory.LookUp(name));
        EXPECT_EQ(description.kind_name, expected[at].first) << name;
        EXPECT_EQ(description.schema_class_name, expected[at++].second) << name;
    }
}

TEST(MemoryTree, GivesAttributesTheirNdsNamesAndTexts) {
    DirectoryFixture fixture(
        "dn: cn=Word,o=SITE\nobjectClass: top\nobjectClass: appApplication\ncn: Word\n"
        "appPath: C:\\Caf\xC3\xA9\\x.exe\nAPPICONORDER: +007\ncommonName;lang-de: Wort\n2.5.4.3: Mot\n"
        "myOwn: one\nMYOWN: two\nappGUID:: AAn/\nappFlags: &h10\nmember: CN=word, O=site\nmember: "
        "cn=A.B,o=gone\n"
        "member: no dn\nloginDisabled: TRUE\nhomeDirectory: cn=Vol,o=SITE#0#\\\\home\n");
    const std::tuple<const char*, const char*, const char*> expected[] = {
        {"Object Class", "String", "top|appApplication"},
        {"CN", "String", "Word|Wort|Mot"},
        {"App:Path", "String", "C:\\Caf\xE9\\x.exe"},
        {"App:Icon Order", "Long", "7"},
        {"myOwn", "String", "one|two"},
        {"App:GUID", "NWOctetString", "0009FF"},
        {"App:Flags", "Long", "&h10"},
        {"Member", "String", R"(Word.SITE|A\.B.gone|no dn)"},
        {"Login Disabled", "Other", ""},
        {"Home Directory", "NWPath", R"(cn=Vol,o=SITE#0#\\home)"},
    };
    const Entry entry = fixture.directory.LookUp("Word.SITE");
    Lines names;
    for (const auto& [name, syntax, values] : expected) {
        names.emplace_back(name);
        EXPECT_EQ(fixture.directory.AttributeSyntax(entry, name), syntax) << name;
        EXPECT_EQ(fixture.Values("Word.SITE", name), values) << name;
    }
    EXPECT_EQ(fixture.directory.AttributeNames(entry), names);
    EXPECT_EQ(fixture.Values("Word.SITE", "APP:PATH"), "C:\\Caf\xE9\\x.exe");
    EXPECT_EQ(ErrorOf([&] { fixture.Values("Word.SITE", "App:Caption"); }), errors::kNoSuchValue);
}

TEST(MemoryTree, WritesNumbersInTheirShortestForm) {
    DirectoryFixture fixture(
        "dn: cn=x,o=S\nappFlags: 0\nappFlags: -0\nappFlags: 000\nappFlags: -0012\nappFlags: +5\nappFlags: -\n"
        "appFlags: 1x\nappFlags:\nappFlags: 000123456789012345678901234567890\n");
    EXPECT_EQ(fixture.Values("x.S", "App:Flags"), "0|0|0|-12|5|-|1x||123456789012345678901234567890");
}

TEST(MemoryTree, ShowsTheTrusteesOfAccessControlLists) {
    DirectoryFixture fixture(
        "dn: cn=Word,o=SITE\n"
        "aCL: 2#entry#cn=WORD,o=Site#[Entry Rights]\n"
        "aCL: 1#subtree#cn=A#1.0,o=gone#appPath\n"
        "aCL: 4#entry#[Public]#cn\n"
        "aCL: 4#entry#[Root]\n"
        "aCL: whole\n");
    EXPECT_EQ(fixture.Values("Word.SITE", "ACL"),
              R"(Word.SITE,[Entry Rights],2|A#1\.0.gone,appPath,1|[Public],cn,4|4#entry#[Root]|whole)");
    EXPECT_EQ(fixture.directory.AttributeSyntax(fixture.directory.LookUp("Word.SITE"), "ACL"), "NWACL");
}

TEST(MemoryTree, TakesTheSchemaThatTheFileHolds) {
    DirectoryFixture fixture(
        "dn: cn=Word,o=SITE\nobjectClass: thing\ncn: Word\nsize: 05\n\n"
        "dn: CN = Schema\nattributeTypes: ( 1.2.3 NAME 'size' SYNTAX 1.3.6.1.4.1.1466.115.121.1.27 "
        "X-NDS_NAME\n"
        "  'App:Size' )\nobjectClasses: ( 1.2.4 NAME 'thing' X-NDS_NAME 'App:Application' )\n");
    const Entry entry = fixture.directory.LookUp("Word.SITE");
    EXPECT_EQ(entry.class_name, "App:Application");
    EXPECT_EQ(fixture.directory.AttributeNames(entry), (Lines{"objectClass", "cn", "App:Size"}));
    EXPECT_EQ(fixture.Values("Word.SITE", "App:Size"), "5");
    EXPECT_EQ(fixture.Walk().size(), 2U);
}

TEST(MemoryTree, TheEmptyDnIsTheRoot) {
    DirectoryFixture fixture("dn:\ndescription: all\n");
    const Entry root = fixture.directory.CurrentEntry();
    EXPECT_EQ(root.short_name + root.path + root.class_name, R"([Root]NDS:\\TREE\[Root][Root])");
    EXPECT_EQ(fixture.Values("[Root]", "Description"), "all");
}

// Two organisational units, "??" both in the code page, and objects that name what stands in them.
TEST(MemoryTree, TellsObjectsApartWhoseNamesTheCodePageCannot) {
    const std::string japan = "ou=\xE6\x97\xA5\xE6\x9C\xAC,o=S";
    const std::string china = "ou=\xE4\xB8\xAD\xE5\x9B\xBD,o=S";
    DirectoryFixture fixture("dn: " + japan + "\nobjectClass: organizationalUnit\n\ndn: cn=App," + japan +
                             "\nobjectClass: appApplication\ndescription: of Japan\n\ndn: " + china +
                             "\nobjectClass: organizationalUnit\n\ndn: cn=App," + china +
                             "\nobjectClass: appApplication\ndescription: of China\naCL: 1#entry#cn=APP," +
                             china + "#[Entry Rights]\n\ndn: cn=All,o=S\nmember: cn=app," + china +
                             "\nmember: " + japan + "\nmember: CN=App,OU=\\E4\\B8\\AD\\E5\\9B\\BD,o=s\n");
    EXPECT_EQ(fixture.Walk(),
              (Lines{R"(NDS:\\TREE\S (Organization))", R"(NDS:\\TREE\S\?? (Organizational Unit))",
                     R"(NDS:\\TREE\S\??\App (App:Application))", R"(NDS:\\TREE\S\??~2 (Organizational Unit))",
                     R"(NDS:\\TREE\S\??~2\App (App:Application))", R"(NDS:\\TREE\S\All (Unknown))"}));
    EXPECT_EQ(fixture.Values(R"(NDS:\\TREE\s\??\app)", "Description"), "of Japan");
    EXPECT_EQ(fixture.Values(R"(NDS:\\TREE\s\??~2\app)", "Description"), "of China");
    EXPECT_EQ(fixture.Values("All.S", "Member"), "App.??~2.S|??.S|App.??~2.S");
    EXPECT_EQ(fixture.Values("App.??~2.S", "ACL"), "App.??~2.S,[Entry Rights],1");
}

TEST(MemoryTree, NamesTheObjectsThatValuesReferTo) {
    DirectoryFixture fixture(
        "dn: cn=Team,ou=Staff,o=S\nmember: CN=bob,OU=staff,O=s\nmember: cn=Gone,ou=Staff,o=S\n"
        "member: cn=Ann\\, B.,ou=Staff,o=S\nmember: cn=Bob,ou=None,o=S\nmember: cn=Eve,ou=None,o=S\n"
        "member: cn=\xE6\x97\xA5,ou=Staff,o=S\nmember: o=S\nmember: .bob.STAFF.s\nmember:\n"
        "member: NDS:\\\\TREE\\S\\Staff\\Bob\nmember: cn=Bob,ou=Staff,o\nowner: no one\n"
        "description: Bob.Staff.S\n\n"
        "dn: cn=Bob,ou=Staff,o=S\ncn: Bob\n\ndn: cn=Ann\\, B.,ou=Staff,o=S\ncn: Ann\n\n"
        "dn: cn=\xE6\x97\xA5,ou=Staff,o=S\ncn: Sun\n");
    TreeDirectory& directory = fixture.directory;
    const Entry team = directory.LookUp("Team.Staff.S");
    const Lines members = {"Bob.Staff.S", "Ann, B\\..Staff.S", "?.Staff.S",
                           "S",           "Bob.Staff.S",       "Bob.Staff.S"};
    EXPECT_EQ(directory.ReferencedNames(team, "Member"), members);
    EXPECT_EQ(directory.ReferencedNames(team, "Owner"), Lines());
    EXPECT_EQ(directory.ReferencedNames(team, "Description"), Lines{"Bob.Staff.S"});
    EXPECT_EQ(ErrorOf([&] { directory.ReferencedNames(directory.LookUp("Bob.Staff.S"), "Member"); }),
              errors::kNoSuchValue);
}

// Names that stand in the file as they are keep their spelling, wherever they stand in it.
TEST(MemoryTree, NumbersNamesThatTheCodePageLacksAroundThoseOfTheirSiblings) {
    DirectoryFixture fixture(
        "dn: cn=\xD0\x96\xC3\xA9,o=S\ndescription: 1\n\ndn: cn=\xD0\x97\xC3\x89,o=S\ndescription: 2\n\n"
        "dn: cn=?\xC3\xA9,o=S\ndescription: 3\n\ndn: cn=?\xC3\xA9~3,o=S\ndescription: 4\n\n"
        "dn: cn=\xD0\x97\xC3\x89,o=T\ndescription: 5\n\n"
        "dn: cn=All,o=S\nmember: cn=\xD0\x96\xC3\x89,o=S\nmember: cn=?\xC3\x89,o=S\n"
        "member: cn=\xD0\x98\xC3\xA9,o=S\nmember: cn=\xD0\x98\xC3\xA9,o=U\n");
    std::string names;
    for (const Entry& entry : fixture.directory.Entries(R"(NDS:\\TREE\S)", {})) {
        EXPECT_EQ(fixture.directory.LookUp(entry.path).id, entry.id) << entry.path;
        names += entry.short_name + "|";
    }
    EXPECT_EQ(names, "?\xE9~2|?\xC9~4|?\xE9|?\xE9~3|All|");
    EXPECT_EQ(fixture.Values("?\xC9.T", "Description"), "5");
    // The third is no object, and must not be taken for "?\xE9" (nor the fourth for any).
    EXPECT_EQ(fixture.Values("All.S", "Member"), "?\xE9~2.S|?\xE9.S|?\xE9~1.S|?\xE9.U");
}

TEST(MemoryTree, FindsEachOfAHundredThousandSiblingsWhoseNamesTheCodePageLacks) {
    constexpr int kSiblings = 100'000;
    std::string ldif;
    for (int number = 0; number < kSiblings; ++number) {
        ldif += "dn: cn=";
        for (int digits = number, place = 0; place < 4; ++place, digits /= 32)
            ldif += {'\xD0', static_cast<char>(0x90 + digits % 32)};
        ldif += ",o=S\n\n";
    }
    DirectoryFixture fixture(ldif);
    const std::vector<Entry> entries = fixture.directory.Entries(R"(NDS:\\TREE\S)", {});
    ASSERT_EQ(entries.size(), static_cast<std::size_t>(kSiblings));
    EXPECT_EQ(entries.front().short_name, "????");
    EXPECT_EQ(entries.back().short_name, "????~100000");
    for (const Entry& entry : entries)
        ASSERT_EQ(fixture.directory.LookUp(entry.path).id, entry.id);
}

// Values of some megabytes, of each form, between small ones and within an object that is large altogether.
TEST(MemoryTree, KeepsValuesOfAnySize) {
    const std::string large(3'000'000, 'x');
    std::string base64;
    for (int line = 0; line < 50'000; ++line)
        base64 += "\n eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4";
    std::string ldif = "dn: cn=x,o=S\ndescription: first\ndescription: " + large +
                       "\nappCopyFiles::" + base64 +
                       "\ndescription: last\n\ndn: cn=y,o=S\ndescription: of y\n";
    for (int number = 0; number < 300; ++number)
        ldif += "title: " + std::string(10'000, static_cast<char>('a' + number % 26)) + "\n";
    DirectoryFixture fixture(ldif);
    EXPECT_TRUE(fixture.Values("x.S", "Description") == "first|" + large + "|last");
    EXPECT_TRUE(fixture.Values("x.S", "App:Copy Files") == large);
    EXPECT_EQ(fixture.Values("y.S", "Description"), "of y");
    const auto titles = fixture.directory.AttributeValues(fixture.directory.LookUp("y.S"), "Title");
    ASSERT_EQ(titles.size(), 300U);
    EXPECT_EQ(titles.back(), std::string(10'000, 'a' + 299 % 26));
}

TEST(MemoryTree, LoadsATreeAsDeepAsDirectoriesAreAndTellsTheLineOfADeeperDN) {
    std::string dn = "o=S";
    std::string path = R"(NDS:\\TREE\S)";
    for (int depth = 1; depth < 128; ++depth) {
        dn.insert(0, "ou=x,");
        path += "\\X";
    }
    const std::string rest = "\nobjectClass: organizationalUnit\nou: leaf\n\n";
    DirectoryFixture fixture("dn: " + dn + rest);
    EXPECT_EQ(fixture.Values(path, "OU"), "leaf");
    EXPECT_EQ(ErrorOf([&] { fixture.directory.FindEntry(path + "\\X"); }), errors::kNoSuchObject);
    for (const std::string deeper : {"ou=x,", "ou=a\\,b,"}) {
        DirectoryFixture too_deep("dn: o=S" + rest + "dn: " + deeper + dn + rest);
        const Error error = test::RaisedBy([&] { too_deep.directory.CurrentEntry(); });
        EXPECT_EQ(error.number(), errors::kDirectoryUnreadable);
        EXPECT_EQ(error.detail(), too_deep.LdifPath() + ", line 5: A DN of more than 128 components");
    }
}

// Each "\" of a path may be part of a name: what is tried must not be read from its beginning each time.
TEST(MemoryTree, FindsANameOfAMillionBackslashes) {
    const std::string name(1'000'000, '\\');
    std::string escaped;
    for (std::size_t i = 0; i < name.size(); ++i)
        escaped += "\\\\";
    DirectoryFixture fixture("dn: cn=" + escaped + ",o=S\nobjectClass: user\ncn: found\n");
    EXPECT_EQ(fixture.Values(R"(NDS:\\TREE\S\)" + name, "CN"), "found");
}

TEST(MemoryTree, TellsTheLineOfAFault) {
    const std::pair<const char*, const char*> cases[] = {
        {"dn: o=S\n\ndn: cn=a,o=S\n\ndn: CN=A, o=s\n",
         ", line 5: An object of this path stands in the file before"},
        {"dn: cn=\xD0\x96x,o=S\n\ndn: cn=\xD0\x97x,o=S\n\ndn: CN=\xD0\x96X,O=S\n",
         ", line 5: An object of this path stands in the file before"},
        {"dn:\n\ndn:\n", ", line 3: An object of this path stands in the file before"},
        {"dn: cn=schema\n\ndn: cn=Schema\n", ", line 3: An object of this path stands in the file before"},
        {"\ndn: nonsense\n", ", line 2: Not a DN"},
        {"dn: cn=a,o\n", ", line 1: Not a DN"},
        {"dn: cn=schema\nobjectClasses: ( 1.2 NAME 'a' )\nattributeTypes: x\n",
         ", line 3: Not an attribute type: Missing opening parenthesis"},
    };
    for (const auto& [ldif, expected] : cases) {
        DirectoryFixture fixture(ldif);
        const Error error = RaisedBy([&] { fixture.directory.CurrentEntry(); });
        EXPECT_EQ(error.number(), errors::kDirectoryUnreadable) << ldif;
        EXPECT_EQ(error.detail(), fixture.LdifPath() + expected);
    }
}

}  // namespace
}  // namespace zorvel::test
