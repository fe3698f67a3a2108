// The OU browser and the application list in the main window, through clicks and keys.
#include <gmock/gmock.h>

#include <QAction>
#include <QComboBox>
#include <QListWidget>

#include "gui/main_window.h"
#include "gui/tool_tip.h"

namespace zorvel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class OUBrowserWindow : public MainWindowTest {
  protected:
    void SetUp() override { ASSERT_TRUE(Start()); }
};

TEST_F(OUBrowserWindow, RemembersSelectionsOfSeveralContainers) {
    ClickNode("APPS (3)");
    EXPECT_THAT(Items(), ElementsAre("Word", "Excel", "Paint"));
    EXPECT_EQ(Text("labCurrentOU"), "APPS.SITE");
    EXPECT_EQ(Text("labApps"), " 3 applications available, none selected.");
    ClickItem(0);
    ClickItem(2, Qt::ControlModifier);
    EXPECT_EQ(Text("labApps"), " 3 applications available, 2 selected.");
    ClickNode("ACME (1)");
    EXPECT_EQ(Text("labApps"), " 1 application available, none selected.");
    list().setFocus();
    PressKey(Qt::Key_Space);
    EXPECT_EQ(Text("labApps"), " 1 application available, all selected.");
    EXPECT_THAT(Status().toStdString(), StartsWith("Ready. 5 applications available, 3 selected."));
    ClickNode("APPS (3)");
    EXPECT_THAT(Items(), ElementsAre("+Word", "Excel", "+Paint"));
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " *ACME (1)", " SITE (0)", "  *APPS (3)", "  EMPTY (0)",
                                     "   DEEP (1)", "  BARE (0)"));
    EXPECT_TRUE(tabs().isTabEnabled(2));
    EXPECT_TRUE(tabs().isTabEnabled(3));
    EXPECT_TRUE(Menu("mnuFileExit_1").isEnabled());
}

TEST_F(OUBrowserWindow, ToolTipsShowNamesThatLookLikeMarkup) {
    folder_.Write("Trees/T2.ldif", "dn: o=\\<b\\>ZETA\nobjectClass: organization\n");
    Get<QComboBox>("comTree").setFocus();
    PressKey(Qt::Key_Down);
    ClickNode("<b>ZETA (0)");
    EXPECT_EQ(ShownTip(Node("<b>ZETA (0)").data(Qt::ToolTipRole).toString()), "NDS:\\\\T2\\<b>ZETA");
    EXPECT_EQ(Text("labCurrentOU"), "<b>ZETA");
    EXPECT_EQ(ShownTip(Get<QLabel>("labCurrentOU").toolTip()), "<b>ZETA");
}

TEST_F(OUBrowserWindow, ListButtonsSelectUnselectAndInvert) {
    ClickNode("APPS (3)");
    Click("butListViewControl_0");
    EXPECT_THAT(Items(), ElementsAre("+Word", "+Excel", "+Paint"));
    Click("butListViewControl_1");
    EXPECT_EQ(Text("labApps"), " 3 applications available, none selected.");
    EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled()) << "nothing is selected any more";
    EXPECT_FALSE(tabs().isTabEnabled(3));
    ClickItem(1);
    Click("butListViewControl_2");
    EXPECT_THAT(Items(), ElementsAre("+Word", "Excel", "+Paint"));
    ClickNode("BARE (0)");
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_EQ(Text("labApps"), "No applications in this branch");
    EXPECT_FALSE(Get<QAbstractButton>("butListViewControl_0").isEnabled());
}

TEST_F(OUBrowserWindow, SelectsAndUnselectsTheWholeTree) {
    ClickNode("APPS (3)");
    Click("butTreeControl_5");
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " *ACME (1)", " SITE (0)", "  *APPS (3)", "  EMPTY (0)",
                                     "   *DEEP (1)", "  BARE (0)"));
    EXPECT_EQ(Text("labApps"), " 3 applications available, all selected.");
    EXPECT_THAT(Status().toStdString(), StartsWith("Ready. 5 applications available, all selected."));
    ClickNode("ACME (1)");
    EXPECT_THAT(Items(), ElementsAre("+Tool"));
    Click("butTreeControl_4");
    EXPECT_THAT(Items(), ElementsAre("Tool"));
    EXPECT_THAT(Nodes(), testing::Not(testing::Contains(HasSubstr("*"))));
}

TEST_F(OUBrowserWindow, FiltersContainersWithoutApplicationsAndShowsThemAgain) {
    EXPECT_FALSE(Get<QAbstractButton>("butTreeControl_3").isEnabled());
    ClickNode("ACME (1)");
    ClickItem(0);
    Click("butTreeControl_2");
    EXPECT_EQ(Text("labBrowser"), "OU Browser - FILTERED");
    EXPECT_EQ(Get<QLabel>("labBrowser").palette().color(QPalette::Window), QColor(255, 255, 128));
    EXPECT_THAT(Nodes(),
                ElementsAre("[Root]", " ACME (1)", " SITE (0)", "  APPS (3)", "  EMPTY (0)", "   DEEP (1)"));
    EXPECT_FALSE(Get<QAbstractButton>("butTreeControl_2").isEnabled());
    EXPECT_THAT(Status().toStdString(), HasSubstr("1 selected.")) << "selections survive";
    Click("butTreeControl_3");
    EXPECT_EQ(Text("labBrowser"), "OU Browser");
    EXPECT_EQ(Nodes().size(), 7U);
    EXPECT_TRUE(tree().isExpanded(Node("SITE (0)")));
}

TEST_F(OUBrowserWindow, ExpandsAndCollapsesAllBranches) {
    Click("butTreeControl_0");
    EXPECT_TRUE(tree().isExpanded(Node("EMPTY (0)")));
    Click("butTreeControl_1");
    EXPECT_FALSE(tree().isExpanded(Node("SITE (0)")));
    EXPECT_TRUE(tree().isExpanded(Node("[Root]")));
}

TEST_F(OUBrowserWindow, CheckBoxMarksTheNodeAndItsDirectChildrenAlone) {
    tree().expandAll();
    ClickNode("EMPTY (0)");
    tree().setCurrentIndex(Node("SITE (0)"));
    PressKey(Qt::Key_Space);
    const auto checked = [this](const char* text) {
        return Node(text).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    };
    EXPECT_TRUE(checked("SITE (0)"));
    EXPECT_TRUE(checked("APPS (3)"));
    EXPECT_TRUE(checked("EMPTY (0)"));
    EXPECT_FALSE(checked("DEEP (1)"));
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " ACME (1)", " *SITE (0)", "  *APPS (3)", "  *EMPTY (0)",
                                     "   DEEP (1)", "  *BARE (0)"));
    EXPECT_EQ(Node("[Root]").data(Qt::ForegroundRole).value<QBrush>().color(), QColor(128, 128, 128));
    EXPECT_EQ(Node("ACME (1)").data(Qt::ForegroundRole).value<QBrush>().color(), QColor(0, 0, 255));
    EXPECT_FALSE(Node("BARE (0)").data(Qt::ForegroundRole).isValid());
    PressKey(Qt::Key_Space);
    EXPECT_FALSE(checked("APPS (3)"));
}

TEST_F(OUBrowserWindow, RefreshesTheTreeOnceTheUserIsSure) {
    ClickNode("APPS (3)");
    ClickItem(0);
    folder_.Write("Trees/T1.ldif", kFirstTree() + LdifApplication("New", "ou=BARE,o=SITE"));
    Click("butTreeControl_6");
    EXPECT_THAT(boxes_, ElementsAre("Re-reading the whole Tree in again may take a while - Are you sure?"));
    EXPECT_THAT(Items(), ElementsAre("+Word", "Excel", "Paint")) << "No is the default";
    Answer(QMessageBox::Yes);
    Click("butTreeControl_6");
    EXPECT_TRUE(Node("BARE (1)").isValid());
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled());
}

TEST_F(OUBrowserWindow, OffersToRefreshWhenAContainerIsGone) {
    folder_.Write("Trees/T1.ldif", LdifOrganization("SITE"));
    ASSERT_TRUE(Start());  // from the cache
    Answer(QMessageBox::No);
    ClickNode("ACME (1)");
    ASSERT_EQ(boxes_.size(), 1U);
    EXPECT_EQ(boxes_[0],
              "Zorvel encountered an error trying to access 'NDS:\\\\T1\\ACME'\n\nIt's likely that your Tree "
              "structure has changed since Zorvel last cached it.  Would you like to refresh the Zorvel Tree "
              "cache?");
    EXPECT_EQ(Nodes().size(), 7U);
    Answer(QMessageBox::Yes);
    ClickNode("ACME (1)");
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " SITE (0)"));
    const std::string log = LogText();
    EXPECT_THAT(log, HasSubstr("ERROR: DS error 601 returned during Node click on 'NDS:\\\\T1\\ACME' - "
                               "cached version of Tree likely out of date"));
    EXPECT_THAT(log, HasSubstr("User chose NOT to refresh cache"));
    EXPECT_THAT(log, HasSubstr("User chose to refresh cache"));
}

TEST_F(OUBrowserWindow, KeepsTheSelectionWhenTheCacheLacksAnApplication) {
    folder_.Write("Trees/T1.ldif", LdifOrganization("ACME") + LdifApplication("Alpha", "o=ACME") +
                                       LdifApplication("Tool", "o=ACME"));
    ASSERT_TRUE(Start());
    Click("butTreeControl_5");
    ClickNode("ACME (1)");
    EXPECT_THAT(boxes_,
                ElementsAre("Error 9 (Subscript out of range) occurred in OU Browser node click.\n\n"
                            "'NDS:\\\\T1\\ACME' holds applications that the cached version of the Tree "
                            "does not know"));
    EXPECT_THAT(Items(), ElementsAre("Alpha", "+Tool"));
    EXPECT_EQ(Text("labApps"), " 2 applications available, 1 selected.");
    EXPECT_THAT(Status().toStdString(), HasSubstr("5 applications available, all selected."));
}

TEST_F(OUBrowserWindow, SavesASelectionAndLoadsItAgain) {
    ClickNode("APPS (3)");
    ClickItem(1);
    ClickNode("ACME (1)");
    ClickItem(0);
    OnDialog([](QDialog& dialog) {
        TypeText("Two of them");
        QTest::mouseClick(&Control<QAbstractButton>(dialog, "butSave"), Qt::LeftButton);
    });
    Menu("mnuFileExit_1").trigger();
    EXPECT_THAT(boxes_, ElementsAre("Current selection of 2 applications has been successfully saved!"));

    Click("butTreeControl_4");
    OnDialog([](QDialog& dialog) {
        QTest::mouseClick(&Control<QAbstractButton>(dialog, "butLoad"), Qt::LeftButton);
    });
    Menu("mnuFileExit_2").trigger();
    EXPECT_EQ(boxes_.back(),
              "Application selections loaded - 2 of 2 previously saved selections successfully made.");
    EXPECT_THAT(Items(), ElementsAre("+Tool"));
    EXPECT_TRUE(Node("APPS (3)").data(Qt::FontRole).value<QFont>().bold());
    EXPECT_TRUE(Get<QAbstractButton>("butGenerate").isEnabled());
    ClickNode("APPS (3)");
    EXPECT_THAT(Items(), ElementsAre("Word", "+Excel", "Paint"));
}

}  // namespace
}  // namespace zorvel::test
