// Both programs as processes: what signals do to them, and two of them on one folder.
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "programs/process.h"
#include "support/databases.h"

namespace zorvel::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

class Programs : public testing::Test {
  protected:
    Programs() {
        FillWholeProgramFolder(folder_, LdifOrganization("SITE") + LdifApplication("Word", "o=SITE") +
                                            LdifApplication("Excel", "o=SITE"));
        folder_.Write("TempData/welcome.nal", "suppressed\r\n");
        // The window's program folder is the one that it lies in.
        std::filesystem::copy_file(ZORVEL_WINDOW_PROGRAM, folder_.path() / "zorvel");
    }

    std::unique_ptr<Process> Window() {
        std::filesystem::remove(folder_.path() / "Zorvel.log");
        return std::make_unique<Process>(folder_.path() / "zorvel", std::vector<std::string>{},
                                         folder_.path());
    }
    std::unique_ptr<Process> Batch(std::vector<std::string> arguments) {
        std::filesystem::remove(folder_.path() / "Zorvel.log");
        arguments.insert(arguments.begin(), {"--folder", folder_.path().string()});
        return std::make_unique<Process>(ZORVEL_BATCH_PROGRAM, arguments, folder_.path());
    }
    std::string Log() const { return folder_.Read("Zorvel.log"); }
    // Waits until the log says `text`.
    void AwaitLog(const std::string& text) const {
        constexpr int kPatience = 15000;
        for (int i = 0; i < kPatience && Log().find(text) == std::string::npos; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        ASSERT_THAT(Log(), HasSubstr(text));
    }

    TempFolder folder_;
};

TEST_F(Programs, ASignalEndsTheWindowAsItsExitButtonDoes) {
    ASSERT_EQ(Batch({"containers"})->Wait(), 0);
    for (const int signal : kSignals) {
        const auto window = Window();
        AwaitLog("Initial initilization finished");
        window->Send(signal);
        EXPECT_EQ(window->Wait(), 0) << signal;
        EXPECT_THAT(Log(), EndsWith("Exiting Zorvel at user request\r\n")) << signal;
    }
}

TEST_F(Programs, ATreeThatASignalInterruptsLeavesNoCache) {
    const auto window = Window();
    AwaitLog("Changing Tree to");  // the seconds before it is read have begun
    window->Send(SIGTERM);
    EXPECT_EQ(window->Wait(), 0);
    EXPECT_THAT(Log(), EndsWith("Exiting Zorvel at user request\r\n"));
    EXPECT_FALSE(folder_.Has("TempData/T1.TreeCache"));
    EXPECT_FALSE(folder_.Has("TempData/T1.AppCache"));
}

TEST_F(Programs, ASignalEndsARunInGoodOrder) {
    for (const int signal : kSignals) {
        const auto run = Batch({"--yes", "analyse", "--all", "--pace", "600"});
        AwaitLog("Zorvelling Stream '(Administrator Notes)'");  // the last one of the first application
        run->Send(signal);
        EXPECT_EQ(run->Wait(), 3) << signal;
        EXPECT_THAT(folder_.Read("TempData/Zorvel_CaptureDetails.CSV"), HasSubstr(",SITE,1,")) << signal;
    }
}

TEST_F(Programs, ASecondStartShowsTheWindowThatIsThere) {
    ASSERT_EQ(Batch({"containers"})->Wait(), 0);
    const auto window = Window();
    AwaitLog("Initial initilization finished");
    const std::string log = Log();
    EXPECT_EQ(Process(folder_.path() / "zorvel", {}, folder_.path()).Wait(), 0);
    EXPECT_EQ(Log(), log) << "nothing of the folder was touched";
    window->Send(SIGKILL);
    window->Wait();
    const auto next = Window();
    AwaitLog("Initial initilization finished");
    next->Send(SIGTERM);
    EXPECT_EQ(next->Wait(), 0);
}

}  // namespace
}  // namespace zorvel::test
