// A file is replaced only by a whole one, and only where that is wanted.
#include "platform/write_in_place.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/file_size_limit.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

using test::RaisedBy;
using testing::ElementsAre;

class InPlace : public testing::Test {
  protected:
    Error ErrorOf(const std::function<void(OutputFile&)>& write) const {
        return RaisedBy([&] { WriteInPlace(path_, write); });
    }
    // The files of the folder.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_.parent_path()))
            names.push_back(entry.path().filename());
        return names;
    }
    static void WriteNew(OutputFile& file) { file.Write("new"); }
    void ExpectOlder() const {
        EXPECT_THAT(Names(), ElementsAre("out.csv"));
        EXPECT_EQ(folder_.Read("Reports/out.csv"), "older");
    }

    test::TempFolder folder_;
    std::filesystem::path path_ = folder_.path() / "Reports/out.csv";
};

TEST_F(InPlace, ANewFileIsAnOrdinaryOne) {
    const mode_t mask = umask(027);
    WriteInPlace(path_, WriteNew);
    umask(mask);
    EXPECT_THAT(Names(), ElementsAre("out.csv"));
    EXPECT_EQ(folder_.Read("Reports/out.csv"), "new");
    EXPECT_EQ(std::filesystem::status(path_).permissions(), std::filesystem::perms{0640});
}

TEST_F(InPlace, AnOlderFileIsReplacedAndKeepsItsPermissions) {
    folder_.Write("Reports/out.csv", "older");
    std::filesystem::permissions(path_, std::filesystem::perms{0600});
    WriteInPlace(path_, [&](OutputFile& file) {
        file.Write("ne");
        file.Flush();
        EXPECT_EQ(folder_.Read("Reports/out.csv"), "older");
        for (const auto& entry : std::filesystem::directory_iterator(path_.parent_path()))
            EXPECT_EQ(entry.status().permissions(), std::filesystem::perms{0600}) << entry;
        file.Write("w");
    });
    EXPECT_EQ(folder_.Read("Reports/out.csv"), "new");
    EXPECT_EQ(std::filesystem::status(path_).permissions(), std::filesystem::perms{0600});
}

TEST_F(InPlace, ALinkStaysAndItsFileIsReplaced) {
    folder_.Write("older", "older");
    std::filesystem::create_symlink("../older", path_);
    WriteInPlace(path_, WriteNew);
    EXPECT_TRUE(std::filesystem::is_symlink(path_));
    EXPECT_EQ(folder_.Read("older"), "new");
    EXPECT_FALSE(std::filesystem::is_symlink(folder_.path() / "older"));
    // Also where the file is still missing, and through a second link.
    std::filesystem::remove(folder_.path() / "older");
    std::filesystem::create_symlink(folder_.path() / "newer", folder_.path() / "older");
    WriteInPlace(path_, WriteNew);
    EXPECT_TRUE(std::filesystem::is_symlink(path_));
    EXPECT_EQ(folder_.Read("newer"), "new");
}

TEST_F(InPlace, TheOlderFileStaysWhenTheDiskIsFull) {
    folder_.Write("Reports/out.csv", "older");
    Error error(0);
    {
        const test::FileSizeLimit limit(1000);
        error = ErrorOf([](OutputFile& file) { file.Write(std::string(5000, 'x')); });
    }
    EXPECT_EQ(error.number(), errors::kDiskFull);
    EXPECT_TRUE(error.IsOutputError());
    EXPECT_EQ(error.detail(), path_.string() + ": Disk full");
    ExpectOlder();
}

TEST_F(InPlace, TheOlderFileStaysWhenTheReportFails) {
    folder_.Write("Reports/out.csv", "older");
    const Error error = ErrorOf([](OutputFile& file) {
        file.Write("half");
        file.Flush();
        throw Error(errors::kStore);
    });
    EXPECT_EQ(error.number(), errors::kStore);
    ExpectOlder();
}

TEST_F(InPlace, AWriteProtectedFileStays) {
    folder_.Write("Reports/out.csv", "older");
    for (const auto& path : {folder_.path(), path_.parent_path()})
        std::filesystem::permissions(path, std::filesystem::perms::all);
    std::filesystem::permissions(path_, std::filesystem::perms{0444});
    const int status = test::InAChildWithoutRights([this] { _exit(ErrorOf(WriteNew).number()); });
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), errors::kPermissionDenied);
    ExpectOlder();
}

TEST_F(InPlace, WhatIsNoFileIsNeverReplaced) {
    std::filesystem::create_symlink("/dev/full", path_);
    Error error = ErrorOf(WriteNew);
    EXPECT_EQ(error.number(), errors::kDiskFull);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    EXPECT_THAT(Names(), ElementsAre("out.csv"));

    // A pipe at the end of a link, as of standard output.
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    std::filesystem::remove(path_);
    std::filesystem::create_symlink("/proc/self/fd/" + std::to_string(ends[1]), path_);
    WriteInPlace(path_, WriteNew);
    std::array<char, 8> piped{};
    EXPECT_EQ(read(ends[0], piped.data(), piped.size()), 3);
    EXPECT_STREQ(piped.data(), "new");
    close(ends[0]);
    close(ends[1]);

    std::filesystem::remove(path_);
    std::filesystem::create_symlink("out.csv", path_);
    EXPECT_TRUE(ErrorOf(WriteNew).IsOutputError());
    EXPECT_TRUE(std::filesystem::is_symlink(path_));

    std::filesystem::remove(path_);
    std::filesystem::create_directory(path_);
    error = ErrorOf(WriteNew);
    EXPECT_TRUE(error.IsOutputError());
    EXPECT_EQ(error.detail(), path_.string() + ": Path/File access error");
    EXPECT_TRUE(std::filesystem::is_directory(path_));

    path_ = folder_.path() / "Missing/out.csv";
    error = ErrorOf(WriteNew);
    EXPECT_EQ(error.number(), errors::kPathNotFound);
    EXPECT_EQ(error.detail(), path_.string() + ": Path not found");
}

// The same for the program's own files.
class OwnFile : public testing::Test {
  protected:
    static void WriteNew(OutputFile& file) { file.Write("new"); }
    std::filesystem::perms Mode(const char* name) const {
        return std::filesystem::status(folder_.path() / name).permissions();
    }

    test::TempFolder folder_;
    Files files_{folder_.path()};
    std::string path_ = files_.Path("Zorvel.ini");
};

TEST_F(OwnFile, IsForItsOwnerAndReplacedWhole) {
    const mode_t mask = umask(0);
    files_.WriteInPlace(path_, WriteNew);
    umask(mask);
    EXPECT_EQ(Mode("Zorvel.ini"), std::filesystem::perms{0600});

    folder_.Write("Zorvel.ini.new", "what a killed program left, longer than the new one");
    std::filesystem::permissions(folder_.path() / "Zorvel.ini", std::filesystem::perms{0640});
    files_.WriteInPlace(path_, [&](OutputFile& file) {
        file.Write("newer");
        file.Flush();
        EXPECT_EQ(folder_.Read("Zorvel.ini"), "new");
    });
    EXPECT_EQ(folder_.Read("Zorvel.ini"), "newer");
    EXPECT_EQ(Mode("Zorvel.ini"), std::filesystem::perms{0640});
    EXPECT_FALSE(folder_.Has("Zorvel.ini.new"));

    const test::FileSizeLimit full_disk(2);
    EXPECT_EQ(RaisedBy([&] { files_.WriteInPlace(path_, WriteNew); }).number(), errors::kDiskFull);
    EXPECT_EQ(folder_.Read("Zorvel.ini"), "newer");
    EXPECT_FALSE(folder_.Has("Zorvel.ini.new"));
}

TEST_F(OwnFile, APipeOrDeviceInItsPlaceIsRefusedAtOnce) {
    for (const bool pipe : {true, false}) {
        std::filesystem::remove(folder_.path() / "Zorvel.ini");
        if (pipe) {
            ASSERT_EQ(mkfifo((folder_.path() / "Zorvel.ini").c_str(), 0600), 0);
        } else {
            std::filesystem::create_symlink("/dev/zero", folder_.path() / "Zorvel.ini");
        }
        EXPECT_EQ(RaisedBy([&] { files_.WriteInPlace(path_, WriteNew); }).Reason(),
                  path_ + ": not an ordinary file");
        EXPECT_FALSE(std::filesystem::is_regular_file(folder_.path() / "Zorvel.ini"));
    }
}

}  // namespace
}  // namespace zorvel
