// The directory of LDIF trees as the program uses it: browsing, streams, reading anew and failing.
#include "directory/open_directory.h"

#include <gtest/gtest.h>

#include "directory/directory_fixture.h"

namespace zorvel::test {
namespace {

constexpr std::string_view kTree =
    "dn: o=SITE\nobjectClass: organization\n\n"
    "dn: ou=APPS,o=SITE\nobjectClass: organizationalUnit\n\n"
    "dn: cn=Word,o=SITE\nobjectClass: appApplication\nappMacros:: AAEC/w==\nappMacros: "
    "second\nappCopyFiles:\n"
    "appPath: x\n\n"
    "dn: cn=Link,o=SITE\nobjectClass: alias\n\n"
    "dn: cn=Joe,o=SITE\nobjectClass: user\n";

std::string ShortNames(TreeDirectory& directory, std::string_view filter) {
    std::string names;
    for (const Entry& entry : directory.Entries(R"(NDS:\\TREE\site)", filter))
        names += entry.short_name + " ";
    return names;
}

TEST(TreeDirectory, FiltersChildrenByClass) {
    DirectoryFixture fixture(kTree);
    fixture.directory.SetCurrentObject(R"(NDS:\\TREE\site)");
    EXPECT_EQ(ShortNames(fixture.directory, kContainerClasses), "APPS Link ");
    EXPECT_EQ(ShortNames(fixture.directory, kApplicationClass), "Word ");
    EXPECT_EQ(ShortNames(fixture.directory, "User,Country"), "Link Joe ");
    EXPECT_EQ(ShortNames(fixture.directory, ""), "APPS Word Link Joe ");
    EXPECT_EQ(fixture.directory.CurrentEntry().path, R"(NDS:\\TREE\SITE)");
    EXPECT_EQ(ErrorOf([&] { fixture.directory.Entries(R"(NDS:\\TREE\gone)", {}); }), errors::kNoSuchObject);
}

TEST(TreeDirectory, ReadsSingleValuesOfOtherObjectsInBetween) {
    DirectoryFixture fixture(kTree);
    TreeDirectory& directory = fixture.directory;
    const Entry word = directory.LookUp("Word.SITE");
    const std::vector<std::string> names = directory.AttributeNames(word);
    EXPECT_EQ(fixture.Values("Joe.SITE", "Object Class"), "user");
    EXPECT_EQ(ErrorOf([&] { fixture.Values("Joe.SITE", "App:Path"); }), errors::kNoSuchValue);
    EXPECT_EQ(fixture.Values("Word.SITE", "App:Path"), "x");
    EXPECT_EQ(directory.AttributeNames(word), names);
}

TEST(TreeDirectory, SpellsObjectsAndAttributesAsTheirOwnRecordsDo) {
    DirectoryFixture fixture(
        "dn: cn=A,OU=apps\nfooBar: 1\n\ndn: ou=APPS\nobjectClass: organizationalUnit\nFOOBAR: 2\n\n"
        "dn: ou=a\\ \nobjectClass: organizationalUnit\n");
    EXPECT_EQ(fixture.directory.LookUp("a.apps").path, R"(NDS:\\TREE\APPS\A)");
    EXPECT_EQ(fixture.directory.FullName(R"(NDS:\\TREE\apps\a)"), "A.APPS");
    const std::vector<std::string> below = {"fooBar"};
    EXPECT_EQ(fixture.directory.AttributeNames(fixture.directory.LookUp("A.APPS")), below);
    const std::vector<std::string> above = {"Object Class", "FOOBAR"};
    EXPECT_EQ(fixture.directory.AttributeNames(fixture.directory.LookUp("APPS")), above);
    EXPECT_EQ(fixture.Values("APPS", "foobar"), "2");
    EXPECT_EQ(fixture.directory.LookUp("a ").short_name, "a ");
}

TEST(TreeDirectory, ReadsStreamsInPieces) {
    DirectoryFixture fixture(kTree);
    TreeDirectory& directory = fixture.directory;
    std::uint32_t context = 0;
    EXPECT_EQ(directory.NWDSCreateContextHandle(context), 0);
    int handle = 0;
    std::string bytes;
    ASSERT_EQ(directory.NWDSOpenStream(context, ".word.SITE", "App:Macros", 1, handle), 0);
    EXPECT_EQ(directory.GetFileSize(handle), 4U);
    directory.ReadFile(handle, 3, bytes);
    EXPECT_EQ(bytes, std::string("\0\1\2", 3));
    directory.ReadFile(handle, 100, bytes);
    EXPECT_EQ(bytes, "\xFF");
    int empty = 0;
    ASSERT_EQ(directory.NWDSOpenStream(context, ".Word.SITE", "APP:COPY FILES", 1, empty), 0);
    EXPECT_EQ(directory.GetFileSize(empty), 0U);
    directory.ReadFile(empty, 0, bytes);
    EXPECT_EQ(bytes, "");
    directory.CloseHandle(empty);
    directory.CloseHandle(handle);
    EXPECT_EQ(ErrorOf([&] { directory.ReadFile(handle, 1, bytes); }), errors::kInvalidCall);
    EXPECT_EQ(ErrorOf([&] { directory.CloseHandle(-1); }), errors::kInvalidCall);

    EXPECT_NE(directory.NWDSOpenStream(context, ".Gone.SITE", "App:Macros", 1, handle), 0);
    EXPECT_NE(directory.NWDSOpenStream(context, ".Word.SITE", "App:INI Settings", 1, handle), 0);
    EXPECT_NE(directory.NWDSOpenStream(context, ".Word.SITE", "App:Path", 1, handle), 0);
}

TEST(TreeDirectory, ReadsATreeAnewWhenItsFileChangedAndItsRootIsChosen) {
    DirectoryFixture fixture(kTree);
    TreeDirectory& directory = fixture.directory;
    const Entry old = directory.LookUp("Word.SITE");
    int handle = 0;
    ASSERT_EQ(directory.NWDSOpenStream(0, ".Word.SITE", "App:Macros", 1, handle), 0);

    fixture.Write("dn: cn=New,o=SITE\nobjectClass: appApplication\n");
    directory.SetCurrentObject(R"(NDS:\\TREE\SITE)");
    EXPECT_EQ(directory.LookUp("Word.SITE").id, old.id);
    directory.SetCurrentObject(RootPath("TREE"));
    EXPECT_EQ(directory.LookUp("New.SITE").class_name, "App:Application");
    EXPECT_EQ(ErrorOf([&] { directory.LookUp("Word.SITE"); }), errors::kNoSuchObject);
    EXPECT_EQ(ErrorOf([&] { directory.AttributeNames(old); }), errors::kNoSuchObject);
    EXPECT_EQ(ErrorOf([&] { directory.FullNameOf(old); }), errors::kNoSuchObject);
    EXPECT_EQ(directory.FullNameOf(directory.FindEntry(R"(NDS:\\TREE\site\NEW)")), "New.SITE");
    EXPECT_EQ(ErrorOf([&] { directory.Describe({~std::uint64_t{0}, "", "", ""}); }), errors::kNoSuchObject);
    std::string bytes;
    directory.ReadFile(handle, 4, bytes);
    EXPECT_EQ(bytes, std::string("\0\1\2\xFF", 4));
}

// Every operation says it; whoever tells the user logs it.
TEST(TreeDirectory, SaysWhyATreeCannotBeRead) {
    DirectoryFixture fixture("dn: o=SITE\nnonsense\n");
    TreeDirectory& directory = fixture.directory;
    int told = 0;
    directory.on_unreadable = [&] { ++told; };
    const std::function<void()> operations[] = {
        [&] { directory.CurrentEntry(); },
        [&] { directory.FullName("SITE"); },
        [&] { directory.SetCurrentObject(R"(NDS:\\TREE\SITE)"); },
    };
    for (const auto& operation : operations) {
        const Error error = RaisedBy(operation);
        EXPECT_EQ(error.number(), errors::kDirectoryUnreadable);
        EXPECT_EQ(error.detail(), fixture.LdifPath() + ", line 2: A line without a colon");
    }
    EXPECT_EQ(told, 3);

    fixture.Write(kTree);
    EXPECT_EQ(ErrorOf([&] { directory.CurrentEntry(); }), errors::kDirectoryUnreadable);
    directory.SetCurrentObject(RootPath("TREE"));
    EXPECT_EQ(directory.LookUp("Word.SITE").short_name, "Word");
}

TEST(TreeDirectory, RefusesATreeWithoutItsFileAtOnce) {
    DirectoryFixture fixture(kTree);
    fixture.shell.folder.Write("Directory.toml",
                               "[[tree]]\nname = 'TREE'\nldif = 'trees\\tree.LDIF'\n"
                               "[[tree]]\nname = 'NONE'\nldif = 'Trees/none.ldif'\n");
    TreeDirectory& directory = fixture.directory;
    ASSERT_EQ(directory.NWCallsInit(), 0);
    EXPECT_EQ(directory.TreeCount(), 2);
    EXPECT_EQ(directory.TreeName(1), "NONE");
    EXPECT_EQ(ErrorOf([&] { directory.TreeName(2); }), errors::kSubscript);
    directory.SetCurrentObject(RootPath("TREE"));
    EXPECT_EQ(RaisedBy([&] { directory.SetCurrentObject(RootPath("NONE")); }).detail(),
              fixture.shell.files.Path(R"(Trees\none.ldif)") + ": File not found");
    EXPECT_EQ(ErrorOf([&] { directory.SetCurrentObject(RootPath("tree")); }), errors::kDirectoryUnreadable);
    EXPECT_EQ(directory.LookUp("Word.SITE").path, R"(NDS:\\TREE\SITE\Word)");
}

TEST(TreeDirectory, SaysWhichSchemaIsMissing) {
    DirectoryFixture fixture(kTree);
    std::filesystem::remove(fixture.shell.folder.path() / "Trees/nds-schema.ldif");
    EXPECT_EQ(RaisedBy([&] { fixture.directory.CurrentEntry(); }).detail(),
              fixture.shell.files.Path(R"(Trees\nds-schema.ldif)") + ": File not found");
}

// The attributes that an analysis reads, under the names it uses.
TEST(BundledSchema, NamesTheAttributesOfApplications) {
    DirectoryFixture fixture(
        "dn: cn=x,o=S\nobjectClass: appApplication\nappAdministratorNotes: a\nappMacros: a\n"
        "appCopyFilesAlways: a\nappRegistrySettings: a\nappINISettingsAlways: a\nappTextFiles: a\n"
        "appEnvironmentSettings: a\nappWorkingDirectory: a\nappParameters: a\nappCaption: a\n"
        "appDescription: a\nzENAppPackageDescription: a\nappDefaultAssociationFlags: 1\n");
    std::string all;
    const Entry entry = fixture.directory.LookUp("x.S");
    for (const std::string& name : fixture.directory.AttributeNames(entry)) {
        all += name + "/" + std::string(fixture.directory.AttributeSyntax(entry, name)) + "\n";
    }
    EXPECT_EQ(
        all,
        "Object Class/String\nApp:Administrator Notes/NWStream\nApp:Macros/NWStream\n"
        "App:Copy Files Always/NWStream\nApp:Registry Settings/NWStream\nApp:INI Settings Always/NWStream\n"
        "App:Text Files/NWStream\nApp:Environment Settings/NWStream\nApp:Working Directory/String\n"
        "App:Parameters/String\nApp:Caption/String\nApp:Description/String\nZENAppPackageDescription/String\n"
        "App:Default Association Flags/Long\n");
}

}  // namespace
}  // namespace zorvel::test
