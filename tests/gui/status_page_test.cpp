// The status tab, and the labels and updates that it shares with the tree's progress window.
#include "gui/main/status_page.h"

#include <QHelpEvent>
#include <QProgressBar>
#include <QToolTip>

#include "gui/controls.h"
#include "gui/dialogs/frm_cache_tree.h"
#include "gui/tool_tip.h"
#include "gui/widgets/elided_label.h"
#include "support/fake_window.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

QString TextOf(const QWidget& page, const char* name) {
    return page.findChild<QLabel*>(name)->text();
}

struct TestRun {
    test::FakeClock clock;
    test::FakeUserInterface ui;
    test::FakeRunDisplay display;
    RunStatus status{clock, ui, display};

    TestRun() {
        status.StartRun();
        status.StartApplication();
    }
};

TEST(StatusPage, BeginsWithDashes) {
    StatusPage page;
    TestRun run;
    run.status.counters.Add(Counter::kIssues);
    page.ShowStatusCounts(run.status);
    page.ShowOverallProgress(40);
    page.ShowStatusCounts(run.status);  // put off, and must not come back
    page.LayOut();
    page.Flush();
    for (const char* name : {"labSelected", "labCurrentCount", "labApplicationCount_5", "labRunCount_5",
                             "labApplicationTime", "labRunTime"}) {
        EXPECT_EQ(TextOf(page, name), "-") << name;
    }
    EXPECT_EQ(page.findChild<QProgressBar*>("barOverall")->value(), 0);
}

TEST(StatusPage, ShowsCountersTimesAndProgress) {
    StatusPage page;
    TestRun run;
    run.clock.timer += 100;
    run.status.StartApplication();
    run.clock.timer += 20;
    run.status.SetOverallProgress(40);
    run.status.counters.application = {1, 2, 3, 4, 5, 0};
    run.status.counters.run = {1234, 0, 30, 40, 50, 6};
    page.ShowStatusCounts(run.status);
    const char* const application[] = {"1", "2", "3", "4", "5", "-"};
    const char* const whole_run[] = {"1,234", "-", "30", "40", "50", "6"};
    const char* const headings[] = {"FIL File Count", "INI Entry Count", "Text Entry Count",
                                    "Macro Count",    "Registry Count",  "Issues"};
    for (std::size_t i = 0; i < kCounterCount; ++i) {
        const std::string index = std::to_string(i);
        EXPECT_EQ(TextOf(page, ("labCounter_" + index).c_str()), headings[i]);
        EXPECT_EQ(TextOf(page, ("labApplicationCount_" + index).c_str()), application[i]);
        EXPECT_EQ(TextOf(page, ("labRunCount_" + index).c_str()), whole_run[i]);
    }
    EXPECT_EQ(TextOf(page, "labApplicationTime"), "00:00:20");
    EXPECT_EQ(TextOf(page, "labRunTime"), "00:02:00   (00:03:00 remains)");
    page.ShowSelectedCount("2,345");
    page.ShowCurrentApplication("938", "Caf\xE9 & Bar");
    page.ShowStreamProgress(99);
    page.ShowOverallProgress(99.9);
    page.Flush();
    EXPECT_EQ(TextOf(page, "labSelected"), "2,345");
    EXPECT_EQ(TextOf(page, "labCurrentCount"), "938");
    EXPECT_EQ(TextOf(page, "labCurrentName"), QStringLiteral("Caf\u00E9 & Bar"));
    EXPECT_EQ(page.findChild<QProgressBar*>("barStream")->value(), 99);
    EXPECT_EQ(page.findChild<QProgressBar*>("barOverall")->value(), 99);
}

TEST(StatusPage, ShowsTheLastCountsEvenWhenTheRunIsOver) {
    StatusPage page;
    TestRun session;
    {
        RunStatus status(session.clock, session.ui, session.display);
        status.StartRun();
        status.StartApplication();
        for (int i = 0; i < 1000; ++i) {
            page.ShowStatusCounts(status);
            status.counters.Add(Counter::kFiles);
        }
        page.ShowStatusCounts(status);
    }
    page.Flush();
    EXPECT_EQ(TextOf(page, "labRunCount_0"), "1,000");
    session.clock.timer += 500;  // long after the end
    page.Flush();
    EXPECT_EQ(TextOf(page, "labRunTime"), "00:00:00");
}

TEST(PacedUpdate, SkipsUpdatesAndEndsWithTheLastState) {
    int state = 0;
    std::vector<int> shown;
    PacedUpdate update([&] { shown.push_back(state); });
    for (state = 1; state < 1000; ++state)
        update.Request();
    state = 1000;
    update.Request();
    EXPECT_LT(shown.size(), 900U);
    EXPECT_EQ(shown.front(), 1);
    update.Flush();
    EXPECT_EQ(shown.back(), 1000);
    const std::size_t updates = shown.size();
    update.Flush();
    EXPECT_EQ(shown.size(), updates);  // there was nothing left to show

    state = 1001;
    update.Request();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.back() == 1001; }));  // by the event loop alone
}

TEST(ElidedLabel, KeepsBothEndsOfALongNameAndTellsTheWholeInATip) {
    const QString name = "A very long name <b>of an application</b> & its tools, version 7.0";
    ElidedLabel label;
    label.setText(name);
    EXPECT_LT(label.minimumSizeHint().width(), label.sizeHint().width() / 4);
    label.resize(2000, 20);
    EXPECT_EQ(label.ShownText(), name);
    label.resize(160, 20);
    EXPECT_TRUE(label.ShownText().startsWith("A very"));
    EXPECT_TRUE(label.ShownText().endsWith("7.0"));
    EXPECT_LE(label.fontMetrics().horizontalAdvance(label.ShownText()), 160);
    EXPECT_EQ(label.text(), name);
    label.show();
    QHelpEvent help(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &help);
    EXPECT_EQ(test::ShownTip(QToolTip::text()), name.toStdString());
    QToolTip::hideText();
}

TEST(CacheTree, ShowsHowFarTheReadingIs) {
    frmCacheTree window;
    window.ShowCacheTree("Refreshing 'CORP_TREE' Tree cache..");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isModal());
    EXPECT_EQ(window.windowTitle(), "Refreshing 'CORP_TREE' Tree cache..");
    EXPECT_EQ(TextOf(window, "labOU"), "(Refresh will begin in a few seconds)");
    for (int count = 1; count <= 1000; ++count) {
        const std::string number = std::to_string(count);
        window.SetLabOU("OU" + number);
        window.SetLabOUCount(number);
        window.SetLabApps(number + "0");
        window.SetLabElapsed("00:00:0" + number.substr(0, 1));
    }
    window.Flush();
    EXPECT_EQ(TextOf(window, "labOU"), "OU1000");
    EXPECT_EQ(TextOf(window, "labOUCount"), "1000");
    EXPECT_EQ(TextOf(window, "labApps"), "10000");
    EXPECT_EQ(TextOf(window, "labElapsed"), "00:00:01");
}

TEST(CacheTree, StaysUntilTheProgramClosesIt) {
    frmCacheTree window;
    window.ShowCacheTree("Refreshing");
    ASSERT_TRUE(test::TakesKeyboard(window));
    test::PressKey(Qt::Key_Escape);
    window.close();
    EXPECT_TRUE(window.isVisible());
    window.SetLabApps("5");
    window.CloseCacheTree();
    EXPECT_FALSE(window.isVisible());
    window.ShowCacheTree("Refreshing");  // begins anew
    EXPECT_EQ(TextOf(window, "labApps"), "");
}

}  // namespace
}  // namespace zorvel
