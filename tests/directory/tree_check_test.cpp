// What the test of a tree tells.
#include "directory/tree_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/certificates.h"
#include "support/fakes.h"
#include "support/program_folder.h"

namespace zorvel::test {
namespace {

using testing::HasSubstr;

const std::string kTree = LdifOrganization("S\xC3\xA9") + LdifUnit("EMPTY", "o=S\xC3\xA9") +
                          LdifApplication("Word", "o=S\xC3\xA9", "appPath: x\n") +
                          LdifApplication("Calc", "ou=EMPTY,o=S\xC3\xA9") + LdifOrganization("BARE");

// The findings on a tree of these lines in Directory.toml, "state subject: text" a line.
std::string Findings(const std::string& lines, const std::string& ldif = kTree) {
    TestShell shell;
    AddSchema(shell.folder);
    shell.folder.Write("Trees/T.ldif", ldif);
    const std::string text = "[[tree]]\nname = 'T'\n" + lines;
    LdapHost host{shell.files, shell.log, {}};
    std::string found;
    for (const TreeFinding& finding : CheckTree(host, ParseDirectoryConfig(shell.files, text).trees.at(0)))
        found.append(StateName(finding.state)).append(" " + finding.subject + ": " + finding.text + "\n");
    return found;
}

TEST(TreeCheck, CountsWhatAnExportHolds) {
    EXPECT_THAT(Findings("ldif = 'Trees/T.ldif'\n"),
                testing::EndsWith("T.ldif\nok containers: 3\nok applications: 2\n"));
    EXPECT_THAT(Findings("ldif = 'Trees/T.ldif'\n", LdifOrganization("X")),
                HasSubstr("missing applications: none - is this the right place, and may it be read?\n"));
    EXPECT_THAT(Findings("ldif = 'Trees/T.ldif'\n", "dn: o=X\nwhat\n"),
                testing::MatchesRegex("failed file: .*T.ldif, line 2: .*\n"));
    EXPECT_THAT(Findings("ldif = 'none'\n"), HasSubstr("none: File not found"));
}

TEST(TreeCheck, TellsOfAServerWhatAnAuditNeeds) {
    const Slapd server(kTree);
    const std::string here = "ldap = ['" + server.url() + "']\n";
    EXPECT_THAT(
        Findings(here + "base = ['', 'o=S\xC3\xA9', 'o=BARE', 'o=GONE']\n"),
        testing::MatchesRegex(
            "ok server: ldapi://.*\nok encryption: local socket\nok identity: anonymous\nok paging: 500\n"
            "ok schema: [0-9]+ definitions with X-NDS_NAME\nok applications: 2 in the whole tree\n"
            "ok rights: [0-9]+ attribute.s. of 'cn=Word,o=S\xE9' can be read\n"
            "ok applications: 2 below 'o=S\xE9'\nok rights: .*\n"
            "missing applications: none below 'o=BARE' - is this the right place, and may it be read.\n"
            "failed applications: there is no 'o=GONE', or it may not be seen - check base\n"));
}

TEST(TreeCheck, TellsWhatIsMissing) {
    const std::pair<SlapdSettings, std::string> cases[] = {
        {{.access = "access to dn.subtree=\"cn=Word,o=S\xC3\xA9\" attrs=entry,objectClass,cn by * read\n"
                    "access to dn.subtree=\"cn=Word,o=S\xC3\xA9\" by * none\naccess to * by * read\n"},
         "failed rights: of 'cn=Word,o=S\xE9' nothing can be read but its name - ask the directory's"},
        {{.access = "limits * size.soft=1 size.hard=1 size.prtotal=1\naccess to * by * read\n"},
         "failed applications: ldapi://"},
        {{.access = "limits * size.soft=1 size.hard=1 size.prtotal=1\naccess to * by * read\n"},
         "the server sends no more than a part of its answer - ask"},
        {{.global = "access to dn.base=\"cn=Subschema\" by * none\naccess to * by * read\n"},
         "missing schema: the server does not show its schema - the one of this program is used"},
        {{.global = "access to dn.base=\"\" attrs=subschemaSubentry,supportedControl by * none\n"
                    "access to * by * read\n"},
         "missing paging: the server does not send long lists in pages - "},
        {{.global = "access to dn.base=\"\" attrs=subschemaSubentry,supportedControl by * none\n"
                    "access to * by * read\n"},
         "missing schema: the server does not show its schema - the one of this program is used"},
    };
    for (const auto& [settings, expected] : cases) {
        const Slapd server(kTree, settings);
        EXPECT_THAT(Findings("ldap = ['" + server.url() + "']\n"), HasSubstr(expected));
    }
}

TEST(TreeCheck, TellsHowWellTheConnectionIsProtected) {
    const TempFolder folder;
    const Certificates certificates(folder);
    const std::string tls = "ldaps://127.0.0.1:" + std::to_string(FreePort());
    const std::string plain = "ldap://127.0.0.1:" + std::to_string(FreePort());
    const Slapd server(kTree, {.global = certificates.ServerLines("server", "IP:127.0.0.1", "2"),
                               .addresses = {tls, plain}});
    const std::string trust = "ca_file = '" + certificates.Path("ca.pem") + "'\n";
    EXPECT_THAT(Findings("ldap = ['" + tls + "']\n" + trust), HasSubstr("ok encryption: TLS 1.3\n"));
    EXPECT_THAT(Findings("ldap = ['" + plain + "']\nstart_tls = true\n" + trust),
                HasSubstr("ok encryption: TLS 1.3\n"));
    EXPECT_THAT(Findings("ldap = ['" + plain + "']\n"), HasSubstr("missing encryption: none - what is read"));
    EXPECT_THAT(
        Findings("ldap = ['" + tls + "']\n"),
        testing::MatchesRegex("failed server: .*is signed by an authority that is not trusted here.*\n"));
}

}  // namespace
}  // namespace zorvel::test
