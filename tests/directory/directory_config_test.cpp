// What Directory.toml says, and how its faults are told.
#include "directory/directory_config.h"

#include <gtest/gtest.h>

#include "directory/directory_fixture.h"

namespace zorvel::test {
namespace {

TEST(DirectoryConfig, ListsTheTreesInTheirOrder) {
    const TestShell shell;
    shell.folder.Write("directory.TOML",
                       "preferred = 'CORP_TREE'\n[[tree]]\nname = 'CORP_TREE'\nldif = 'Trees/a.ldif'\n"
                       "[[tree]]\nname = 'Caf\xC3\xA9'\nldif = 'Trees\\b.ldif'\n");
    const DirectoryConfig config = ReadDirectoryConfig(shell.files);
    EXPECT_EQ(config.preferred, "CORP_TREE");
    ASSERT_EQ(config.trees.size(), 2U);
    EXPECT_EQ(config.trees[0].name, "CORP_TREE");
    EXPECT_EQ(config.trees[0].ldif, shell.files.Path(R"(Trees\a.ldif)"));
    EXPECT_EQ(config.trees[1].name, "Caf\xE9");
    EXPECT_EQ(config.trees[1].ldif, shell.files.Path(R"(Trees\b.ldif)"));
}

TEST(DirectoryConfig, TellsLineAndColumnOfAFault) {
    const std::pair<std::string, std::string> cases[] = {
        {"preferred = 5\n", ", line 1, column 13: preferred is no text"},
        {"\ntree = 5\n", ", line 2, column 8: \"tree\" is no list of tables: write [[tree]]"},
        {"tree = [5]\n", ", line 1, column 9: A tree is a table: write [[tree]]"},
        {"[[tree]]\nldif = 'x'\n", ", line 1, column 1: The tree has no name"},
        {"[[tree]]\nname = 'x'\n", ", line 1, column 1: The tree has no ldif and no ldap"},
        {"[[tree]]\nname = 'x'\nldif = ''\n", ", line 3, column 8: The path of the LDIF file is empty"},
        {"[[tree]]\nname = ''\nldif = 'x'\n", ", line 2, column 8: The name of the tree is empty"},
        {"[[tree]]\nname = 'a/b'\nldif = 'x'\n",
         R"(, line 2, column 8: The name of the tree holds "/", "\" or a control character)"},
        {"[[tree]]\nname = \"a\\u0000\"\nldif = 'x'\n",
         R"(, line 2, column 8: The name of the tree holds "/", "\" or a control character)"},
        {"[[tree]]\nname = '" + std::string(101, 'x') + "'\nldif = 'x'\n",
         ", line 2, column 8: The name of the tree is longer than 100 characters"},
        {"[[tree]]\nname = 'A'\nldif = 'x'\n[[tree]]\nname = 'a'\nldif = 'x'\n",
         ", line 5, column 8: Another tree has the same name"},
    };
    for (const auto& [text, expected] : cases) {
        const TestShell shell;
        shell.folder.Write("Directory.toml", text);
        EXPECT_EQ(RaisedBy([&shell] { ReadDirectoryConfig(shell.files); }).detail(),
                  shell.files.Path("Directory.toml") + expected)
            << text;
    }
}

TEST(DirectoryConfig, WithoutAUsableFileTheClientCannotBeInitialised) {
    TestShell shell;
    const auto opened = OpenDirectory(shell.files, shell.log);
    TreeDirectory& directory = *opened;
    EXPECT_NE(directory.NWCallsInit(), 0);
    shell.folder.Write("Directory.toml", "preferred = 'x'\n\nname = \n");
    EXPECT_NE(directory.NWCallsInit(), 0);
    const std::vector<std::string> log = shell.LogLines();
    ASSERT_EQ(log.size(), 2U);
    EXPECT_EQ(log[0], " ERROR: " + shell.files.Path("Directory.toml") + ": File not found");
    EXPECT_TRUE(log[1].starts_with(" ERROR: " + shell.files.Path("Directory.toml") + ", line 3, column "))
        << log[1];
    EXPECT_EQ(directory.TreeCount(), 0);

    shell.folder.Write("Directory.toml", "# no tree\n");
    EXPECT_EQ(directory.NWCallsInit(), 0);
    EXPECT_EQ(directory.TreeCount(), 0);
    std::string preferred;
    EXPECT_NE(directory.NWGetPreferredConnName(preferred), 0);
}

}  // namespace
}  // namespace zorvel::test
