// What of Directory.toml a change touches, and what it leaves.
#include "directory/directory_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

using Tree = DirectoryConfig::Tree;
using Change = std::function<void(DirectoryText&)>;

class DirectoryTextTest : public testing::Test {
  protected:
    Tree Export(const std::string& name, const std::string& path = R"(Trees\x.ldif)") const {
        return {name, files_.Path(path), {}};
    }
    static Tree Server(const std::string& name) {
        LdapSettings servers;
        servers.urls = {"ldaps://edir1.example"};
        return {name, {}, servers};
    }
    std::string Changed(const std::string& text, const Change& change) const {
        DirectoryText edited(files_, text);
        change(edited);
        EXPECT_EQ(ParseDirectoryConfig(files_, edited.text()), edited.config());
        return edited.text();
    }
    // A change of tree A's settings.
    static Change Set(const std::function<void(Tree&)>& set) {
        return [set](DirectoryText& text) {
            Tree tree = text.config().trees.at(0);
            set(tree);
            text.Replace("A", tree);
        };
    }

    TempFolder folder_;
    Files files_{folder_.path()};
};

const std::string kServer =
    "# Our trees\n\n[[tree]]  # the live one\nname = 'A'\n  ldap = [  # two of them\n    'ldaps://e1',\n"
    "    'ldaps://e2' ]  # in this order\n# bind_dn = 'cn=old'\nodd = { x = [1,\n2] }\npage_size = 0x64\n\n"
    "# the other\n[[tree]]\nname = 'B'\nldif = 'b.ldif'  # kept\n# tail";

TEST_F(DirectoryTextTest, TouchesWhatItConcernsAndNothingElse) {
    const auto replaced = [](std::string text, const std::string& from, const std::string& to) {
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return at == std::string::npos ? text : text.replace(at, from.size(), to);
    };
    struct Case {
        std::string before;
        Change change;
        std::string after;
    };
    const std::string odd = "[[tree]]\r\n\"na\\u006De\" = \"\"\"\r\nA\"\"\" # \xC3\xA9 [[x]]\r\nldif = 'a'";
    const std::string marked = "\xEF\xBB\xBF[[tree]]\nname='A'\nldif='a'\n";
    const Case cases[] = {
        {kServer, Set([](Tree& tree) { tree.ldap->page_size = 250; }), replaced(kServer, "0x64", "250")},
        {kServer, Set([](Tree& tree) { tree.ldap->page_size = 500; }), replaced(kServer, "0x64", "500")},
        {kServer, Set([](Tree& tree) { tree.ldap->urls = {"ldapi://x"}; }),
         replaced(kServer, "[  # two of them\n    'ldaps://e1',\n    'ldaps://e2' ]", "[\"ldapi://x\"]")},
        {kServer, Set([](Tree& tree) { tree.ldap->bind_dn = "cn=M\xC3\xBCller\\, \\\"x,o=\xD0\x96"; }),
         replaced(kServer, "order\n", "order\nbind_dn = 'cn=M\xC3\xBCller\\, \\\"x,o=\xD0\x96'\n")},
        {kServer, Set([](Tree& tree) {
             tree.name = "It's \"A\"";
             tree.ldap->bases = {"o=A", ""};
             tree.ldap->bind_dn = "cn=x";
             tree.ldap->password_command = {"a b", "c\\d'", "\t"};
         }),
         replaced(replaced(kServer, "'A'", R"("It's \"A\"")"), "order\n",
                  "order\nbase = [\"o=A\", \"\"]\nbind_dn = \"cn=x\"\n"
                  R"(password_command = ["a b", "c\\d'", "\u0009"])"
                  "\n")},
        {kServer, [this](DirectoryText& text) { text.Replace("B", Server("B")); },
         replaced(kServer, "ldif = 'b.ldif'  # kept\n", "ldap = [\"ldaps://edir1.example\"]\n")},
        {kServer, Set([](Tree& tree) {
             tree = {"A", R"(\far\a.ldif)", {}};
         }),
         replaced(
             replaced(replaced(kServer, "'A'\n", "'A'\nldif = \"/far/a.ldif\"\n"),
                      "  ldap = [  # two of them\n    'ldaps://e1',\n    'ldaps://e2' ]  # in this order\n",
                      ""),
             "page_size = 0x64\n", "")},
        {kServer, [](DirectoryText& text) { text.Remove("A"); },
         "# Our trees\n\n# the other\n[[tree]]\nname = 'B'\nldif = 'b.ldif'  # kept\n# tail"},
        {kServer, [](DirectoryText& text) { text.Remove("B"); },
         kServer.substr(0, kServer.find("\n# the other"))},
        {kServer, [this](DirectoryText& text) { text.Add(Export("N\xE9")); },
         kServer + "\n\n[[tree]]\nname = \"N\xC3\xA9\"\nldif = \"Trees/x.ldif\"\n"},
        {"", [](DirectoryText& text) { text.Add(Server("S")); },
         "[[tree]]\nname = \"S\"\nldap = [\"ldaps://edir1.example\"]\n"},
        {odd, [](DirectoryText& text) { text.Prefer("A"); }, "preferred = \"A\"\r\n\r\n" + odd},
        {odd, [this](DirectoryText& text) { text.Add(Export("B")); },
         odd + "\r\n\r\n[[tree]]\r\nname = \"B\"\r\nldif = \"Trees/x.ldif\"\r\n"},
        {odd, Set([](Tree& tree) { tree = Server("B"); }),
         "[[tree]]\r\n\"na\\u006De\" = \"B\" # \xC3\xA9 [[x]]\r\nldap = [\"ldaps://edir1.example\"]\r\n"},
        {odd, [](DirectoryText& text) { text.Remove("A"); }, ""},
        {marked, [](DirectoryText& text) { text.Prefer("A"); },
         "\xEF\xBB\xBFpreferred = \"A\"\n\n[[tree]]\nname='A'\nldif='a'\n"},
        {"preferred = 'A' # x\n" + kServer, Set([](Tree& tree) { tree.name = "C"; }),
         "preferred = \"C\" # x\n" + replaced(kServer, "'A'", "\"C\"")},
        {"a = 1\npreferred = 'A' # x\n" + kServer, [](DirectoryText& text) { text.Prefer({}); },
         "a = 1\n" + kServer},
        {"preferred = 'B'\n" + kServer, [](DirectoryText& text) { text.Remove("B"); },
         kServer.substr(0, kServer.find("\n# the other"))},
        {"[[tree]]\nname = 'A'\nldif = 'a'\n[tree.more]\nx = 1\n\n[[tree]]\nname = 'B'\nldif = 'b'\n",
         [](DirectoryText& text) { text.Remove("A"); }, "[[tree]]\nname = 'B'\nldif = 'b'\n"},
    };
    for (const Case& test : cases) {
        try {
            EXPECT_EQ(Changed(test.before, test.change), test.after) << test.before;
        } catch (const Error& error) {
            ADD_FAILURE() << error.detail() << "\n" << test.before << "->\n" << test.after;
        }
    }
}

TEST_F(DirectoryTextTest, WhatCannotStandIsToldAndChangesNothing) {
    const std::string braces = "tree = [ { name = 'A', ldif = 'a' } ]\n";
    const std::tuple<std::string, Change, std::string> cases[] = {
        {kServer, Set([](Tree& tree) { tree.name = "b"; }), "Another tree has the same name"},
        {kServer, Set([](Tree& tree) { tree.ldap->urls = {"http://x"}; }),
         "'http://x' does not begin with ldap://, ldaps:// or ldapi:// and a server"},
        {kServer, [this](DirectoryText& text) { text.Add(Export("A")); }, "Another tree has the same name"},
        {kServer, [](DirectoryText& text) { text.Remove("Z"); }, ": There is no tree 'Z' any more"},
        {braces, [](DirectoryText& text) { text.Remove("A"); },
         ", line 1: A tree in braces can only be changed in a text editor"},
        {braces, [this](DirectoryText& text) { text.Add(Export("B")); }, "redefine"},
    };
    for (const auto& [before, change, expected] : cases) {
        folder_.Write("Directory.toml", before);
        EXPECT_THAT(RaisedBy([&, wanted = change] { ChangeDirectoryFile(files_, wanted); }).detail(),
                    testing::HasSubstr(expected));
        EXPECT_EQ(folder_.Read("Directory.toml"), before);
    }
    folder_.Write("Directory.toml", "[[tree]]\nname = 'A'\nldif = \n");
    EXPECT_THAT(RaisedBy([&] { ChangeDirectoryFile(files_, [](DirectoryText&) { FAIL(); }); }).detail(),
                testing::HasSubstr("Directory.toml, line 3, column "));
}

// Every prefix and every cut of a file with all that TOML has: refused, or changed to what was asked for.
TEST_F(DirectoryTextTest, DamagedFilesAreRefusedOrChangedRightly) {
    const std::string whole = "\xEF\xBB\xBFx.y.z = '''\n[[tree]]\n'''\r\npreferred = 'B'\n" + kServer +
                              "\n[tree.sub.deep]\n[other]\nq = [[1, {a = '}'}], \"\\\"#\"] #\n";
    int changed = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const std::string& text : {whole.substr(0, at), std::string(whole).erase(at, 3)}) {
            const Change changes[] = {
                [](DirectoryText& edited) { edited.Remove(edited.config().trees.at(0).name); },
                [this](DirectoryText& edited) { edited.Add(Server("New")); },
                [this](DirectoryText& edited) {
                    edited.Replace(edited.config().trees.at(0).name, Server("New"));
                },
                [](DirectoryText& edited) { edited.Prefer("A"); }};
            for (const Change& change : changes) {
                try {
                    Changed(text, change);
                    ++changed;
                } catch (const Error& error) {
                    EXPECT_EQ(error.number(), errors::kInvalidCall);
                } catch (const std::out_of_range&) {  // there is no tree left
                }
            }
        }
    }
    EXPECT_GT(changed, 300);
}

}  // namespace
}  // namespace zorvel::test
