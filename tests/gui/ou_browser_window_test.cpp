// The OU browser and the application list in the main window, through clicks and keys.
#include "gui/main_window.h"
#include "gui/tool_tip.h"

namespace zorvel::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class OUBrowserWindow : public MainWindowTest {
  protected:
    void SetUp() override { ASSERT_TRUE(Start()); }
};

TEST_F(OUBrowserWindow, SelectsByClicksAndKeys) {
    ClickNode("APPS (3)");
    EXPECT_EQ(Text("labCurrentOU"), "APPS.SITE");
    ClickItem(0);
    ClickItem(2, Qt::ControlModifier);
    EXPECT_EQ(Text("labApps"), " 3 applications available, 2 selected.");
    ClickNode("ACME (1)");
    list().setFocus();
    PressKey(Qt::Key_Space);
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

TEST_F(OUBrowserWindow, EveryButtonShowsWhatItDid) {
    ClickNode("APPS (3)");
    Click("butListViewControl_0");
    EXPECT_THAT(Items(), ElementsAre("+Word", "+Excel", "+Paint"));
    Click("butListViewControl_1");
    EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled()) << "nothing is selected any more";
    EXPECT_FALSE(tabs().isTabEnabled(3));
    ClickItem(1);
    Click("butListViewControl_2");
    EXPECT_THAT(Items(), ElementsAre("+Word", "Excel", "+Paint"));
    Click("butTreeControl_5");
    EXPECT_THAT(Nodes(), testing::Contains("   *DEEP (1)"));
    Click("butTreeControl_4");
    EXPECT_THAT(Items(), ElementsAre("Word", "Excel", "Paint"));
    ClickNode("BARE (0)");
    EXPECT_FALSE(Get<QAbstractButton>("butListViewControl_0").isEnabled());
    EXPECT_FALSE(Get<QAbstractButton>("butTreeControl_3").isEnabled());
    Click("butTreeControl_2");
    EXPECT_EQ(Text("labBrowser"), "OU Browser - FILTERED");
    EXPECT_EQ(Get<QLabel>("labBrowser").palette().color(QPalette::Window), QColor(255, 255, 128));
    EXPECT_EQ(Nodes().size(), 6U);
    EXPECT_FALSE(Get<QAbstractButton>("butTreeControl_2").isEnabled());
    Click("butTreeControl_3");
    EXPECT_EQ(Nodes().size(), 7U);
    EXPECT_TRUE(tree().isExpanded(Node("SITE (0)")));
    Click("butTreeControl_0");
    EXPECT_TRUE(tree().isExpanded(Node("EMPTY (0)")));
    Click("butTreeControl_1");
    EXPECT_FALSE(tree().isExpanded(Node("SITE (0)")));
    EXPECT_TRUE(tree().isExpanded(Node("[Root]")));
}

TEST_F(OUBrowserWindow, TheCheckBoxOfANodeMarksAndColours) {
    tree().setCurrentIndex(Node("SITE (0)"));
    tree().setFocus();
    PressKey(Qt::Key_Space);
    const auto colour = [this](const char* text) {
        return Node(text).data(Qt::ForegroundRole).value<QBrush>().color();
    };
    EXPECT_EQ(Node("APPS (3)").data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_THAT(Nodes(), testing::Contains("  *BARE (0)"));
    EXPECT_EQ(colour("[Root]"), QColor(128, 128, 128));
    EXPECT_EQ(colour("ACME (1)"), QColor(0, 0, 255));
    EXPECT_FALSE(Node("BARE (0)").data(Qt::ForegroundRole).isValid());
    PressKey(Qt::Key_Space);
    EXPECT_EQ(Node("APPS (3)").data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST_F(OUBrowserWindow, SavesASelectionAndLoadsItAgain) {
    ClickNode("ACME (1)");
    ClickItem(0);
    const auto press = [this](const char* menu, const char* button) {
        OnDialog([button](QDialog& dialog) {
            QTest::mouseClick(&Control<QAbstractButton>(dialog, button), Qt::LeftButton);
        });
        Menu(menu).trigger();
    };
    press("mnuFileExit_1", "butSave");
    Click("butTreeControl_4");
    press("mnuFileExit_2", "butLoad");
    EXPECT_THAT(Items(), ElementsAre("+Tool"));
    EXPECT_THAT(Nodes(), testing::Contains(" *ACME (1)"));
    EXPECT_TRUE(Get<QAbstractButton>("butGenerate").isEnabled());
}

}  // namespace
}  // namespace zorvel::test
