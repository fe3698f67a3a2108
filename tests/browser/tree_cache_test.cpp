// The cached tree: walk, cache files and the lists.
#include <gmock/gmock.h>

#include "browser/tree_cache.h"
#include "browser/tree_refresh.h"
#include "directory/open_directory.h"
#include "platform/error.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/faulty_directory.h"
#include "support/file_size_limit.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

const std::string kRoot = R"(NDS:\\T1\[Root])";
const std::string kTreeCache = "TempData/T1.TreeCache";
const std::string kAppCache = "TempData/T1.AppCache";

class TreeCache : public testing::Test {
  protected:
    TreeCache() {
        using namespace test;
        FillProgramFolder(
            shell_.folder,
            LdifOrganization("SITE") + LdifUnit("APPS", "o=SITE") + LdifUnit("EMPTY", "o=SITE") +
                LdifApplication("Word", "ou=APPS,o=SITE") + LdifApplication("Calc", "ou=APPS,o=SITE") +
                LdifApplication("Word", "o=SITE") + LdifApplication("Stray", "cn=Word,o=SITE") +
                "dn: cn=Old,o=SITE\nobjectClass: alias\ncn: Old\n\n" + LdifOrganization("LAST"));
        directory_.NWCallsInit();
    }

    bool Load(bool force = false) { return loader_.RefreshOUView("T1", force); }

    std::vector<std::string> Applications() const {
        std::vector<std::string> applications;
        for (const AppRecord& application : lists_.AppList) {
            applications.push_back(std::string(application.Container.substr(8)) + ":" +
                                   std::string(application.Name));
        }
        return applications;
    }

    test::TestShell shell_;
    test::FaultyDirectory directory_{OpenDirectory(shell_.files, shell_.log)};
    TreeLists lists_;
    test::FakeOUViewDisplay display_;
    TreeRefresh loader_{shell_.services, directory_, lists_, display_};
};

TEST_F(TreeCache, AFreshReadWritesBothCachesAsTheyAreDocumented) {
    ASSERT_TRUE(Load());
    EXPECT_EQ(
        shell_.folder.Read(kTreeCache),
        "Zorvel Tree Cache - Do not modify!\r\n16/11/2026, 5\r\n"
        " 0,\"NDS:\\\\T1\\[Root]\",\"[Root]\",\"\",\"[Root]\", 2, 1\r\n"
        " 1,\"NDS:\\\\T1\\SITE\",\"Organization\",\"NDS:\\\\T1\\[Root]\",\"SITE\", 2, 2\r\n"
        " 2,\"NDS:\\\\T1\\SITE\\APPS\",\"Organizational Unit\",\"NDS:\\\\T1\\SITE\",\"APPS\", 0, 0\r\n"
        " 0,\"NDS:\\\\T1\\SITE\\EMPTY\",\"Organizational Unit\",\"NDS:\\\\T1\\SITE\",\"EMPTY\", 0, 0\r\n"
        " 0,\"NDS:\\\\T1\\LAST\",\"Organization\",\"NDS:\\\\T1\\[Root]\",\"LAST\", 0, 0\r\n");
    EXPECT_EQ(shell_.folder.Read(kAppCache),
              "Zorvel Applications Cache - Do not modify!\r\n16/11/2026, 3\r\n"
              "\"Word\",\"NDS:\\\\T1\\SITE\"\r\n\"Word\",\"NDS:\\\\T1\\SITE\\APPS\"\r\n"
              "\"Calc\",\"NDS:\\\\T1\\SITE\\APPS\"\r\n");
    EXPECT_EQ(lists_.counts.StatusPrefix, "Tree last read on 16/11/2026 17:28");
    // The root and the containers directly below it are expanded.
    EXPECT_THAT(display_.nodes,
                ElementsAre(Pair(1, true), Pair(2, true), Pair(3, false), Pair(4, false), Pair(5, true)));
    EXPECT_EQ(display_.cache_tree_title, "Refreshing 'T1' Tree cache..");
    EXPECT_FALSE(display_.cache_tree_open);
    EXPECT_THAT(
        display_.ou_texts,
        ElementsAre("(Refresh will begin in 5 seconds)", "(Refresh will begin in 4 seconds)",
                    "(Refresh will begin in 3 seconds)", "(Refresh will begin in 2 seconds)",
                    "(Refresh will begin in 1 second)", "[Root]", "SITE", "APPS.SITE", "EMPTY.SITE", "LAST"));
    EXPECT_EQ(display_.ou_count, "5");
    EXPECT_EQ(display_.app_count, "3");
    EXPECT_FALSE(shell_.activity.Busy);
}

TEST_F(TreeCache, ARestartShowsTheSameTreeWithoutTheDirectory) {
    ASSERT_TRUE(Load());
    const std::vector<std::string> applications = Applications();
    EXPECT_THAT(applications, ElementsAre("\\SITE:Word", "\\SITE\\APPS:Word", "\\SITE\\APPS:Calc"));
    lists_.Select(lists_.AppList[1], true);
    directory_.faults.error_600_everywhere = true;
    shell_.clock.now.day = 20;
    ASSERT_TRUE(Load());
    EXPECT_EQ(Applications(), applications);
    EXPECT_EQ(lists_.counts.AppCount, 3);
    EXPECT_EQ(lists_.counts.SelectedCount, 0);
    EXPECT_EQ(lists_.OUList[1].ChildApps, 2);
    EXPECT_EQ(NodeText(lists_.OUList[0]), "[Root]");
    EXPECT_EQ(NodeText(lists_.OUList[2]), "APPS (2)");
    EXPECT_EQ(lists_.counts.StatusPrefix, "Using cached Tree from 16/11/2026");
    EXPECT_EQ(display_.nodes[1], std::make_pair(std::size_t{2}, false));
}

TEST_F(TreeCache, AnOldCacheIsRereadOnlyWhenTheUserWantsIt) {
    struct Case {
        int day;
        bool prompt_enabled;
        bool asked;
        Answer answer;
        const char* prefix;
    };
    for (const Case& c : {Case{20, true, false, Answer::kYes, "Using cached Tree from 16/11/2026"},
                          Case{21, false, false, Answer::kYes, "Using cached Tree from 16/11/2026"},
                          Case{21, true, true, Answer::kNo, "Using cached Tree from 16/11/2026"},
                          Case{21, true, true, Answer::kYes, "Tree last read on 21/11/2026 17:28"}}) {
        shell_.clock.now = {2026, 11, 16, 17, 28, 5};
        ASSERT_TRUE(Load(true));
        shell_.options.controls.checkGeneral[8] = c.prompt_enabled ? 1 : 0;
        shell_.options.controls.txtCache = "4.9";
        shell_.clock.now.day = c.day;
        shell_.ui.boxes.clear();
        shell_.ui.answers = {c.answer};
        ASSERT_TRUE(Load());
        EXPECT_EQ(shell_.ui.boxes.size(), c.asked ? 1U : 0U);
        EXPECT_EQ(lists_.counts.StatusPrefix, c.prefix);
        if (c.asked) {
            EXPECT_EQ(shell_.ui.boxes[0].text,
                      "The Zorvel cache files for the 'T1' Tree are over 4 days old and depending on how "
                      "frequently your Tree changes, may no longer be accurate - Would you like to re-read "
                      "the Tree structure?");
        }
    }
}

TEST_F(TreeCache, AnAgeLimitThatIsNoNumberIsToldOnceAndTheCacheUsed) {
    ASSERT_TRUE(Load());
    shell_.options.controls.checkGeneral[8] = 1;
    shell_.options.controls.txtCache = "99999999999999";
    shell_.clock.now.year = 2027;
    EXPECT_TRUE(Load());
    EXPECT_TRUE(Load());
    EXPECT_THAT(shell_.OnlyBox(), HasSubstr("'99999999999999' of the option AutoTreeCacheRefresh"));
    EXPECT_EQ(lists_.counts.StatusPrefix, "Using cached Tree from 16/11/2026");
}

TEST_F(TreeCache, ABrokenCacheIsToldWithFileAndLine) {
    ASSERT_TRUE(Load());
    const std::string tree = shell_.folder.Read(kTreeCache);
    const std::string apps = shell_.folder.Read(kAppCache);
    const std::string root = " 0,\"NDS:\\\\T1\\[Root]\",\"[Root]\",\"\",\"[Root]\", 2, 1\r\n";
    struct Case {
        const char* what;
        std::string tree, apps;
        int number;
        const char* place;
    };
    for (const Case& c :
         {Case{"fewer announced", tree, "x\r\n16/11/2026, 2\r\n" + apps.substr(apps.find("\"Word")), 9,
               "AppCache, line 5: more records than the 2 announced"},
          Case{"no date", "x\r\nyesterday, 5\r\n", apps, 13, "TreeCache, line 2: 'yesterday' is not a date"},
          Case{"cut short", tree.substr(0, tree.size() - 20), apps, 62, "TreeCache, line 7: the file ends"},
          Case{"orphan", "x\r\n16/11/2026, 5\r\n" + root + " 1,\"p\",\"c\",\"gone\",\"n\", 0, 0\r\n", apps, 9,
               "TreeCache, line 4: the parent 'gone' does not stand before its child"},
          Case{"twice", "x\r\n16/11/2026, 5\r\n" + root + root, apps, 9, "line 4: the parent '' does"},
          Case{"far below none",
               "x\r\n16/11/2026, 5\r\n-2147483648" + root.substr(2) +
                   "-1,\"p\",\"c\",\"NDS:\\\\T1\\[Root]\",\"n\", 0, 0\r\n",
               apps, 6, "TreeCache, line 4: Overflow"},
          Case{"empty", "", apps, 62, "TreeCache, line 1: the file ends before its first record"},
          Case{"no root", "x\r\n16/11/2026, 0\r\n", apps, 9, "the cache holds no container"},
          Case{"huge", "x\r\n16/11/2026, 99999999999\r\n", apps, 6,
               "TreeCache, line 2: the number '99999999999' is too large"}}) {
        shell_.folder.Write(kTreeCache, c.tree);
        shell_.folder.Write(kAppCache, c.apps);
        shell_.ui.boxes.clear();
        EXPECT_FALSE(Load()) << c.what;
        const std::string text = "ERROR: Unexpected error # " + std::to_string(c.number) + " (" +
                                 DescriptionOf(c.number) + ") occurred in RefreshOUView";
        ASSERT_EQ(shell_.ui.boxes.size(), 1U) << c.what;
        EXPECT_EQ(shell_.ui.boxes[0].text, text) << c.what;
        EXPECT_EQ(shell_.ui.boxes[0].icon, MessageIcon::kExclamation);
        const std::vector<std::string> log = shell_.LogLines();
        EXPECT_EQ(log[log.size() - 2], " " + text) << c.what;
        EXPECT_THAT(shell_.ui.boxes[0].detail, HasSubstr(c.place)) << c.what;
        EXPECT_EQ(log.back(), " ERROR: " + shell_.ui.boxes[0].detail) << c.what;
        EXPECT_FALSE(shell_.activity.Busy);
    }
}

TEST_F(TreeCache, AMissingApplicationCacheLeavesTheContainers) {
    ASSERT_TRUE(Load());
    std::filesystem::remove(shell_.folder.path() / kAppCache);
    EXPECT_FALSE(Load());
    EXPECT_EQ(lists_.OUList.size(), 5U);
    EXPECT_THAT(lists_.AppList, IsEmpty());
    EXPECT_EQ(lists_.counts.AppCount, 3);  // what the containers add up to
}

TEST_F(TreeCache, EscapeStopsTheWalkAndKeepsWhatWasRead) {
    int containers = 0;
    shell_.ui.on_events = [&] {
        if (display_.ou_texts.back() == "SITE" && ++containers == 1) shell_.activity.UserInterrupt = true;
    };
    ASSERT_TRUE(Load());
    EXPECT_EQ(lists_.OUList.size(), 2U);
    EXPECT_FALSE(shell_.activity.UserInterrupt);
    EXPECT_THAT(shell_.folder.Read(kTreeCache), HasSubstr("16/11/2026, 2\r\n"));

    // Until a whole read replaces them, whoever loads them is warned.
    shell_.ui.on_events = {};
    std::vector<std::string> told;
    shell_.log.on_detail = [&](std::string_view text) { told.emplace_back(text); };
    for (const bool whole : {false, true}) {
        if (whole) {
            ASSERT_TRUE(Load(true));
        }
        told.clear();
        ASSERT_TRUE(Load());
        EXPECT_EQ(lists_.OUList.size(), whole ? 5U : 2U);
        if (whole) {
            EXPECT_THAT(told, IsEmpty());
        } else {
            EXPECT_THAT(told, ElementsAre(HasSubstr("'T1' holds only what was read until")));
            EXPECT_THAT(shell_.LogLines().back(), StartsWith(" WARNING: The cache of 'T1'"));
        }
    }
}

TEST_F(TreeCache, ATreeThatIsGivenUpAtTheEndOfTheProgramKeepsItsCaches) {
    ASSERT_TRUE(Load());
    const std::string tree = shell_.folder.Read(kTreeCache);
    for (const char* moment : {"(Refresh will begin in 3 seconds)", "SITE"}) {
        shell_.activity = {};
        shell_.ui.on_events = [&] {
            if (display_.ou_texts.back() == moment)
                shell_.activity.UserInterrupt = shell_.activity.Closing = true;
        };
        EXPECT_FALSE(Load(true)) << moment;
        EXPECT_EQ(shell_.folder.Read(kTreeCache), tree);
        EXPECT_FALSE(display_.cache_tree_open);
    }
}

TEST_F(TreeCache, FilesThatDoNotBelongTogetherAreReadAnew) {
    ASSERT_TRUE(Load());
    const std::string apps = shell_.folder.Read(kAppCache);
    std::string renamed = apps;
    renamed.replace(renamed.find("Calc"), 4, "Cal2");
    const std::string fewer = apps.substr(0, apps.find("\"Calc\""));
    for (const auto& [files, mark] :
         {std::pair{renamed, true}, std::pair{fewer, true}, std::pair{fewer, false}}) {
        shell_.folder.Write(kAppCache, files);
        if (!mark) std::filesystem::remove(shell_.folder.path() / "TempData/T1.CacheMark");
        ASSERT_TRUE(Load());
        EXPECT_EQ(shell_.folder.Read(kAppCache), apps);
        EXPECT_EQ(lists_.AppList.back().Name, "Calc");
        EXPECT_THAT(shell_.LogLines(), Contains(HasSubstr("WARNING: The cache files of 'T1' do not belong")));
    }
    // Another date makes no other files of them.
    std::string tree = shell_.folder.Read(kTreeCache);
    shell_.folder.Write(kTreeCache, tree.replace(tree.find("16/11"), 2, "15"));
    ASSERT_TRUE(Load());
    EXPECT_EQ(lists_.counts.StatusPrefix, "Using cached Tree from 15/11/2026");
}

TEST_F(TreeCache, NamesThatTheCacheCannotHoldAreReadFromTheDirectory) {
    for (const auto& [dn, name, shown] : {std::tuple{"cn=a\\22b,o=SITE", "a\"b", "a\"b"},
                                          std::tuple{"cn=a\\0D\\0Ab,o=SITE", "a\r\nb", "a b"}}) {
        shell_.folder.Write("Trees/T1.ldif", test::LdifOrganization("SITE") + "dn: " + dn +
                                                 "\nobjectClass: appApplication\n\n");
        ASSERT_TRUE(Load(true));
        shell_.ui.boxes.clear();
        ASSERT_TRUE(Load());
        EXPECT_EQ(lists_.AppList.at(0).Name, name);
        EXPECT_THAT(shell_.ui.boxes, IsEmpty());
        EXPECT_THAT(shell_.LogLines(),
                    Contains(AllOf(StartsWith(" WARNING"),
                                   HasSubstr(std::string("'NDS:\\\\T1\\SITE\\") + shown + "'")))
                        .Times(2));
        shell_.log.Open(false);
    }
}

TEST_F(TreeCache, AFullDiskKeepsTheOldCachesAndTheTreeThatWasRead) {
    const std::string ldif = shell_.folder.Read("Trees/T1.ldif");
    for (const bool cached : {false, true}) {
        const std::string tree = cached ? shell_.folder.Read(kTreeCache) : "";
        shell_.folder.Write("Trees/T1.ldif", test::LdifOrganization("OTHER"));
        {
            const test::FileSizeLimit full_disk(100);
            EXPECT_TRUE(Load(true));
        }
        EXPECT_THAT(shell_.OnlyBox(), HasSubstr("# 61 (Disk full)"));
        EXPECT_EQ(lists_.OUList.back().Name, "OTHER");
        EXPECT_EQ(shell_.folder.Has(kTreeCache), cached);
        EXPECT_EQ(shell_.folder.Has(kAppCache), cached);
        if (cached) {
            EXPECT_EQ(shell_.folder.Read(kTreeCache), tree);
        }
        EXPECT_FALSE(display_.cache_tree_open);
        shell_.folder.Write("Trees/T1.ldif", ldif);
        ASSERT_TRUE(Load(true));
    }
}

TEST_F(TreeCache, ApplicationsAreFoundByContainerAndName) {
    ASSERT_TRUE(Load());
    EXPECT_EQ(lists_.FindApp(R"(NDS:\\T1\SITE)", "Word"), 1U);
    EXPECT_EQ(lists_.FindApp(R"(NDS:\\T1\SITE\APPS)", "Word"), 2U);
    EXPECT_EQ(lists_.FindApp(R"(NDS:\\T1\SITE\APPS)", "word"), 0U);
    EXPECT_EQ(lists_.FindApp(R"(NDS:\\T1\LAST)", "Word"), 0U);
    for (int i = 0; i < 300; ++i)
        lists_.AddApp(R"(NDS:\\T1\LAST)", "Late");
    EXPECT_EQ(lists_.FindApp(R"(NDS:\\T1\LAST)", "Late"), 4U);
    EXPECT_EQ(lists_.FindOU(R"(NDS:\\T1\LAST)"), 5U);
    EXPECT_EQ(lists_.FindOU("nowhere"), 0U);
}

}  // namespace
}  // namespace zorvel
