// The OU browser and the list of a container's applications, without a window.
#include "browser/ou_browser.h"

#include <gmock/gmock.h>

#include "browser/tree_refresh.h"
#include "directory/open_directory.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/program_folder.h"

namespace zorvel::test {
namespace {

class Unseen final : public OUBrowserDisplay {
    void ShowNodes() override {}
    void ShowMarks() override {}
    void ShowList() override {}
    void ShowItemSelection() override {}
    void ShowTitle() override {}
};

class Browser : public testing::Test {
  protected:
    Browser() {
        FillProgramFolder(shell_.folder, kTree);
        directory_.NWCallsInit();
        Load();
    }
    void Load() {
        FakeOUViewDisplay display;
        browser_.ClearNodes();
        ASSERT_TRUE(TreeRefresh(shell_.services, directory_, lists_, display, 0).RefreshOUView("T1", true));
        for (const auto& [number, expanded] : display.nodes)
            browser_.AddNode(number, expanded);
        browser_.ArrangeNodes();
    }
    // Another tree in the place of the one that the lists were read from.
    void Replace(const std::string& ldif) {
        shell_.folder.Write("Trees/T1.ldif", ldif);
        directory_.SetCurrentObject("NDS:\\\\T1\\[Root]");
    }
    std::size_t OU(const std::string& path) const { return lists_.FindOU("NDS:\\\\T1\\" + path); }
    void Click(const std::string& path) { browser_.ClickNode(OU(path)); }

    // The nodes, children in brackets: "*" ahead of a bold one, "x" behind a checked one, then "#" for light
    // blue and "~" for a toggled child.
    std::string Nodes(std::size_t parent = 0) const {
        std::string text;
        for (std::size_t row = 0; row < browser_.nodes().ChildCount(parent); ++row) {
            const std::size_t node = browser_.nodes().Child(parent, row);
            const std::string below = Nodes(node);
            text += (row == 0 ? "" : " ") + std::string(browser_.Bold(node) ? "*" : "");
            text += std::string(browser_.Record(node).Name) + (browser_.Checked(node) ? "x" : "");
            text += std::array{"", "#", "~"}.at(static_cast<std::size_t>(browser_.Colour(node)));
            if (!below.empty()) text += "(" + below + ")";
        }
        return text;
    }
    // The list, "+" ahead of a selected line, behind its titles.
    std::string List() const {
        std::string text = browser_.labCurrentOU + ":" + browser_.labApps;
        for (const OUBrowser::Item& item : browser_.items())
            text += (item.selected ? " +" : " ") + item.name;
        return text + (browser_.list_buttons_enabled ? "" : " disabled");
    }

    const std::string kTree =
        LdifOrganization("SITE") + LdifUnit("APPS", "o=SITE") + LdifUnit("EMPTY", "o=SITE") +
        LdifUnit("DEEP", "ou=EMPTY,o=SITE") + LdifUnit("BARE", "o=SITE") + LdifOrganization("ACME") +
        LdifApplication("Word", "ou=APPS,o=SITE") + LdifApplication("Excel", "ou=APPS,o=SITE") +
        LdifApplication("Paint", "ou=APPS,o=SITE") + LdifApplication("Deep", "ou=DEEP,ou=EMPTY,o=SITE") +
        LdifApplication("Tool", "o=ACME");
    TestShell shell_;
    std::unique_ptr<TreeDirectory> opened_ = OpenDirectory(shell_.files, shell_.log);
    TreeDirectory& directory_ = *opened_;
    TreeLists lists_;
    Unseen display_;
    OUBrowser browser_{shell_.services, directory_, lists_, display_, [this] { Load(); }};
};

TEST_F(Browser, RemembersTheSelectionsOfEachContainer) {
    Click("SITE\\APPS");
    EXPECT_EQ(List(), "APPS.SITE: 3 applications available, none selected. Word Excel Paint");
    browser_.SetSelected(1, 2, true);
    browser_.RefreshAppTitle();
    Click("ACME");
    EXPECT_EQ(List(), "ACME: 1 application available, none selected. Tool");
    browser_.SelectAllInOU();
    EXPECT_EQ(List(), "ACME: 1 application available, all selected. +Tool");
    EXPECT_EQ(Nodes(), "[Root](*ACME# SITE(*APPS# EMPTY(DEEP#) BARE))");
    EXPECT_EQ(lists_.counts.SelectedCount, 3);
    Click("SITE\\APPS");
    EXPECT_EQ(List(), "APPS.SITE: 3 applications available, 2 selected. Word +Excel +Paint");
    browser_.InvertSelectionInOU();
    EXPECT_EQ(List(), "APPS.SITE: 3 applications available, 1 selected. +Word Excel Paint");
    browser_.UnselectAllInOU();
    EXPECT_EQ(Nodes(), "[Root](*ACME# SITE(APPS# EMPTY(DEEP#) BARE))");
    Click("SITE\\BARE");
    EXPECT_EQ(List(), "BARE.SITE:No applications in this branch disabled");
}

TEST_F(Browser, SelectsTheWholeTreeAndFiltersIt) {
    Click("ACME");
    browser_.SelectAllInTree();
    EXPECT_EQ(Nodes(), "[Root](*ACME# SITE(*APPS# EMPTY(*DEEP#) BARE))");
    EXPECT_EQ(List(), "ACME: 1 application available, all selected. +Tool");
    browser_.HideEmptyOUs();
    EXPECT_EQ(browser_.labBrowser(), "OU Browser - FILTERED");
    EXPECT_EQ(Nodes(), "[Root](ACME# SITE(APPS# EMPTY(DEEP#)))");
    EXPECT_EQ(lists_.counts.SelectedCount, 5) << "what is selected stays so";
    browser_.ShowAllOUs();
    EXPECT_EQ(browser_.labBrowser(), "OU Browser");
    EXPECT_EQ(Nodes(), "[Root](ACME# SITE(APPS# EMPTY(DEEP#) BARE))");
    EXPECT_TRUE(browser_.StartsExpanded(OU("SITE")));
    EXPECT_FALSE(browser_.StartsExpanded(OU("SITE\\EMPTY")));
    browser_.UnselectAllInTree();
    EXPECT_FALSE(browser_.selection_exists);
    EXPECT_EQ(List(), "ACME: 1 application available, none selected. Tool");
}

TEST_F(Browser, ACheckMarksTheNodeAndItsDirectChildrenAlone) {
    browser_.CheckNode(OU("SITE"), true);
    EXPECT_EQ(Nodes(), "[Root]~(ACME# *SITEx(*APPSx# *EMPTYx(DEEP#) *BAREx))");
    browser_.CheckNode(OU("SITE"), false);
    EXPECT_EQ(Nodes(), "[Root]~(ACME# SITE(APPS# EMPTY(DEEP#) BARE))");
}

TEST_F(Browser, ReadsTheTreeAgainOnceTheUserIsSure) {
    Click("ACME");
    browser_.SelectAllInOU();
    Replace(LdifOrganization("NEW"));
    for (const Answer answer : {Answer::kNo, Answer::kYes}) {
        EXPECT_EQ(List(), "ACME: 1 application available, all selected. +Tool");
        shell_.ui.answers = {answer};
        browser_.ForceFullRefresh();
        EXPECT_EQ(shell_.ui.boxes.at(0).default_answer, Answer::kNo);
        EXPECT_EQ(shell_.OnlyBox(), "Re-reading the whole Tree in again may take a while - Are you sure?");
    }
    EXPECT_EQ(Nodes(), "[Root](NEW)");
    EXPECT_EQ(List(), "ACME:No applications in this branch disabled");
    EXPECT_FALSE(browser_.selection_exists);
}

TEST_F(Browser, OffersToReadTheTreeAgainWhenAContainerIsGone) {
    Replace(LdifOrganization("SITE"));
    for (const Answer answer : {Answer::kNo, Answer::kYes}) {
        shell_.ui.answers = {answer};
        Click("ACME");
        EXPECT_EQ(shell_.ui.boxes.at(0).default_answer, Answer::kNo);
        EXPECT_EQ(shell_.OnlyBox(),
                  "Zorvel encountered an error trying to access 'NDS:\\\\T1\\ACME'\n\nIt's likely that your "
                  "Tree structure has changed since Zorvel last cached it.  Would you like to refresh the "
                  "Zorvel Tree cache?");
        const bool refreshed = answer == Answer::kYes;
        EXPECT_EQ(Nodes(), refreshed ? "[Root](SITE)" : "[Root](ACME# SITE(APPS# EMPTY(DEEP#) BARE))");
        for (const char* line :
             {" ERROR: DS error 601 returned during Node click on 'NDS:\\\\T1\\ACME' - cached version of "
              "Tree likely out of date",
              refreshed ? "    User chose to refresh cache" : "    User chose NOT to refresh cache"})
            EXPECT_THAT(shell_.LogLines(), testing::Contains(line));
    }
}

TEST_F(Browser, KeepsTheSelectionWhenTheCacheLacksAnApplication) {
    Replace(LdifOrganization("ACME") + LdifApplication("Alpha", "o=ACME") +
            LdifApplication("Tool", "o=ACME"));
    browser_.SelectAllInTree();
    Click("ACME");
    EXPECT_EQ(shell_.ui.boxes.at(0).detail,
              "'NDS:\\\\T1\\ACME' holds applications that the cached version of the Tree does not know");
    EXPECT_EQ(shell_.OnlyBox(), "Error 9 (Subscript out of range) occurred in OU Browser node click.");
    EXPECT_EQ(List(), "ACME: 2 applications available, 1 selected. Alpha +Tool");
    EXPECT_EQ(lists_.counts.SelectedCount, 5);
}

}  // namespace
}  // namespace zorvel::test
