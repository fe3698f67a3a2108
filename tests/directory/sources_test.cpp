// A tree that a server holds answers as its export does.
#include <gtest/gtest.h>

#include "directory/directory_fixture.h"
#include "support/slapd.h"

namespace zorvel::test {
namespace {

constexpr std::string_view kTree =
    "dn: o=SITE\nobjectClass: organization\no: SITE\n\n"
    "dn: ou=APPS,o=SITE\nobjectClass: organizationalUnit\nou: APPS\n\n"
    "dn: cn=Word,ou=APPS,o=SITE\nobjectClass: top\nobjectClass: appApplication\ncn: Word\n"
    "appPath: C:\\\\W\\\\word.exe\nappIconOrder: 0012\nappFlags: -5\nappMacros:: AAEC/w==\nappCaption:: "
    "UsOpc3Vtw6kg0JY=\n"
    "appGUID:: AAEC/w==\naCL: 3#entry#cn=Joe,o=SITE#appAssociations\naCL: 3#entry#[Public]#x#y\n"
    "aCL: 3#subtree#cn=Gone,o=SITE#appAssociations\naCL: no value of that form\n\n"
    "dn: cn=Reader 7.0\\, \\22new\\22,ou=APPS,o=SITE\nobjectClass: appApplication\ncn: Reader 7.0, "
    "\"new\"\n\n"
    "dn: cn=a\\5Cb,ou=APPS,o=SITE\nobjectClass: appApplication\ncn: a\\b\n\n"
    "dn: cn=\\#1 *(x)\\+y,ou=APPS,o=SITE\nobjectClass: appApplication\ncn: #1 *(x)+y\n\n"
    "dn: ou=a,ou=APPS,o=SITE\nobjectClass: organizationalUnit\nou: a\n\n"
    "dn: cn=b,ou=a,ou=APPS,o=SITE\nobjectClass: appApplication\ncn: b\n\n"
    "dn:: b3U9TcOcTEwsbz1TSVRF\nobjectClass: organizationalUnit\nou:: TcOcTEw=\n\n"
    "dn:: Y249xb3DqWJhLG91PU3DnExMLG89U0lURQ==\nobjectClass: appApplication\ncn:: xb3DqWJh\n\n"
    "dn:: Y2490JYsbz1TSVRF\nobjectClass: appApplication\ncn:: 0JY=\n\n"
    "dn:: Y2490Kksbz1TSVRF\nobjectClass: appApplication\ncn:: 0Kk=\n\n"
    "dn: cn=Link,o=SITE\nobjectClass: alias\nobjectClass: extensibleObject\ncn: Link\naliasedObjectName: "
    "o=SITE\n\n"
    "dn: cn=Joe,o=SITE\nobjectClass: user\ncn: Joe\nsn: J\n\n"
    "dn: cn=PC1,o=SITE\nobjectClass: workstation\ncn: PC1\n\n"
    "dn: cn=Team,o=SITE\nobjectClass: group\ncn: Team\nmember: cn=Joe,o=SITE\nmember: cn=Gone,o=SITE\n"
    "member: cn=Word,ou=APPS,o=SITE\n\n"
    "dn: c=SE\nobjectClass: country\nc: SE\n";

// What `operation` gives, or the number of its error.
template <typename Operation>
std::string Outcome(Operation operation) {
    try {
        return operation();
    } catch (const Error& error) {
        return "error " + std::to_string(error.number());
    }
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += text + '|';
    return joined;
}

// Everything that a directory says of the object that a path or a full name names.
std::string Answers(Directory& directory, const std::string& place) {
    std::string answers = place + "\n" + directory.FullName(place) + "\n";
    answers += Outcome([&] {
        const Entry entry = directory.LookUp(place);
        const ObjectDescription description = directory.Describe(entry);
        std::string said = entry.path + "|" + entry.short_name + "|" + entry.class_name + "|" +
                           description.kind_name + "|" + directory.FullNameOf(entry) + "\n";
        for (const std::string& name : directory.AttributeNames(entry)) {
            said += name + " (" + std::string(directory.AttributeSyntax(entry, name)) + ") " +
                    Outcome([&] { return Joined(directory.AttributeValues(entry, name)); }) + " -> " +
                    Outcome([&] { return Joined(directory.ReferencedNames(entry, name)); }) + "\n";
            int handle = 0;
            if (directory.NWDSOpenStream(1, "." + directory.FullNameOf(entry), name, 1, handle) != 0)
                continue;
            std::string bytes;
            directory.ReadFile(handle, directory.GetFileSize(handle), bytes);
            directory.CloseHandle(handle);
            said += "stream: " + bytes + "\n";
        }
        return said;
    });
    return answers;
}

std::vector<std::string> PathsBelow(Directory& directory, const std::string& path) {
    std::vector<std::string> paths;
    for (const Entry& entry : directory.Entries(path, {})) {
        paths.push_back(entry.path);
        for (std::string& below : PathsBelow(directory, entry.path))
            paths.push_back(std::move(below));
    }
    return paths;
}

// The trees TREE (the export) and LIVE (a server with its content) in one directory.
struct TwoTrees {
    DirectoryFixture fixture;
    Slapd server;

    explicit TwoTrees(std::string_view ldif) : fixture(ldif), server(std::string(ldif)) {
        signal(SIGPIPE, SIG_IGN);  // as the programs do
        fixture.shell.folder.Write("Directory.toml",
                                   "[[tree]]\nname = \"TREE\"\nldif = \"Trees/TREE.ldif\"\n"
                                   "[[tree]]\nname = \"LIVE\"\nldap = [\"" +
                                       server.url() + "\"]\n");
        EXPECT_EQ(fixture.directory.NWCallsInit(), 0);
    }

    // What the tree says of itself, under the name TREE.
    std::string All(std::string tree) {
        Directory& directory = fixture.directory;
        directory.SetCurrentObject(RootPath(tree));
        const std::vector<std::string> paths = PathsBelow(directory, RootPath(tree));
        std::string all;
        for (const std::string& path : paths) {
            directory.SetCurrentObject(RootPath(tree));
            all += Answers(directory, path) + Answers(directory, directory.FullName(path));
        }
        for (std::size_t at = all.find(tree); at != std::string::npos; at = all.find(tree, at + 1))
            all.replace(at, tree.size(), "TREE");
        return all;
    }
};

TEST(Sources, AServerAnswersAsItsExportDoes) {
    TwoTrees trees(kTree);
    const std::string exported = trees.All("TREE");
    EXPECT_GT(exported.size(), 3000U);
    EXPECT_EQ(trees.All("LIVE"), exported);
}

}  // namespace
}  // namespace zorvel::test
