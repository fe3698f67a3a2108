// What becomes of a directory server that cannot be had, will not, or breaks off.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "directory/directory_fixture.h"
#include "platform/interruption.h"
#include "support/certificates.h"
#include "support/slapd.h"
#include "support/slow_proxy.h"

namespace zorvel::test {
namespace {

using testing::HasSubstr;

constexpr std::string_view kTree =
    "dn: o=SITE\nobjectClass: organization\no: SITE\n\n"
    "dn: cn=zorvel,o=SITE\nobjectClass: user\ncn: zorvel\nuserPassword: right\n\n"
    "dn: cn=Word,o=SITE\nobjectClass: appApplication\ncn: Word\nappPath: x\n\n"
    "dn: cn=Calc,o=SITE\nobjectClass: appApplication\ncn: Calc\nappPath: y\n";

// A session whose only tree is LIVE.
struct LiveTree {
    TestShell shell;
    int waits = 0;
    bool escape = false;
    std::optional<std::string> password;
    std::unique_ptr<TreeDirectory> directory;

    // `lines` describe the tree in Directory.toml.
    explicit LiveTree(const std::string& lines) {
        AddSchema(shell.folder);
        shell.folder.Write("Directory.toml", "[[tree]]\nname = \"LIVE\"\n" + lines);
        const LdapPorts ports{[this] {
                                  ++waits;
                                  if (escape) throw Interrupted{};
                              },
                              [this](std::string_view, std::string_view) { return password; }};
        directory = OpenDirectory(shell.files, shell.log, ports);
        EXPECT_EQ(directory->NWCallsInit(), 0) << directory->InitialisationFailure();
    }

    // The detail of the error that opening the tree raises; empty when it opens.
    std::string Opened() {
        try {
            directory->SetCurrentObject(RootPath("LIVE"));
            return {};
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), errors::kDirectoryUnreadable);
            return error.detail();
        }
    }
    std::string Path(const std::string& name) {
        return Outcome([&] {
            const Entry entry = directory->LookUp("NDS:\\\\LIVE\\SITE\\" + name);
            return directory->AttributeValues(entry, "App:Path").front();
        });
    }
    template <typename Operation>
    static std::string Outcome(Operation operation) {
        try {
            return operation();
        } catch (const Error& error) {
            return std::to_string(error.number()) + " " + error.detail();
        }
    }
};

TEST(LdapFailures, SayWhyTheServerCannotBeHadAndWhatToDo) {
    Slapd server{std::string(kTree),
                 {.access = "access to attrs=userPassword by * auth\naccess to * by * read\n"}};
    SlowProxy silent(server.folder().path() / "socket");
    silent.stalled = true;
    const std::string closed = "ldap://127.0.0.1:" + std::to_string(FreePort());
    const std::string here = "ldap = ['" + server.url() + "']\n";
    const std::string bound = here + "bind_dn = 'cn=zorvel,o=SITE'\n";
    const std::pair<std::string, std::string> cases[] = {
        {"ldap = ['" + closed + "']\n",
         closed + ": no server listens at this address - check address and port, and that the server runs"},
        {"ldap = ['ldap://no-such-host.invalid']\n",
         "ldap://no-such-host.invalid: the server's name cannot be found ("},
        {"ldap = ['" + silent.url() + "']\nconnect_timeout = 1\nanswer_timeout = 1\n",
         silent.url() + ": the server did not answer within 1 second(s) - "},
        {"ldap = ['" + silent.url("ldaps") + "']\nconnect_timeout = 1\n",
         silent.url("ldaps") + ": the server did not answer within 1 second(s) - "},
        {"ldap = ['" + closed + "', '" + server.url() +
             "']\nbind_dn = 'cn=zorvel,o=SITE'\n"
             "password_command = ['echo', 'wrong']\n",
         "the server does not accept 'cn=zorvel,o=SITE' with this password - check bind_dn and the password"},
        {bound + "password_command = ['false']\n", "password_command 'false' failed"},
        {bound + "password_command = ['no-such-program']\n",
         "password_command 'no-such-program': No such file"},
        {bound + "password_file = 'none'\n", "password_file: "},
        {bound + "password_command = ['echo']\n",
         "the password is empty, which servers take for an anonymous bind"},
        {bound, "Nobody gave the password of 'cn=zorvel,o=SITE'"},
        {"ldap = ['ldap://edir1.example']\nbind_dn = 'cn=zorvel,o=SITE'\npassword_command = ['echo', 'x']\n",
         "a password would cross the network for all to read - use ldaps://, or start_tls = true"},
    };
    for (const auto& [lines, expected] : cases) {
        LiveTree tree(lines);
        EXPECT_THAT(tree.Opened(), HasSubstr(expected)) << lines;
    }
    LiveTree right(bound + "password_command = ['echo', 'right']\n");
    EXPECT_EQ(right.Opened(), "");
    EXPECT_THAT(right.shell.LogLines().back(), HasSubstr("as 'cn=zorvel,o=SITE', encryption: local socket"));
    LiveTree asked(bound);
    asked.password = "right";
    EXPECT_EQ(asked.Opened(), "");
    EXPECT_EQ(asked.shell.folder.Read("Zorvel.log").find("right"), std::string::npos);
}

TEST(LdapFailures, SayWhatIsWrongWithACertificate) {
    const TempFolder folder;
    const Certificates certificates(folder);
    const Certificates others((TempFolder()));
    struct Case {
        std::string host;
        std::string days;
        bool trusted;
        std::string expected;
    };
    const Case cases[] = {
        {"IP:127.0.0.1", "2", true, ""},
        {"IP:127.0.0.1", "2", false, "is signed by an authority that is not trusted here - name the file"},
        {"IP:127.0.0.1", "-1", true,
         "the server's certificate has expired - ask the directory's administrator"},
        {"DNS:elsewhere.example", "2", true,
         "the server's certificate is made out for another name than '127.0.0.1'"},
    };
    for (const Case& test : cases) {
        const std::string tls = "ldaps://127.0.0.1:" + std::to_string(FreePort());
        const std::string plain = "ldap://127.0.0.1:" + std::to_string(FreePort());
        const Slapd server{
            std::string(kTree),
            {.global = certificates.ServerLines("server", test.host, test.days), .addresses = {tls, plain}}};
        const std::string trust = test.trusted ? "ca_file = '" + certificates.Path("ca.pem") + "'\n" : "";
        for (const std::string& lines :
             {"ldap = ['" + tls + "']\n", "ldap = ['" + plain + "']\nstart_tls = true\n"}) {
            LiveTree tree(lines + trust);
            const std::string opened = tree.Opened();
            EXPECT_THAT(opened, HasSubstr(test.expected)) << lines;
            if (test.expected.empty()) {
                EXPECT_EQ(opened, "");
                EXPECT_THAT(tree.shell.LogLines().back(), HasSubstr("encryption: TLS"));
            }
        }
    }
    const std::string plain = "ldap://127.0.0.1:" + std::to_string(FreePort());
    const Slapd without{std::string(kTree), {.addresses = {plain}}};
    LiveTree tree("ldap = ['" + plain + "']\nstart_tls = true\n");
    EXPECT_THAT(tree.Opened(), HasSubstr("the server refuses to encrypt the connection ("));
}

TEST(LdapFailures, ALostConnectionIsMadeAgainOnceAndAServerThatComesBackIsUsed) {
    Slapd server{std::string(kTree)};
    SlowProxy proxy(server.folder().path() / "socket");
    LiveTree tree("ldap = ['" + proxy.url() + "']\nanswer_timeout = 2\n");
    ASSERT_EQ(tree.Opened(), "");
    EXPECT_EQ(tree.Path("Word"), "x");
    proxy.cut_behind = 0;
    std::thread later([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        proxy.cut_behind = -1;
    });
    EXPECT_THAT(tree.Path("Calc"), testing::AnyOf("y", HasSubstr("600 ")));
    later.join();
    EXPECT_EQ(tree.Path("Calc"), "y");
    server.Stop();
    EXPECT_THAT(tree.Path("Word"), HasSubstr("600 " + proxy.url() + ": "));
    server.Start();
    EXPECT_EQ(tree.Path("Word"), "x");
    proxy.stalled = true;
    EXPECT_THAT(tree.Path("Calc"), HasSubstr("did not answer within 2 second(s) - try again later"));
}

TEST(LdapFailures, ABusyServerIsAskedAgainOnceAndAReferralIsToldOnce) {
    Slapd server{std::string(kTree) +
                 "\ndn: ou=Far,o=SITE\nobjectClass: referral\nobjectClass: extensibleObject\nou: Far\n"
                 "ref: ldap://far.example/ou=Far,o=SITE\n"};
    SlowProxy proxy(server.folder().path() / "socket");
    LiveTree tree("ldap = ['" + proxy.url() + "']\n");
    ASSERT_EQ(tree.Opened(), "");
    EXPECT_EQ(tree.Path("Word"), "x");
    proxy.busy = 1;
    EXPECT_EQ(tree.Path("Calc"), "y");
    proxy.busy = 2;
    EXPECT_THAT(tree.Path("Word"), HasSubstr("the server is busy - try again later"));
    proxy.busy = 0;
    const auto count = [&tree](std::string_view text) {
        const std::vector<std::string> lines = tree.shell.LogLines();
        return std::count_if(lines.begin(), lines.end(), [text](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    };
    EXPECT_EQ(count("is busy - try again later - asking again"), 2);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(tree.directory->Entries("NDS:\\\\LIVE\\SITE", kApplicationClass).size(), 2U);
    EXPECT_EQ(count("WARNING: A part of 'LIVE' is on the server 'far.example', which is not asked"), 1);
}

TEST(LdapFailures, AWaitEndsWhenTheUserWantsItTo) {
    Slapd server{std::string(kTree)};
    SlowProxy proxy(server.folder().path() / "socket");
    LiveTree tree("ldap = ['" + proxy.url() + "']\n");
    ASSERT_EQ(tree.Opened(), "");
    proxy.stalled = true;
    tree.escape = true;
    EXPECT_THROW(tree.Path("Word"), Interrupted);
    LiveTree another("ldap = ['" + proxy.url() + "']\n");
    another.escape = true;
    EXPECT_THROW(another.Opened(), Interrupted);
}

TEST(LdapFailures, LimitsAndRightsNeverShortenAListInSilence) {
    std::string ldif(kTree);
    for (int i = 0; i < 40; ++i)
        ldif += "\ndn: cn=A" + std::to_string(i) + ",o=SITE\nobjectClass: appApplication\ncn: A" +
                std::to_string(i) + "\n";
    const auto count = [](LiveTree& tree) {
        return LiveTree::Outcome([&] {
            return std::to_string(tree.directory->Entries("NDS:\\\\LIVE\\SITE", kApplicationClass).size());
        });
    };
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"", "page_size = 7\n", "42"},
        {"limits * size.soft=10 size.hard=10 size.prtotal=unlimited\n", "page_size = 7\n", "42"},
        {"limits * size.soft=10 size.hard=10 size.pr=4 size.prtotal=unlimited\n", "page_size = 7\n", "42"},
        {"limits * size.soft=10 size.hard=10 size.prtotal=disabled\n", "",
         "the server sends no more than a part"},
    };
    for (const auto& [limits, lines, expected] : cases) {
        const Slapd server{ldif, {.access = limits + "access to * by * read\n"}};
        LiveTree tree("ldap = ['" + server.url() + "']\n" + lines);
        ASSERT_EQ(tree.Opened(), "");
        EXPECT_THAT(count(tree), HasSubstr(expected)) << limits;
    }
    const Slapd server{
        ldif, {.access = "access to dn.exact=\"cn=Word,o=SITE\" by * disclose\naccess to * by * read\n"}};
    LiveTree tree("ldap = ['" + server.url() + "']\n");
    ASSERT_EQ(tree.Opened(), "");
    EXPECT_THAT(tree.Path("Word"), HasSubstr("70 "));
    EXPECT_EQ(tree.Path("Calc"), "y");
    EXPECT_THAT(tree.Path("Gone"), HasSubstr("601 "));
    EXPECT_THAT(tree.Path("A1"), HasSubstr("603 "));
}

}  // namespace
}  // namespace zorvel::test
