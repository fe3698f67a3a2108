// The examples of docs/streams.md are what the parser makes of them.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

// The bytes of a line of an example: pairs of digits, up to the column of the remarks.
std::string BytesOf(const std::string& line) {
    constexpr std::size_t kRemarks = 70;
    std::istringstream pairs(line.substr(0, kRemarks));
    std::string bytes;
    for (std::string pair; pairs >> pair;)
        bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
    return bytes;
}

// What stands between backticks, up to a semicolon.
std::vector<std::string> Quoted(const std::string& line) {
    std::vector<std::string> texts;
    std::istringstream rest(line.substr(0, line.find(';')));
    for (std::string text; std::getline(rest, text, '`') && std::getline(rest, text, '`');)
        texts.push_back(text);
    return texts;
}

// The fields of a row that are not empty, without the application's name.
std::vector<std::string> Fields(const std::string& rows) {
    std::vector<std::string> fields;
    std::istringstream lines(rows);
    for (std::string line; std::getline(lines, line);) {
        line.pop_back();
        if (!line.empty() && line != TestParser::kFullName) fields.push_back(line);
    }
    return fields;
}

TEST(StreamsPage, ShowsRecordsAndTheRowsThatTheyBecome) {
    std::istringstream page(ReadFile(ZORVEL_SOURCE_DIR "/docs/streams.md"));
    std::string record;
    int examples = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("    ")) record += BytesOf(line);
        if (record.empty() || (!line.starts_with('`') && !line.starts_with("**"))) continue;
        TestParser parser;
        EXPECT_EQ(parser.Parse("AOT FILE" + record), ParseResult::kParsed);
        EXPECT_EQ(Fields(parser.rows), line.starts_with('`') ? Quoted(line) : std::vector<std::string>());
        EXPECT_TRUE(parser.failures.noted.empty()) << line;
        record.clear();
        ++examples;
    }
    EXPECT_EQ(examples, 11);
}

}  // namespace
}  // namespace zorvel::test
