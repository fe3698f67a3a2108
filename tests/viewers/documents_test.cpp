// The documents that ship with the program, as their window shows them.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>

#include "support/temp_folder.h"
#include "viewers/rich_text_sinks.h"

namespace zorvel {
namespace {

using test::ReadFile;

// The words of `text`, one blank between them.
std::string Words(const std::string& text) {
    std::istringstream stream(text);
    std::string words;
    for (std::string word; stream >> word;)
        words += (words.empty() ? "" : " ") + word;
    return words;
}

// The text of a document whose lines end as those of text files do, and of which nothing but text is shown.
std::string TextOfDocument(const std::filesystem::path& path) {
    const std::string rtf = ReadFile(path);
    EXPECT_NE(rtf, "") << path;
    EXPECT_EQ(std::count(rtf.begin(), rtf.end(), '\n'), std::count(rtf.begin(), rtf.end(), '\r'));
    EXPECT_THAT(rtf, testing::EndsWith("}\r\n"));
    std::string text = test::PlainTextOf(rtf);
    EXPECT_EQ(text.find_first_of("\\{}@;"), std::string::npos) << text;
    return text;
}

TEST(Documents, TheProgrammeHistoryNamesTheVersion) {
    const std::string text = TextOfDocument(ZORVEL_PROGRAM_FOLDER "/About_Zorvel.rtf");
    EXPECT_THAT(text, testing::StartsWith("Zorvel\nVersion " ZORVEL_VERSION " \u2014 an audit of ZENworks"));
    EXPECT_THAT(text,
                testing::HasSubstr("\n\u2022\tThe log. zorvel-batch log prints it as rich text, errors on"));
}

TEST(Documents, TheLicenseIsTheProjects) {
    const std::string text = TextOfDocument(ZORVEL_SOURCE_DIR "/program/Zorvel_License.rtf");
    EXPECT_EQ(Words(text), "Zorvel License " + Words(ReadFile(ZORVEL_SOURCE_DIR "/LICENSE")));
}

TEST(Documents, CutAnywhereTheyReadUpToTheCut) {
    for (const char* path :
         {ZORVEL_PROGRAM_FOLDER "/About_Zorvel.rtf", ZORVEL_SOURCE_DIR "/program/Zorvel_License.rtf"}) {
        const std::string rtf = ReadFile(path);
        const std::string whole = test::PlainTextOf(rtf);
        std::size_t longest = 0;
        for (std::size_t length = 0; length < rtf.size(); ++length) {
            std::string text = test::PlainTextOf(std::string_view(rtf).substr(0, length));
            text.resize(text.size() - static_cast<std::size_t>(text.ends_with('\n')));
            text.resize(text.size() - static_cast<std::size_t>(text.ends_with('{')));  // cut behind it
            ASSERT_TRUE(whole.starts_with(text)) << path << " cut at " << length << ": " << text;
            longest = std::max(longest, text.size());
        }
        EXPECT_EQ(longest, whole.size() - 1);  // the last line feed
    }
}

}  // namespace
}  // namespace zorvel
