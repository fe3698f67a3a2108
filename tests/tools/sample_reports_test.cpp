// Every report over the sample tree: its rows, totals and bars are those that the dataset holds, counted here
// by queries of the test's own, and its pages show all of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "reporting/report_fixture.h"
#include "reporting/reports.h"
#include "sample_support.h"

namespace zorvel::test {
namespace {

using Texts = std::vector<std::string>;
using Table = std::vector<Texts>;

const std::string kWithApps = " JOIN Zorvel_Apps USING (AppUniqueRef)";
const std::string kRecipient =
    "CASE AssociationType WHEN 'OU' THEN 'Everybody in ' || FullAssociation WHEN 'WS' THEN FullAssociation "
    "ELSE FullUserID END";
const std::string kCount = "count(*)";
const std::string kApplications = "count(DISTINCT AppUniqueRef)";
const std::string kRules = "count(DISTINCT IssueCode)";
const std::string kExcluded = "'FILEOLD','APPNODESC'";

// A report in the words of the tables. Orders are the initials of name, caption and icon order.
struct Expected {
    std::string caption;
    std::string source;     // what totals are counted over
    Texts totals;           // how
    Texts keys;             // tell the groups of each level apart
    std::string orders;     // that are honoured
    char own_order;         // of the definition; ' ' is another one
    Texts secondary = {};   // order within an application
    std::string rows = {};  // where the rows come from, if not from `source`
    bool is_filtered = false;
};

const std::vector<Expected>& AllExpected() {
    static const Texts kByApplication{"AppOU", "AppUniqueRef"};
    static const Texts kTotals{kCount, kApplications};
    static const Texts kIssueTotals{kCount, kApplications, kRules};
    const auto of = [](const std::string& table) { return "Zorvel_" + table + kWithApps; };
    static const std::vector<Expected> kAll{
        {"Issue Summary",
         of("Issues"),
         kIssueTotals,
         kByApplication,
         "NCI",
         'C',
         {"EntryType"},
         "(SELECT DISTINCT AppUniqueRef, EntryType, IssueCode FROM Zorvel_Issues)" + kWithApps,
         true},
        {"Issue Detail",
         of("Issues"),
         kIssueTotals,
         {"AppOU", "AppUniqueRef", "IssueCode"},
         "NCI",
         'C',
         {"TargetFile", "EntryType"},
         "",
         true},
        {"FIL File Details", of("CopyFiles"), kTotals, kByApplication, "NCI", 'C', {"Target"}},
        {"Registry Details", of("RegistrySettings"), kTotals, kByApplication, "NCI", 'C', {"Key"}},
        {"Macro Details", of("Macros"), kTotals, kByApplication, "NC", 'C', {"Macro"}},
        {"INI File Details", of("INISettings"), kTotals, kByApplication, "NCI", 'C', {"Data"}},
        {"Attribute Details", of("AppDetails"), kTotals, kByApplication, "NCI", 'C', {"Attribute"}},
        {"Run Order Summary", "Zorvel_Apps", {kCount, "sum(DAFForceRun)"}, {"AppOU"}, "NCI", 'I'},
        {"Capture Details Summary", "Zorvel_CaptureDetails", {kCount}, {"Tree"}, "", ' '},
        {"Associations Summary",
         of("AppAssociations"),
         {kCount, "sum(TotAssociations)"},
         {"AppOU"},
         "N",
         'N'},
        {"Associations by Application", of("Associations"), kTotals, kByApplication, "NC", 'C'},
        {"Associations by User",
         of("Associations"),
         {kCount, "count(DISTINCT " + kRecipient + ")", kApplications},
         {kRecipient, "AppOU"},
         "",
         ' '},
        {"Application 'Fingerprint' Summary", of("AppAssociations"), {kCount}, {"AppOU"}, "", 'N'},
        {"Application Flags Summary", "Zorvel_Apps", {kCount}, {"AppOU"}, "N", 'N'},
    };
    return kAll;
}

std::string Joined(const Texts& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

Table Select(const Database& database, const std::string& sql) {
    Rows rows = database.Query("SELECT " + sql);
    Table table;
    while (rows.Next()) {
        Texts& row = table.emplace_back(rows.Columns().size());
        for (std::size_t i = 0; i < row.size(); ++i)
            rows.Read(i, row[i]);
    }
    return table;
}

// One analysis of the sample tree serves all tests.
class SampleReports : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        SampleFolder sample;
        ASSERT_EQ(sample.Run({"analyse", "--tree", "CORP_TREE", "--all", "--pace", "0", "--import"}), kDone);
        folder_ = std::make_unique<ReportFolder>();
        for (const auto& file : std::filesystem::directory_iterator(sample.folder.path() / "Databases")) {
            if (file.path().extension() == ".MDB") {
                std::filesystem::copy_file(file, folder_->folder.path() / "Databases" / folder_->dataset,
                                           std::filesystem::copy_options::overwrite_existing);
            }
        }
        std::filesystem::copy(Shipped("Reports"), folder_->folder.path() / "Reports");
        // What the tree does not have: an issue in two kinds of entries, applications of one caption and
        // order.
        folder_->Fill(
            "INSERT INTO Zorvel_Issues SELECT AppUniqueRef, 'Elsewhere', TargetFile, SourceFile, IssueCode "
            "FROM Zorvel_Issues WHERE IssueCode = 'FILEPORTABLE';"
            "UPDATE Zorvel_Apps SET AppCaption = 'Alike', AppIconOrder = NULL WHERE AppUniqueRef % 4 = 0");
        folder_->master->ExecuteScript(
            "INSERT INTO Zorvel_CaptureDetails (Captured, Tree, DBName) VALUES "
            "('2026-11-17 01:00:00', 'LAB_TREE', 'b'), ('2026-11-18 01:00:00', 'CORP_TREE', 'c'), "
            "('2026-11-15 01:00:00', 'LAB_TREE', 'd')");
    }
    static void TearDownTestSuite() { folder_.reset(); }

    static std::shared_ptr<const Report> Make(const std::string& caption, const std::string& sort = {},
                                              bool descending = false, const std::string& excluded = {}) {
        FakeDisplay display;
        display.choose = [&](ReportChoice& choice) {
            choice = {caption, folder_->dataset, sort, descending, excluded, false};
        };
        ReportChoice choice;
        EXPECT_EQ(Reports(folder_->services, *folder_->catalogue, choice, display).Generate(caption),
                  ReportOutcome::kShown);
        return display.report;
    }
    static Database Open(const Expected& expected) {
        return folder_->Open(expected.keys.front() == "Tree" ? "ZorvelMaster.mdb" : folder_->dataset);
    }

    static std::unique_ptr<ReportFolder> folder_;
};
std::unique_ptr<ReportFolder> SampleReports::folder_;

// The values of some fields of a row.
Texts Values(const Report& report, std::size_t row, const Texts& names) {
    Texts values;
    const Texts& fields = report.rows().fields();
    for (const std::string& name : names) {
        const auto field = std::find(fields.begin(), fields.end(), name);
        values.emplace_back(report.rows().Value(row, static_cast<std::size_t>(field - fields.begin())));
    }
    return values;
}

std::string Where(const Expected& expected, const std::string& excluded) {
    if (!expected.is_filtered || excluded.empty()) return {};
    return " WHERE IssueCode NOT IN (" + excluded + ")";
}

void ExpectTotals(const Report& report, const Expected& expected, const std::string& where,
                  const Database& data) {
    const ReportRows& rows = report.rows();
    const std::string from = " FROM " + expected.source + where;
    const std::string row_from = " FROM " + (expected.rows.empty() ? expected.source : expected.rows) + where;
    EXPECT_EQ(std::to_string(rows.size()), Select(data, kCount + row_from)[0][0]);
    EXPECT_GT(rows.size(), 0U);

    ASSERT_EQ(report.definition().totals.size(), expected.totals.size());
    const Texts totals = Select(data, Joined(expected.totals) + from)[0];
    for (std::size_t total = 0; total < totals.size(); ++total)
        EXPECT_EQ(std::to_string(rows.Total(total)), totals[total]) << expected.totals[total];

    std::size_t groups = 0;
    ASSERT_EQ(report.definition().groups.size(), expected.keys.size());
    for (std::size_t level = 0; level < expected.keys.size(); ++level) {
        const Texts keys(expected.keys.begin(), expected.keys.begin() + static_cast<long>(level) + 1);
        std::map<Texts, Texts> counted;
        for (const Texts& row :
             Select(data, Joined(keys) + ", " + Joined(expected.totals) + from + " GROUP BY " + Joined(keys)))
            counted[Texts(row.begin(), row.begin() + static_cast<long>(level) + 1)] =
                Texts(row.begin() + static_cast<long>(level) + 1, row.end());
        groups += counted.size();

        Texts fields;
        for (const std::string& key : keys)
            fields.push_back(key == kRecipient ? "Recipient" : key);
        for (std::size_t group = 0; group < rows.groups().size(); ++group) {
            if (rows.groups()[group].level != level) continue;
            const Texts key = Values(report, rows.groups()[group].begin, fields);
            const auto found = counted.find(key);
            ASSERT_NE(found, counted.end()) << Joined(key);
            for (std::size_t total = 0; total < totals.size(); ++total) {
                if (level >= report.definition().totals[total].levels) continue;
                EXPECT_EQ(std::to_string(rows.GroupTotal(group, total)), found->second[total]) << Joined(key);
            }
        }
    }
    EXPECT_EQ(rows.groups().size(), groups);
}

// What a bar counts is tested with the rows; here, that each chart counts what it says, and leaves nothing
// out.
void ExpectBars(const Report& report, const Expected& expected, const std::string& where,
                const Database& data) {
    const auto& charts = report.rows().charts();
    ASSERT_EQ(charts.size(), expected.caption == "Issue Summary" ? 2U : 0U);
    for (std::size_t i = 0; i < charts.size(); ++i) {
        EXPECT_EQ(charts[i].size(), i == 0 ? 13U : 9U);
        EXPECT_TRUE(charts[i].back().label.starts_with("Other ("));
        std::int64_t all = 0;
        for (const ChartBar& bar : charts[i])
            all += bar.value;
        EXPECT_EQ(all, report.rows().Total(0));
        const std::string of =
            " FROM " + expected.source + where + " GROUP BY " + (i == 0 ? "IssueCode" : "AppOU");
        EXPECT_EQ(std::to_string(charts[i].front().value),
                  Select(data, kCount + of + " ORDER BY 1 DESC LIMIT 1")[0][0]);
    }
}

// Containers, and the applications within, as the order wants them: each row is looked up by its key.
void ExpectOrder(const Report& report, const Expected& expected, char order, bool descending,
                 const std::string& where, const Database& data) {
    const std::string column = order == 'N' ? "AppName" : order == 'C' ? "AppCaption" : "AppIconOrder";
    const std::string from = " FROM " + (expected.rows.empty() ? expected.source : expected.rows) + where;
    std::map<std::string, Texts> applications;
    for (const Texts& row : Select(data, "AppUniqueRef, AppOU, " + column + " FROM Zorvel_Apps"))
        applications[row[0]] = {row[1], row[2]};

    Table shown;
    Table within;  // with the keys of the groups, which are each in one piece
    Texts keys(expected.keys.begin() + 1, expected.keys.end());
    Texts fields = keys;
    fields.insert(fields.end(), expected.secondary.begin(), expected.secondary.end());
    for (std::size_t row = 0; row < report.rows().size(); ++row) {
        shown.push_back(applications[Values(report, row, {"AppUniqueRef"})[0]]);
        within.push_back(Values(report, row, fields));
    }
    EXPECT_EQ(shown, Select(data, "AppOU, " + column + from + " ORDER BY AppOU, " + column +
                                      (descending ? " DESC" : " ASC")));
    if (expected.secondary.empty()) return;
    std::stable_sort(within.begin(), within.end(), [&keys](const Texts& left, const Texts& right) {
        const auto count = static_cast<long>(keys.size());
        return std::lexicographical_compare(left.begin(), left.begin() + count, right.begin(),
                                            right.begin() + count);
    });
    fields.front() = "CAST(AppUniqueRef AS TEXT)";
    const std::string columns = Joined(fields);
    EXPECT_EQ(within, Select(data, columns + from + " ORDER BY " + columns));
}

TEST_F(SampleReports, HoldWhatTheDatasetHoldsInTheOrderThatWasChosen) {
    const struct {
        char initial;
        const char* sort;
    } kSorts[] = {{' ', ""},
                  {'N', "Application Name"},
                  {'C', "Application Caption"},
                  {'I', "Application Icon/Run Order"}};
    for (const Expected& expected : AllExpected()) {
        const Database data = Open(expected);
        for (const std::string& excluded : {std::string(), kExcluded}) {
            const std::string where = Where(expected, excluded);
            for (const auto& sort : kSorts) {
                for (const bool descending : {false, true}) {
                    SCOPED_TRACE(expected.caption + ", " + sort.sort + (descending ? ", descending" : "") +
                                 where);
                    const auto report = Make(expected.caption, sort.sort, descending, excluded);
                    ExpectTotals(*report, expected, where, data);
                    ExpectBars(*report, expected, where, data);
                    const bool honoured = expected.orders.find(sort.initial) != std::string::npos;
                    EXPECT_EQ(!report->facts().order.empty(), honoured);
                    const char order = honoured ? sort.initial : expected.own_order;
                    if (order != ' ')
                        ExpectOrder(*report, expected, order, honoured && descending, where, data);
                    if (HasFailure()) return;  // the other orders fail alike, at length
                }
            }
        }
    }
}

TEST_F(SampleReports, HaveOrdersOfTheirOwn) {
    const auto runs = Make("Capture Details Summary");
    Texts names;
    for (std::size_t row = 0; row < runs->rows().size(); ++row)
        names.push_back(Values(*runs, row, {"DBName"})[0]);
    EXPECT_EQ(names, (Texts{"c", folder_->dataset, "b", "d"}));

    const auto report = Make("Associations by User");
    Table shown;
    for (std::size_t row = 0; row < report->rows().size(); ++row)
        shown.push_back(Values(*report, row, {"Recipient", "AppOU", "AppName"}));
    EXPECT_EQ(shown, Select(folder_->Open(folder_->dataset),
                            kRecipient + ", AppOU, AppName FROM Zorvel_Associations" + kWithApps +
                                " ORDER BY FullUserID = '', 1, 2, 3"));
}

// Notes what of a report a page shows.
class NotingCanvas final : public PageCanvas {
  public:
    std::set<std::size_t> rows;
    std::set<std::size_t> headings;
    std::size_t bars = 0;
    bool totals = false;

    void Draw(const PageText& text) override {
        if (text.place.kind == TextPlace::Kind::kCell) rows.insert(text.place.index);
        if (text.place.kind == TextPlace::Kind::kHeading) headings.insert(text.place.index);
        if (text.text.starts_with("Total ")) totals = true;
    }
    void Fill(double /*x*/, double /*y*/, double /*width*/, double /*height*/, PageColour colour) override {
        if (colour == PageColour::kBar) ++bars;
    }
};

TEST_F(SampleReports, HavePagesThatShowThemWholeAndNoneThatShowsNothing) {
    const ReportFonts fonts = SquareFonts();
    for (const Expected& expected : AllExpected()) {
        const auto report = Make(expected.caption, "Application Name");
        const PageLayout layout(*report, fonts);
        NotingCanvas all;
        for (std::size_t page = 0; page < layout.page_count(); ++page) {
            NotingCanvas canvas;
            layout.Draw(page, canvas);
            EXPECT_TRUE(!canvas.rows.empty() || canvas.bars > 0 || canvas.totals || layout.page_count() == 1)
                << expected.caption << ", page " << page;
            all.rows.merge(canvas.rows);
            all.headings.merge(canvas.headings);
            all.bars += canvas.bars;
            EXPECT_EQ(canvas.totals, page + 1 == layout.page_count())
                << expected.caption << ", page " << page;
        }
        EXPECT_EQ(all.rows.size(), report->rows().size()) << expected.caption;
        EXPECT_EQ(all.headings.size(), report->rows().groups().size()) << expected.caption;
        EXPECT_EQ(all.bars, expected.caption == "Issue Summary" ? 20U : 0U) << expected.caption;
    }
}

}  // namespace
}  // namespace zorvel::test
