// The list of accepted findings: what may stand in it, and what is left of it when it is written.
#include "findings/accepted_findings.h"

#include <gmock/gmock.h>

#include "findings/accepted_file.h"
#include "findings/findings_fixture.h"
#include "support/errors.h"

namespace zorvel {
namespace {

using test::FindingsTest;
using test::RaisedBy;

constexpr const char* kPath = "Accepted.toml";
const std::string kEntry = "[[accepted]]\ncode = \"FILEOLD\"\napplication = \"*\"\nreason = \"r\"\n";

TEST(AcceptedFindings, AMistakeNamesFileLineAndWhatWasExpected) {
    const struct {
        std::string text;
        const char* fault;
    } kCases[] = {
        {"[[accepted]\n", "line 1: "},
        {kEntry + kEntry + "until = \"soon\"\n",
         "line 9: \"until\": expected a date without quotes, such as 2027-06-01"},
        {kEntry + "until = 2027-06-01T10:00:00\n", "line 5: \"until\": expected a date"},
        {kEntry + "until = 2027-02-30\n", "line 5: "},
        {"[[accepted]]\ncode = \"FILEOLD\"\napplication = \"*\"\n",
         "line 1: [[accepted]]: expected a text \"reason\""},
        {"[[accepted]]\ncode = \"FILEOLDER\"\napplication = \"*\"\nreason = \"r\"\n",
         "line 2: \"code\": expected the code of an issue, such as \"REGISTRYUNC\""},
        {"[[accepted]]\ncode = \"FILEOLD\"\napplication = \" \"\nreason = \"r\"\n",
         "line 3: \"application\": expected a full name, with * and ? for what may differ"},
        {"[[accepted]]\ncode = \"FILEOLD\"\napplication = \"*\"\nreason = \"\"\n",
         "line 4: \"reason\": expected a reason that is not empty"},
        {kEntry + "target = \"\"\n",
         "line 5: \"target\": expected a target that is not empty; leave it out for any"},
        {kEntry + "by = 5\n", "line 5: \"by\": expected a text in quotes"},
        {kEntry + "untli = 2027-06-01\n",
         "line 5: [[accepted]] has no \"untli\"; expected one of: code, application, target, reason, until, "
         "by"},
        {"accepted = 5\n", "line 1: expected tables under [[accepted]]"},
        {"accepted = [5]\n", "line 1: expected tables under [[accepted]]"},
        {"\n[[acepted]]\n", "line 2: there is no \"acepted\" here; expected tables under [[accepted]]"},
        {"a = \"\xFF\"", "line 1: "},
    };
    for (const auto& c : kCases) {
        const Error error = RaisedBy([&] { ParseAccepted(c.text, kPath); });
        EXPECT_THAT(error.detail(), testing::StartsWith(std::string(kPath) + ", " + c.fault)) << c.text;
    }
    EXPECT_TRUE(ParseAccepted("# nothing yet\n", kPath).empty());
}

TEST(AcceptedFindings, DatesAreThoseOfTheCalendar) {
    EXPECT_EQ(DateText(*DateFrom("2028-02-29")), "2028-02-29");
    for (const char* text :
         {"", "2027-02-29", "2027-13-01", "2027-1-01", "01/06/2027", "2027-06-01 ", "2027x06-01"})
        EXPECT_FALSE(DateFrom(text)) << text;
}

TEST(AcceptedFindings, WhatIsWrittenIsReadAgainAndCommentsStay) {
    AcceptedFinding hostile;
    hostile.code = "REGISTRYUNC";
    hostile.application = "*.APPS.K\xD6LN\\.X.\"CORP\"";
    hostile.target = "HKLM\\SOFTWARE\\\x1B[31m*";
    hostile.reason = "line\nbreak # \" ' \\ \t";
    hostile.until = DateFrom("2027-06-01");
    hostile.by = "\xE9quipe";
    const std::string head = "# the list of LEEDS\r\n\r\n";
    const std::string text = WithAccepted(head, hostile, kPath);
    EXPECT_THAT(text, testing::StartsWith(head + "\r\n[[accepted]]\r\ncode = \"REGISTRYUNC\"\r\n"));
    const AcceptedFindings read = ParseAccepted(text, kPath);
    ASSERT_EQ(read.size(), 1U);
    EXPECT_TRUE(read[0].IsLike(hostile));
    EXPECT_EQ(read[0].reason, hostile.reason);
    EXPECT_EQ(read[0].until, hostile.until);
    EXPECT_EQ(read[0].by, hostile.by);
    EXPECT_EQ(read[0].line, 4U);
    EXPECT_EQ(WithoutAccepted(text, 4, kPath), head);

    const std::string commented =
        "# first\n" + kEntry + "# within\nby = \"\"\"\n# no comment\n\"\"\"  # behind\n\n# second\n" + kEntry;
    EXPECT_EQ(WithoutAccepted(commented, 2, kPath), "# first\n# within\n\n# second\n" + kEntry);
    EXPECT_EQ(WithoutAccepted(commented, 12, kPath), commented.substr(0, commented.size() - kEntry.size()));
    EXPECT_EQ(WithAccepted("", ParseAccepted(kEntry, kPath)[0], kPath), kEntry);
    EXPECT_EQ(WithAccepted("# no end", ParseAccepted(kEntry, kPath)[0], kPath), "# no end\n\n" + kEntry);
    const std::string inline_list =
        "accepted = [{code = \"FILEOLD\", application = \"*\", reason = \"r\"}]\n";
    EXPECT_THROW(WithAccepted(inline_list, hostile, kPath), Error);
    EXPECT_THROW(WithoutAccepted(inline_list, 1, kPath), Error);
}

TEST_F(FindingsTest, TheFileGrowsAndShrinksEntryByEntry) {
    AcceptedFinding accepted = ParseAccepted(kEntry, kPath)[0];
    AddAccepted(files_, accepted, test::kToday);
    EXPECT_EQ(RaisedBy([&] { AddAccepted(files_, accepted, test::kToday); }).Reason(),
              files_.Path(kAcceptedFile) + ", line 1: it is accepted already");
    AcceptedFinding other = accepted;
    other.until = DateFrom("2026-11-22");
    other.target = "X";
    AddAccepted(files_, other, test::kToday);
    AddAccepted(files_, other, test::kToday);  // again, once it has expired
    EXPECT_EQ(ReadAccepted(files_).size(), 3U);
    WithdrawAccepted(files_, accepted);
    EXPECT_THAT(folder_.Read("Accepted.toml"), testing::StartsWith("[[accepted]]\ncode = \"FILEOLD\"\n"));
    EXPECT_EQ(ReadAccepted(files_).size(), 2U);
    EXPECT_EQ(RaisedBy([&] { WithdrawAccepted(files_, accepted); }).number(), errors::kFileNotFound);
}

}  // namespace
}  // namespace zorvel
