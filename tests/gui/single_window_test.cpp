// One window a program folder.
#include "gui/main/single_window.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <QSignalSpy>
#include <QTest>
#include <atomic>
#include <filesystem>
#include <thread>

#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

// Asks from a thread of its own, as another process would: this one has to answer.
bool Asks(const SingleWindow& second, const QByteArray& token) {
    bool shown = false;
    std::atomic<bool> done = false;
    std::thread other([&] {
        shown = second.ShowOther(token);
        done = true;
    });
    while (!done)
        QCoreApplication::processEvents();
    other.join();
    return shown;
}

TEST(SingleWindow, ASecondOneHasTheFirstShownOrSaysWhereItRuns) {
    const TempFolder folder;
    const Files files(folder.path());
    SingleWindow second(files);
    {
        SingleWindow first(files);
        ASSERT_TRUE(first.Claim());
        const QSignalSpy shown(&first, &SingleWindow::ShowWanted);
        ASSERT_FALSE(second.Claim());
        EXPECT_TRUE(Asks(second, "token 7"));
        ASSERT_EQ(shown.count(), 1);
        EXPECT_EQ(shown[0][0].toByteArray(), "token 7");
        EXPECT_THAT(
            second.RunsElsewhereText(),
            testing::StartsWith("Zorvel is running in this program folder already: 'zorvel' (process " +
                                std::to_string(getpid()) + " on "));
        const TempFolder other_folder;
        EXPECT_TRUE(SingleWindow(Files(other_folder.path())).Claim());
    }
    EXPECT_FALSE(second.ShowOther({})) << "nobody is there to answer";
    EXPECT_TRUE(second.Claim());
}

TEST(SingleWindow, AFolderThatCannotBeWrittenIsLeftToTheStart) {
    const TempFolder folder;
    std::filesystem::create_directory(folder.path() / "Zorvel.window");  // root may write everywhere else
    EXPECT_TRUE(SingleWindow(Files(folder.path())).Claim());
}

}  // namespace
}  // namespace zorvel::test
