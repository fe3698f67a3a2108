// The rows of a report: how groups gather them, and what is added up.
#include "reporting/report_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "reporting/report_fixture.h"
#include "reporting/report_values.h"

namespace zorvel {
namespace {

using testing::ElementsAre;

// Rows in the order (number) of insertion: container, application, number.
const std::string kDefinition = R"(
title = "T"
query = "SELECT AssocByGroup AS Container, AssocByOU AS Application, TotAssociations AS Number FROM Zorvel_AppAssociations ORDER BY AppUniqueRef"
[[group]]
by = "Container"
heading = "<{Container}>"
[[group]]
by = "Application"
heading = "{Application} in {Container}"
note = "{Number}"
[[column]]
field = "Number"
[[total]]
heading = "Rows"
count = true
[[total]]
heading = "Sum"
sum = "Number"
levels = 1
[[total]]
heading = "Applications"
distinct = ["Application"]
levels = 1
[[chart]]
heading = "C"
by = "Application"
label = "*{Application}"
sum = "Number"
limit = 2
[[chart]]
heading = "D"
by = ["Container", "Application"]
label = "{Container}{Application}"
limit = 4
)";

class ReportRowsTest : public testing::Test {
  protected:
    void Add(const std::string& container, const std::string& application, const std::string& number) {
        ++added_;
        folder_.Fill("INSERT INTO Zorvel_AppAssociations VALUES (" + std::to_string(added_) + ", '" +
                     container + "', '" + application + "', '', " + number + ", '')");
    }
    // Headings and rows from top to bottom.
    static std::vector<std::string> Shown(const Report& report) {
        std::vector<std::string> lines;
        std::size_t group = 0;
        const std::vector<RowGroup>& groups = report.rows().groups();
        for (std::size_t row = 0; row < report.rows().size(); ++row) {
            for (; group < groups.size() && groups[group].begin == row; ++group) {
                std::string line = std::string(groups[group].level, ' ') + report.Heading(group);
                for (const std::string& total : report.GroupTotals(group))
                    line += ", " + total;
                lines.push_back(line);
            }
            lines.emplace_back(report.rows().ColumnValue(row, 0));
            for (std::size_t level = 0; level < report.definition().groups.size(); ++level) {
                const RowGroup& of_row = groups[report.rows().GroupOf(row, level)];
                EXPECT_EQ(of_row.level, level);
                EXPECT_TRUE(of_row.begin <= row && row < of_row.end);
            }
        }
        EXPECT_EQ(group, groups.size());
        return lines;
    }

    static std::vector<std::string> Bars(const Report& report, std::size_t chart) {
        std::vector<std::string> bars;
        for (const ChartBar& bar : report.rows().charts()[chart])
            bars.push_back(bar.label + " " + std::to_string(bar.value));
        return bars;
    }

    test::ReportFolder folder_;
    int added_ = 0;
};

TEST_F(ReportRowsTest, GroupsStandWhereTheyFirstAppearAndGatherTheirRows) {
    Add("SOUTH", "Word", "1");
    Add("NORTH", "Word", "2");
    Add("SOUTH", "Calc", "3");
    Add("SOUTH", "Word", "4");
    Add("NORTH", "Word", "1000");
    const auto report = folder_.Make(kDefinition);
    EXPECT_THAT(Shown(*report),
                ElementsAre("<SOUTH>, Rows 3, Sum 8, Applications 2", " Word in SOUTH, Rows 2", "1", "4",
                            " Calc in SOUTH, Rows 1", "3", "<NORTH>, Rows 2, Sum 1,002, Applications 1",
                            " Word in NORTH, Rows 2", "2", "1000"));
    EXPECT_EQ(report->rows().Total(0), 5);
    EXPECT_EQ(report->rows().Total(1), 1010);
    EXPECT_EQ(report->rows().Total(2), 2);
    EXPECT_EQ(report->Note(1), "1");
}

TEST_F(ReportRowsTest, ChartsShowTheLongestBarsAndTheRestAsOne) {
    Add("A", "Word", "5");
    Add("A", "Calc", "7");
    Add("B", "Word", "4");
    Add("B", "Paint", "1");
    Add("B", "Draw", "2");
    const auto report = folder_.Make(kDefinition);
    EXPECT_THAT(Bars(*report, 0), ElementsAre("*Word 9", "*Calc 7", "Other (2) 3"));
    // One more than the limit would be alone among the others, and is shown.
    EXPECT_THAT(Bars(*report, 1), ElementsAre("AWord 1", "ACalc 1", "BWord 1", "BPaint 1", "BDraw 1"));
}

TEST_F(ReportRowsTest, SumsStopAtTheEndOfTheNumbersThatTheyPass) {
    for (const char* number : {"9223372036854775807", "1"})
        Add("A", "Word", number);
    for (const char* number : {"-9223372036854775807", "-2"})
        Add("A", "Calc", number);
    EXPECT_THAT(Bars(*folder_.Make(kDefinition), 0),
                ElementsAre("*Word 9223372036854775807", "*Calc -9223372036854775808"));
}

TEST_F(ReportRowsTest, ValuesThatOnlyTogetherLookAlikeAreGroupsOfTheirOwn) {
    Add("1:a", "b", "1");
    Add("1", ":ab", "2");
    Add("", "1:ab", "3");
    EXPECT_EQ(folder_.Make(kDefinition)->rows().groups().size(), 6U);
}

TEST_F(ReportRowsTest, WithoutRowsThereIsNothing) {
    const auto report = folder_.Make(kDefinition);
    EXPECT_EQ(report->rows().size(), 0U);
    EXPECT_TRUE(report->rows().groups().empty());
    EXPECT_EQ(report->rows().Total(0), 0);
    EXPECT_TRUE(report->rows().charts()[0].empty());
}

TEST(DisplayedValues, AreReadableInEveryFormat) {
    struct Case {
        ValueFormat format;
        std::string value, shown;
    };
    for (const auto& test : {Case{ValueFormat::kText, "a\tb\r\nc\rd\ne", "a    b\nc\nd\ne"},
                             Case{ValueFormat::kText, std::string("\0x\x7F\x81", 4), "\xB7x\xB7\xB7"},
                             Case{ValueFormat::kText, "\xE9\x80<&>", "\xE9\x80<&>"},
                             Case{ValueFormat::kNumber, "1234567", "1,234,567"},
                             Case{ValueFormat::kNumber, "-5", "-5"}, Case{ValueFormat::kNumber, "0", "0"},
                             Case{ValueFormat::kNumber, "", ""}, Case{ValueFormat::kNumber, "12 GB", "12 GB"},
                             Case{ValueFormat::kDate, "2026-11-16 17:28:05", "16/11/2026 17:28:05"},
                             Case{ValueFormat::kDate, "2026/11/16 17:28:05", "2026/11/16 17:28:05"},
                             Case{ValueFormat::kYesNo, "1", "Yes"}, Case{ValueFormat::kYesNo, "0", "-"},
                             Case{ValueFormat::kYesNo, "", "-"}}) {
        std::string scratch;
        EXPECT_EQ(DisplayValue(test.value, test.format, scratch), test.shown) << test.value;
    }
}

}  // namespace
}  // namespace zorvel
