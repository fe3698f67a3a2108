// Files read and written front to back: every byte once and in order, also where a buffer ends or a disk is
// full.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "platform/error.h"
#include "platform/input_file.h"
#include "platform/output_file.h"
#include "support/errors.h"
#include "support/file_size_limit.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

namespace fs = std::filesystem;
using test::RaisedBy;
using Kind = OutputFile::Kind;
using Mode = OutputFile::Mode;

// `size` bytes, which tell where they stood.
std::string Bytes(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t at = 0; at < size; ++at)
        bytes[at] = static_cast<char>(at * 131 >> 3);
    return bytes;
}

class FileStreams : public testing::Test {
  protected:
    OutputFile Out(Mode mode = Mode::kTruncate, Kind kind = Kind::kProgramFile) const {
        return {path_, "out", mode, kind};
    }
    std::string Got() const { return folder_.Read("file"); }

    test::TempFolder folder_;
    fs::path path_ = folder_.path() / "file";
};

TEST_F(FileStreams, EveryByteIsReadOnceWhereverTheBufferEnds) {
    constexpr std::size_t kBuffer = InputFile::kBufferSize;
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, kBuffer - 1, kBuffer, kBuffer + 1, 3 * kBuffer}) {
        const std::string bytes = Bytes(size);
        folder_.Write("file", bytes);
        InputFile single(path_, "in");
        std::string read;
        std::string late;  // what an observer sees who came when a byte was read
        for (int byte = single.Peek(); byte >= 0; byte = single.Peek()) {
            ASSERT_EQ(single.Get(), byte);
            read += static_cast<char>(byte);
            if (read.size() == 1) single.Observe([&](std::string_view part) { late += part; });
        }
        EXPECT_TRUE(read == bytes && late == bytes.substr(std::min(kBuffer, size))) << size;
        EXPECT_EQ(single.Get(), -1);

        InputFile mixed(path_, "in");
        std::string observed;
        mixed.Observe([&](std::string_view part) { observed += part; });
        read.clear();
        for (std::string_view part = mixed.Available(); !part.empty(); part = mixed.Available()) {
            read += part.substr(0, 100'001);
            mixed.Skip(std::min(part.size(), std::size_t{100'001}));
            if (read.size() > kBuffer) read += mixed.Rest();
        }
        EXPECT_TRUE(read == bytes && observed == bytes) << size;
    }
}

TEST_F(FileStreams, WritesOfAnySizeArriveInTheirOrder) {
    constexpr std::size_t kBuffer = OutputFile::kBufferSize;
    const std::string expected = Bytes(6 * kBuffer);
    std::string_view rest = expected;
    OutputFile first = Out();
    for (const std::size_t size : {std::size_t{3}, kBuffer - 3, std::size_t{1}, std::size_t{0},
                                   3 * kBuffer + 1, std::size_t{5}, kBuffer}) {
        first.Write(rest.substr(0, size));
        rest.remove_prefix(size);
    }
    OutputFile second = std::move(first);  // with what is buffered
    second.Write(rest.front());
    OutputFile third(folder_.path() / "other", "other", Mode::kTruncate);
    third.Write("other");
    third = std::move(second);
    third.Write(rest.substr(1));
    third.Close();
    EXPECT_TRUE(Got() == expected);
}

TEST_F(FileStreams, WhatAFullDiskDidNotTakeIsKeptAndWrittenLater) {
    OutputFile file = Out();
    file.Write("0123456789");
    {
        const test::FileSizeLimit full_disk(4);
        for (int times = 0; times < 2; ++times) {
            const Error error = RaisedBy([&] { file.Flush(); });
            EXPECT_TRUE(error.IsOutputError());
            EXPECT_EQ(error.Reason(), "out: Disk full");
            EXPECT_EQ(Got(), "0123");
        }
        file.Write("abc");  // there is room for it
        EXPECT_TRUE(RaisedBy([&] { file.Write(std::string(OutputFile::kBufferSize, 'x')); }).IsOutputError());
    }
    file.Write("z");
    file.Close();
    EXPECT_EQ(Got(), "0123456789abcz") << "each byte once, and nothing of the write that failed";
}

TEST_F(FileStreams, ClosingSaysOnceThatTheEndIsLost) {
    const test::FileSizeLimit full_disk(4);
    for (const bool synced : {false, true}) {
        OutputFile file = Out();
        file.Write("0123456789");
        EXPECT_EQ(RaisedBy([&] { synced ? file.Sync() : file.Close(); }).Reason(), "out: Disk full");
        if (synced) {
            EXPECT_EQ(RaisedBy([&] { file.Close(); }).Reason(), "out: Disk full");
        } else {
            file.Close();
        }
    }
    OutputFile device("/dev/full", "device", Mode::kAppend);
    device.Write('x');
    EXPECT_EQ(RaisedBy([&] { device.Close(); }).Reason(), "device: Disk full");
}

TEST_F(FileStreams, AreEmptiedOrContinuedAndMadeForWhomTheyAre) {
    for (const auto& [kind, made] :
         {std::pair{Kind::kProgramFile, fs::perms{0600}}, {Kind::kUserFile, fs::perms{0640}}}) {
        for (const Mode mode : {Mode::kTruncate, Mode::kAppend}) {
            fs::remove(path_);
            const mode_t mask = umask(027);
            Out(mode, kind).Write("older");
            umask(mask);
            EXPECT_EQ(fs::status(path_).permissions(), made);
            fs::permissions(path_, fs::perms{0644});
            Out(mode, kind).Write("-new");
            EXPECT_EQ(Got(), mode == Mode::kAppend ? "older-new" : "-new");
            EXPECT_EQ(fs::status(path_).permissions(), fs::perms{0644}) << "an older file's";
        }
    }
}

TEST_F(FileStreams, WhatCannotBeReadOrWrittenIsSaidWithItsName) {
    ASSERT_EQ(mkfifo((folder_.path() / "pipe").c_str(), 0600), 0);
    folder_.Write("file", "");
    using Case = std::pair<const char*, const char*>;
    // The first byte of a process's memory can never be read.
    for (const auto& [name, reason] :
         {Case{"none", "x: File not found"}, Case{"file/x", "x: Path not found"},
          Case{"Trees", "x: not an ordinary file"}, Case{"pipe", "x: not an ordinary file"},
          Case{"/dev/zero", "x: not an ordinary file"},
          Case{"/proc/self/mem", "x: Path/File access error"}}) {
        const Error error = RaisedBy([&, name = name] { InputFile(folder_.path() / name, "x").Rest(); });
        EXPECT_EQ(error.Reason(), reason) << name;
    }
    for (const auto& [name, reason] :
         {Case{"none/x", "x: Path not found"}, Case{"file/x", "x: Path not found"},
          Case{"Trees", "x: Path/File access error"}, Case{"pipe", "x: Path/File access error"},
          Case{"/dev/null", "x: not an ordinary file"}}) {
        for (const Mode mode : {Mode::kTruncate, Mode::kAppend}) {
            const auto make = [&, name = name] {
                OutputFile(folder_.path() / name, "x", mode, Kind::kProgramFile);
            };
            EXPECT_TRUE(RaisedBy(make).IsOutputError()) << name;
            EXPECT_EQ(RaisedBy(make).Reason(), reason) << name;
        }
    }
}

}  // namespace
}  // namespace zorvel
