// The streams of the sample tree, cut short at every byte and with bytes flipped: whatever is left of them,
// parsing ends.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "analysis/stream_table.h"
#include "directory/memory_directory.h"
#include "support/program_folder.h"
#include "support/streams_fakes.h"

namespace zorvel {
namespace {

// Calls `use` with each stream of each application of the shipped tree.
template <typename Use>
void ForEachSampleStream(Use use) {
    test::TestShell shell;
    test::FillProgramFolder(shell.folder, "");
    std::filesystem::copy_file(ZORVEL_SOURCE_DIR "/program/Trees/CORP_TREE.ldif",
                               shell.folder.path() / "Trees/T1.ldif",
                               std::filesystem::copy_options::overwrite_existing);
    MemoryDirectory directory(shell.files, shell.log);
    ASSERT_EQ(directory.NWCallsInit(), 0);
    std::vector<std::string> paths = {RootPath("T1")};
    while (!paths.empty()) {
        directory.SetCurrentObject(paths.back());
        paths.pop_back();
        for (const Entry& entry : directory.Entries()) {
            paths.push_back(entry.path);
            for (const StreamRow& row : kStreamTable) {
                int handle = 0;
                const std::string name = "." + directory.FullNameOf(entry);
                if (directory.NWDSOpenStream(0, name, row.attribute, 1, handle) != 0) continue;
                std::string bytes;
                directory.ReadFile(handle, directory.GetFileSize(handle), bytes);
                directory.CloseHandle(handle);
                use(bytes);
            }
        }
    }
}

// Parses streams that are not what they should be. At most two reports come of each: parsing ends at the
// first record that brings no progress.
class HostileStreams : public testing::Test {
  protected:
    HostileStreams() {
        parser_.shell.log.Close();
        parser_.context.error_wait = 0;
    }

    void Parse(std::string_view stream) {
        const std::int32_t errors = parser_.context.parse_errors;
        std::int32_t signature = 0;
        ParseAOT(parser_.context, rows_, test::TestParser::kFullName, stream, signature);
        ASSERT_LE(parser_.context.parse_errors - errors, 2);
        ++parsed_;
        // What the stand-ins noted of one stream is of no use for the next.
        parser_.shell.ui.boxes.clear();
        parser_.issues.issues.clear();
        parser_.progress.stream_values.clear();
    }

    test::TestParser parser_;
    OutputFile rows_{"/dev/null", "rows", OutputFile::Mode::kTruncate};
    int parsed_ = 0;
};

TEST_F(HostileStreams, EndWhereverTheyAreCut) {
    ForEachSampleStream([this](const std::string& bytes) {
        for (std::size_t size = 0; size < bytes.size(); ++size)
            Parse(std::string_view(bytes).substr(0, size));
    });
    EXPECT_GT(parsed_, 100000);
}

TEST_F(HostileStreams, EndWhateverTheirBytesAre) {
    std::mt19937 random(7);
    ForEachSampleStream([&](std::string bytes) {
        for (int round = 0; round < 50 && bytes.size() > 8; ++round) {
            bytes[8 + random() % (bytes.size() - 8)] = static_cast<char>(random());
            Parse(bytes);
        }
    });
    EXPECT_GT(parsed_, 10000);
}

}  // namespace
}  // namespace zorvel
