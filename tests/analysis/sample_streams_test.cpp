// The streams of the sample tree with bytes flipped: whatever is left of them, parsing ends.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "directory/ldif_reader.h"
#include "support/streams_fakes.h"

namespace zorvel {
namespace {

// The streams of the applications of the shipped tree.
std::vector<std::string> SampleStreams() {
    LdifReader ldif(InputFile(ZORVEL_SOURCE_DIR "/program/Trees/CORP_TREE.ldif", "CORP_TREE.ldif"));
    std::vector<std::string> streams;
    while (ldif.NextRecord()) {
        for (LdifAttribute line; ldif.NextAttribute(line);) {
            if (line.value.starts_with("AOT FILE")) streams.emplace_back(line.value);
        }
    }
    return streams;
}

// At most two reports come of each: parsing ends at the first record that brings no progress.
TEST(HostileStreams, EndWhateverTheirBytesAre) {
    test::TestParser parser;
    OutputFile rows("/dev/null", "rows", OutputFile::Mode::kTruncate);
    std::mt19937 random(7);
    int sound = 0;
    int damaged = 0;
    for (std::string& bytes : SampleStreams()) {
        for (int round = 0; round < 50 && bytes.size() > 8; ++round) {
            bytes[8 + random() % (bytes.size() - 8)] = static_cast<char>(random());
            parser.failures.noted.clear();
            std::int32_t signature = 0;
            ParseAOT(parser.context, rows, test::TestParser::kFullName, bytes, signature);
            ASSERT_LE(parser.failures.noted.size(), 2U);
            ASSERT_GE(signature, 0);
            ++(parser.failures.noted.empty() ? sound : damaged);
            parser.issues.issues.clear();
        }
    }
    EXPECT_GT(sound, 1000);
    EXPECT_GT(damaged, 1000);
}

}  // namespace
}  // namespace zorvel
