// The lock by which programs on one folder keep out of each other's way.
#include "platform/folder_lock.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/error.h"
#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

using testing::StartsWith;

class FolderLocks : public testing::Test {
  protected:
    FolderLock Another() const { return {folder_.path() / "Zorvel.lock", "Zorvel.lock"}; }

    test::TempFolder folder_;
};

TEST_F(FolderLocks, WhoFindsOneTakenIsToldWhoHasIt) {
    FolderLock first = Another();
    FolderLock second = Another();
    ASSERT_TRUE(first.TryAcquire("zorvel-batch import --comment a\tb"));
    EXPECT_FALSE(second.TryAcquire("zorvel"));
    const LockHolder holder = second.Holder();
    EXPECT_EQ(holder.command, "zorvel-batch import --comment a\tb");
    EXPECT_EQ(holder.process, std::to_string(getpid()));
    EXPECT_THAT(holder.Text(), StartsWith("'zorvel-batch import --comment a\tb' (process " + holder.process));
    first.Release();
    EXPECT_TRUE(second.TryAcquire("zorvel"));
    EXPECT_FALSE(first.TryAcquire("zorvel"));
    EXPECT_EQ(first.Holder().command, "zorvel");
    // What a process that has ended wrote is not told of another that has just taken the lock.
    for (const char* text : {"", "999999999\tHOST\tzorvel-batch import"}) {
        std::array<char, 256> host{};
        gethostname(host.data(), host.size() - 1);
        std::string content = text;
        if (!content.empty()) content.replace(content.find("HOST"), 4, host.data());
        folder_.Write("Zorvel.lock", content);
        EXPECT_EQ(first.Holder().Text(), "another program") << text;
    }
    second.Release();
    EXPECT_EQ(folder_.Read("Zorvel.lock"), "");
}

TEST_F(FolderLocks, AProcessThatIsKilledHasNone) {
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        FolderLock lock = Another();
        const char taken = lock.TryAcquire("child") ? 'y' : 'n';
        if (write(ready[1], &taken, 1) == 1) pause();
        _exit(1);
    }
    char taken = '\0';
    ASSERT_EQ(read(ready[0], &taken, 1), 1);
    ASSERT_EQ(taken, 'y');
    FolderLock lock = Another();
    EXPECT_FALSE(lock.TryAcquire("parent"));
    EXPECT_EQ(lock.Holder().process, std::to_string(child));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(lock.TryAcquire("parent"));
    close(ready[0]);
    close(ready[1]);
}

TEST_F(FolderLocks, AFolderThatIsMissingIsNamed) {
    FolderLock lock(folder_.path() / "missing/Zorvel.lock", "missing\\Zorvel.lock");
    const Error error = test::RaisedBy([&] { lock.TryAcquire("zorvel"); });
    EXPECT_THAT(error.detail(), StartsWith("missing\\Zorvel.lock: "));
}

}  // namespace
}  // namespace zorvel
