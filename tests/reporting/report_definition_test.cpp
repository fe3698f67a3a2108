// Definition files: what is read from them, and how their faults are told.
#include "reporting/report_definition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/code_page.h"
#include "platform/error.h"
#include "reporting/report_catalogue.h"
#include "reporting/report_fixture.h"
#include "support/errors.h"

namespace zorvel {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kHead =
    "title = \"T\"\nquery = \"SELECT AppName, AppOU FROM Zorvel_Apps ORDER BY AppName\"\n";
const std::string kColumn = "[[column]]\nfield = \"AppName\"\n";

std::string FaultOf(const std::string& text) {
    const Error error = test::RaisedBy([&] { ParseReportDefinition(text, "Reports\\x.rpt"); });
    EXPECT_EQ(error.number(), errors::kTypeMismatch);
    return error.description();
}

TEST(ReportDefinition, NamesFileLineAndWhatWasExpected) {
    const struct {
        std::string text;
        const char* fault;
    } kCases[] = {
        {"title = \"T\nquery", "Reports\\x.rpt, line 1: "},
        {"", "line 1: The definition: expected a text \"title\""},
        {"title = \"T\"\n", "expected a text \"query\""},
        {"title = \"\"\n", "line 1: \"title\": expected a text that is not empty"},
        {"title = 7\n", "line 1: \"title\": expected a text in quotes"},
        {kHead, "expected at least one [[column]]"},
        {kHead + "colour = 1\n" + kColumn,
         "line 3: The definition has no \"colour\"; expected one of: title, "},
        {kHead + "column = 5\n", "line 3: expected tables under [[column]]"},
        {kHead + "column = [5]\n", "expected tables under [[column]]"},
        {kHead + "page = 5\n" + kColumn, "line 3: expected a table [page]"},
        {kHead + "[page]\nsize = \"B5\"\n" + kColumn,
         "line 4: \"size\": expected \"A4\", \"A3\", \"Letter\" or \"Legal\""},
        {kHead + "[page]\norientation = \"up\"\n" + kColumn, "expected \"portrait\" or \"landscape\""},
        {kHead + "[page]\nmargin = 300\n" + kColumn, "line 4: \"margin\": expected a number from 0 to 60"},
        {kHead + "[page]\nmargin = nan\n" + kColumn, "\"margin\": expected a number from 0 to 60"},
        {kHead + "[page]\ntext_size = 0\n" + kColumn, "\"text_size\": expected a number from 4 to 24"},
        {kHead + kColumn + "width = \"wide\"\n", "line 5: \"width\": expected a number from 1 to 1000"},
        {kHead + kColumn + "format = \"money\"\n", "expected \"text\", \"number\", \"date\" or \"yes-no\""},
        {kHead + kColumn + "turned = 1\n", "line 5: \"turned\": expected true or false"},
        {kHead + kColumn + "fied = \"x\"\n", "line 5: [[column]] has no \"fied\"; expected one of: field, "},
        {kHead + "[[column]]\nheading = \"x\"\n", "line 3: [[column]]: expected a text \"field\""},
        {kHead + "[[group]]\nheading = \"x\"\n",
         "line 3: [[group]]: expected \"by\", the name of a field or a list"},
        {kHead + "[[group]]\nby = [\"a\", 5]\n", "line 4: \"by\": expected a text in quotes"},
        {kHead + "[[group]]\nby = \"a\"\nheading = \"{a\"\n",
         "line 5: \"heading\": expected the name of a field and"},
        {kHead + "[[group]]\nby = \"a\"\nheading = \"{}\"\n",
         "line 5: \"heading\": expected the name of a field and"},
        // Letters and signs beyond ASCII, and what is no character, stand between quotes only.
        {kHead + "\xC3\xA4 = 1\n" + kColumn, "Reports\\x.rpt, line 3: "},
        {kHead + "\xE3\x80\x82\n" + kColumn, "Reports\\x.rpt, line 3: "},
        {kHead + "\xEF\xB5\xBF = 1\n" + kColumn, "Reports\\x.rpt, line 3: "},
        {kHead + "[[total]]\nheading = \"n\"\n", "line 3: [[total]]: expected either count = true"},
        {kHead + "[[total]]\nheading = \"n\"\ncount = true\nsum = \"a\"\n", "expected either count = true"},
        {kHead + "[[total]]\nheading = \"n\"\ncount = true\nlevels = 1\n",
         "\"levels\": expected a whole number from 0 to 0"},
        {kHead + "[[chart]]\nheading = \"n\"\nby = \"a\"\nlabel = \"a\"\nlimit = -1\n", "from 0 to 1000"},
    };
    for (const auto& test : kCases)
        EXPECT_THAT(FaultOf(test.text), HasSubstr(test.fault)) << test.text;
    const std::string quoted = "explanation = \"\"\"\\\n  \xC3\xA4\xE3\x80\x82\"\"\"\n";
    EXPECT_NO_THROW(ParseReportDefinition(kHead + quoted + kColumn, "Reports\\x.rpt"));
}

TEST(ReportDefinition, AFieldThatTheQueryDoesNotGiveIsNamedWithItsLine) {
    const test::ReportFolder folder;
    const struct {
        std::string text;
        const char* fault;
    } kCases[] = {
        {"[[column]]\nfield = \"Nmae\"\n",
         "test.rpt, line 3: the query gives no field \"Nmae\"; expected one of: AppName, AppOU"},
        {"[[group]]\nby = \"X\"\nheading = \"h\"\n" + kColumn, "line 3: the query gives no field \"X\""},
        {"[[group]]\nby = \"AppOU\"\nheading = \"{Y}\"\n" + kColumn,
         "line 5: the query gives no field \"Y\""},
        {"[[total]]\nheading = \"h\"\nsum = \"Z\"\n" + kColumn, "line 3: the query gives no field \"Z\""},
        {"[[chart]]\nheading = \"h\"\nby = \"AppOU\"\nlabel = \"{Q}\"\n" + kColumn, "gives no field \"Q\""},
    };
    for (const auto& test : kCases) {
        const Error error = test::RaisedBy([&] { folder.Make(kHead + test.text); });
        EXPECT_THAT(error.description(), HasSubstr(test.fault));
    }
    // As in SQL, case makes no difference.
    EXPECT_EQ(folder.Make(kHead + "[[column]]\nfield = \"APPNAME\"\n")->rows().size(), 0U);
}

TEST(ReportDefinition, TextsAreOfTheCodePageAndPagesInPoints) {
    const ReportDefinition definition = ParseReportDefinition(
        "title = \"Caf\xC3\xA9\"\nquery = \"q\"\n[page]\nsize = \"Letter\"\norientation = "
        "\"landscape\"\nmargin = "
        "25.4\n[[group]]\nby = \"a\"\nheading = \"{a}, {b}!\"\n[[column]]\nfield = \"n\"\nformat = "
        "\"number\"\n"
        "[[total]]\nheading = \"t\"\ncount = true\n",
        "x");
    EXPECT_EQ(definition.title, "Caf\xE9");
    EXPECT_DOUBLE_EQ(definition.page.width, 792);
    EXPECT_DOUBLE_EQ(definition.page.height, 612);
    EXPECT_DOUBLE_EQ(definition.page.margin, 72);
    EXPECT_EQ(definition.columns[0].heading, "n");
    EXPECT_EQ(definition.columns[0].alignment, ColumnAlignment::kRight);
    EXPECT_EQ(definition.totals[0].levels, 1U);
    std::string pieces;
    for (const TextTemplate::Piece& piece : definition.groups[0].heading.pieces)
        pieces += (piece.is_field ? "<" : "") + piece.text + (piece.is_field ? ">" : "");
    EXPECT_EQ(pieces, "<a>, <b>!");
}

// Only errors that name the file come of a file that is cut short or damaged.
TEST(ReportDefinition, DamagedFilesAreReadOrRefused) {
    const std::string text = test::ReadFile(ZORVEL_SOURCE_DIR "/program/Reports/Zorvel_AppIssues.rpt");
    std::size_t refused = 0;
    const auto read = [&refused](const std::string& damaged) {
        try {
            ParseReportDefinition(damaged, "x.rpt");
        } catch (const Error& error) {
            EXPECT_THAT(error.description(), testing::StartsWith("x.rpt, line "));
            ++refused;
        }
    };
    for (std::size_t length = 0; length < text.size(); ++length)
        read(text.substr(0, length));
    EXPECT_GT(refused, text.size() / 4);
    std::minstd_rand random(7);  // NOLINT(bugprone-random-generator-seed): the same damage each time
    for (int round = 0; round < 2'000; ++round) {
        std::string damaged = text;
        for (int i = 0; i < 3; ++i)
            damaged[random() % damaged.size()] = static_cast<char>(random() & 0xFFU);
        read(damaged);
    }
}

// The delivered definition files.
TEST(ReportDefinition, EachDeliveredReportHasAQueryThatCanBeOrderedAndFiltered) {
    for (const CatalogueReport& report : CatalogueReports()) {
        const std::string path = ZORVEL_SOURCE_DIR "/program/Reports/" + std::string(report.definition);
        const ReportDefinition definition = ParseReportDefinition(test::ReadFile(path), path);
        EXPECT_EQ(definition.title, report.caption);
        const std::string upper = UpperCase(definition.query);
        EXPECT_THAT(upper, HasSubstr("ORDER BY")) << path;
        EXPECT_THAT(upper, Not(HasSubstr("WHERE"))) << path;
    }
}

}  // namespace
}  // namespace zorvel
