// The options of a report: dataset, order, and the tree of issues to include.
#include "reporting/report_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "database/dataset_folder.h"
#include "support/errors.h"

namespace zorvel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kNoDatasets =
    "There are no recorded Zorvelled applications to report on - please try again after Zorvelling at least "
    "one NAL object";
constexpr const char* kBlankReport =
    "Warning: all issues have been disabled in the Advanced report options - this will lead to a blank "
    "report!\r\rDo you want to continue to generate the report with these settings?";

// Every category, a code for each of its rules, and texts whose order depends on case.
const std::vector<Resolution> kIssues = {
    {"APPNOASSOC", "Nobody has it"},
    {"APPNODESC", "no description"},
    {"INVALIDAN", "A bad name"},
    {"APPCOMPLEXINI", "Very many INI"},
    {"FILEOLD", "beta\\old"},
    {"FILEBAK", "Alpha"},
    {"FILETEMP", "Gamma"},
    {"MACROUNC", "UNC macro"},
    {"REGISTRYUNC", "UNC value"},
    {"filetemp", "lower case"},
    {"APPNOASSOCX", "Another APPNO"},
    {"INVALIDANX", "Not INVALIDAN"},
};

// The nodes of a tree, each with its mark: "[*]" checked and bold, "[x]" checked, "[ ]" neither.
std::vector<std::string> Marked(const IssueTree& tree, bool categories_only = false) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < tree.nodes().size(); ++i) {
        const IssueNode& node = tree.nodes()[i];
        if (categories_only && !tree.IsCategory(i)) continue;
        const char* mark = node.checked ? (node.bold ? "[*] " : "[x] ") : (node.bold ? "[b] " : "[ ] ");
        lines.push_back((tree.IsCategory(i) ? "" : "  ") + std::string(mark) + node.key + ": " + node.text);
    }
    return lines;
}

std::size_t Number(const IssueTree& tree, const std::string& key) {
    for (std::size_t i = 0; i < tree.nodes().size(); ++i) {
        if (tree.nodes()[i].key == key) return i;
    }
    ADD_FAILURE() << "no node " << key;
    return 0;
}

IssueTree Filled(const std::vector<Resolution>& issues = kIssues) {
    IssueTree tree;
    tree.Fill(issues);
    return tree;
}

TEST(IssueTree, SortsTheIssuesIntoTheirCategories) {
    EXPECT_THAT(Marked(Filled()),
                ElementsAre("[*] AC: Application Complexity", "  [x] APPCOMPLEXINI: Very many INI",
                            "[*] BP: Best Practices", "  [x] INVALIDAN: A bad name",
                            "  [x] APPNOASSOCX: Another APPNO", "  [x] APPNODESC: no description",
                            "[*] MISC: Miscellaneous Issues", "  [x] filetemp: lower case",
                            "  [x] APPNOASSOC: Nobody has it", "  [x] INVALIDANX: Not INVALIDAN",
                            "[*] FRI: File Related Issues", "  [x] FILEBAK: Alpha",
                            "  [x] FILEOLD: beta\\old", "  [x] FILETEMP: Gamma",
                            "[*] RRI: Registry Related Issues", "  [x] REGISTRYUNC: UNC value",
                            "[*] MRI: Macro Related Issues", "  [x] MACROUNC: UNC macro"));
}

TEST(IssueTree, CategoriesFollowTheirIssues) {
    struct Case {
        std::vector<std::pair<const char*, bool>> clicks;
        const char* category;  // FRI as it is then
        const char* unchecked;
    };
    const std::vector<Case> cases = {
        {{{"FILEOLD", false}}, "[x] FRI: File Related Issues", "'FILEOLD'"},
        {{{"FILEOLD", false}, {"FILEOLD", true}}, "[*] FRI: File Related Issues", ""},
        {{{"FILEOLD", false}, {"FILEBAK", false}, {"FILETEMP", false}},
         "[ ] FRI: File Related Issues",
         "'FILEBAK','FILEOLD','FILETEMP'"},
        {{{"FRI", false}}, "[ ] FRI: File Related Issues", "'FILEBAK','FILEOLD','FILETEMP'"},
        {{{"FRI", false}, {"FILEOLD", true}}, "[x] FRI: File Related Issues", "'FILEBAK','FILETEMP'"},
        {{{"FILEOLD", false}, {"FRI", true}}, "[*] FRI: File Related Issues", ""},
        {{{"MACROUNC", false}, {"APPCOMPLEXINI", false}},
         "[*] FRI: File Related Issues",
         "'APPCOMPLEXINI','MACROUNC'"},
    };
    for (const Case& expected : cases) {
        IssueTree tree = Filled();
        for (const auto& [key, checked] : expected.clicks)
            tree.Check(Number(tree, key), checked);
        EXPECT_EQ(Marked(tree, true)[3], expected.category) << expected.unchecked;
        EXPECT_EQ(tree.UncheckedKeys(), expected.unchecked);
        EXPECT_TRUE(tree.AnyChecked());
    }
}

TEST(IssueTree, ButtonsSetEveryNode) {
    IssueTree tree = Filled();
    tree.Invert();
    EXPECT_FALSE(tree.AnyChecked());
    EXPECT_THAT(Marked(tree, true), testing::Each(testing::StartsWith("[ ] ")));
    tree.SelectAll();
    EXPECT_EQ(Marked(tree), Marked(Filled()));
    tree.UnselectAll();
    EXPECT_FALSE(tree.AnyChecked());
    EXPECT_THAT(Marked(tree, true), testing::Each(testing::StartsWith("[ ] ")));
    tree.Check(Number(tree, "FILEOLD"), true);
    tree.Invert();
    EXPECT_EQ(tree.UncheckedKeys(), "'FILEOLD'");
    EXPECT_THAT(Marked(tree, true), ElementsAre(HasSubstr("[*]"), HasSubstr("[*]"), HasSubstr("[*]"),
                                                HasSubstr("[x]"), HasSubstr("[*]"), HasSubstr("[*]")));
}

TEST(IssueTree, ACategoryWithoutIssuesIsALeaf) {
    IssueTree tree = Filled({{"FILEOLD", "old"}});
    EXPECT_THAT(Marked(tree, true), testing::Each(testing::StartsWith("[*] ")));
    tree.Check(Number(tree, "BP"), false);
    EXPECT_EQ(tree.UncheckedKeys(), "'BP'");
    tree.Invert();
    EXPECT_EQ(tree.UncheckedKeys(), "'AC','MISC','FILEOLD','RRI','MRI'");
    EXPECT_EQ(Marked(tree, true)[1], "[*] BP: Best Practices");
}

class Options : public testing::Test {
  protected:
    // A dataset of the `day`th November.
    std::string Add(int day, const std::string& comment) {
        const CatalogueRow row = test::DatasetOfDay(day, comment);
        folder_.catalogue->Add(row);
        return row.DBName;
    }
    ReportOptions& Opened(const std::string& caption) {
        choice_.caption = caption;
        dialog_.emplace(folder_.services, *folder_.catalogue, choice_).Open();
        return *dialog_;
    }
    Database Template(Database::Access access = Database::Access::kReadWrite) {
        return {folder_.folder.path() / "Empty_Zorvel.mdb", "template", access};
    }

    test::DatasetFolder folder_;
    ReportChoice choice_;
    std::optional<ReportOptions> dialog_;
};

TEST_F(Options, OffersEachReportItsOrders) {
    Add(16, "a run");
    const std::vector<std::string> name = {"Application Name"};
    const std::vector<std::string> caption = {"Application Name", "Application Caption"};
    const std::vector<std::string> all = {"Application Name", "Application Caption",
                                          "Application Icon/Run Order"};
    struct Case {
        std::string report;
        std::vector<std::string> items;
        std::string selected;
    };
    for (const Case& expected :
         {Case{"Issue Summary", all, all[1]}, Case{"Issue Detail", all, all[1]},
          Case{"FIL File Details", all, all[1]}, Case{"Registry Details", all, all[1]},
          Case{"Macro Details", caption, caption[1]}, Case{"INI File Details", all, all[1]},
          Case{"Attribute Details", all, all[1]}, Case{"Run Order Summary", all, all[2]},
          Case{"Associations Summary", name, name[0]},
          Case{"Associations by Application", caption, caption[1]}, Case{"Associations by User", all, all[1]},
          Case{"Application 'Fingerprint' Summary", {}, ""},
          Case{"Application Flags Summary", name, name[0]}}) {
        const ReportOptions& dialog = Opened(expected.report);
        const bool issues = expected.report.starts_with("Issue ");
        EXPECT_EQ(dialog.caption, "Reporting options for " + expected.report);
        EXPECT_EQ(dialog.comboSortBy, expected.items) << expected.report;
        EXPECT_EQ(dialog.sort, expected.selected) << expected.report;
        EXPECT_EQ(dialog.order_enabled, !expected.items.empty()) << expected.report;
        EXPECT_FALSE(dialog.chkOrder);
        EXPECT_EQ(dialog.butAdvancedEnabled, issues) << expected.report;
        EXPECT_EQ(dialog.treeRO.nodes().empty(), !issues) << expected.report;
    }
}

TEST_F(Options, ListsTheDatasetsNewestFirst) {
    Add(16, "older");
    const std::string newer = Add(17, "newer");
    Add(15, "the Zorvel_ of May");
    ReportOptions& dialog = Opened("Registry Details");
    EXPECT_THAT(dialog.lstCapture, ElementsAre("17/11/2026 08:00:00  -  newer  -  " + newer,
                                               "16/11/2026 08:00:00  -  older  -  Zorvel_261116080000.MDB",
                                               HasSubstr("the Zorvel_ of May")));
    EXPECT_EQ(dialog.list_caption, "Please select Zorvel dataset to report on (3 are on file)");
    EXPECT_EQ(dialog.summary.comments, "newer");
    dialog.Select(1);
    EXPECT_EQ(dialog.summary.comments, "older");
    ASSERT_TRUE(dialog.Generate());
    EXPECT_EQ(choice_.dataset, "Zorvel_261116080000.MDB");
    // The first "Zorvel_" of the line begins the name.
    dialog.Select(2);
    EXPECT_EQ(dialog.summary.comments, "");
    ASSERT_TRUE(dialog.Generate());
    EXPECT_EQ(choice_.dataset, "Zorvel_ of May  -  Zorvel_261115080000.MDB");
}

TEST_F(Options, HandsTheChoiceOver) {
    const std::string dataset = Add(16, "a run");
    choice_.excluded_codes = "'LAST','TIME'";
    choice_.cancelled = true;
    ReportOptions& dialog = Opened("Macro Details");
    EXPECT_TRUE(choice_.cancelled);
    dialog.sort = kByApplicationName;
    dialog.chkOrder = true;
    ASSERT_TRUE(dialog.Generate());
    EXPECT_EQ(choice_.caption, "Macro Details");
    EXPECT_EQ(choice_.dataset, dataset);
    EXPECT_EQ(choice_.sort, "Application Name");
    EXPECT_TRUE(choice_.descending);
    EXPECT_EQ(choice_.excluded_codes, "");
    EXPECT_FALSE(choice_.cancelled);
    Opened("Application 'Fingerprint' Summary").Generate();
    EXPECT_EQ(choice_.sort, "");
    EXPECT_FALSE(choice_.descending);
    Opened("Macro Details").Cancel();
    EXPECT_TRUE(choice_.cancelled);
    EXPECT_TRUE(folder_.ui.boxes.empty());
}

TEST_F(Options, CancelsWithoutDatasets) {
    ReportOptions& dialog = Opened("Issue Summary");
    EXPECT_EQ(folder_.OnlyBox(), kNoDatasets);
    EXPECT_THAT(dialog.lstCapture, IsEmpty());
    EXPECT_EQ(dialog.list_caption, "");
    EXPECT_FALSE(dialog.butOkEnabled);
    EXPECT_TRUE(choice_.cancelled);
    EXPECT_FALSE(dialog.Generate());
    EXPECT_TRUE(choice_.cancelled);
}

TEST_F(Options, TakesTheIssuesFromTheTemplate) {
    Add(16, "a run");
    ReportOptions& dialog = Opened("Issue Summary");
    EXPECT_THAT(folder_.LogLines(),
                testing::IsSupersetOf({"    Opening template Zorvel DB to retrieve Resolutions...",
                                       "    Resolutions loaded into Reporting Options tree"}));
    std::vector<std::string> codes;
    Rows rows = Template(Database::Access::kReadOnly).Query("SELECT IssueCode FROM Zorvel_Resolutions");
    while (rows.Next())
        codes.push_back(rows.Text("IssueCode"));
    EXPECT_EQ(dialog.treeRO.nodes().size(), codes.size() + 6);
    for (const std::string& code : codes)
        EXPECT_FALSE(dialog.treeRO.IsCategory(Number(dialog.treeRO, code))) << code;
    ASSERT_TRUE(dialog.Generate());
    EXPECT_EQ(choice_.excluded_codes, "");
    dialog.treeRO.Check(Number(dialog.treeRO, "RRI"), false);
    ASSERT_TRUE(dialog.Generate());
    EXPECT_EQ(choice_.excluded_codes, "'REGISTRYEXCLUDE','REGISTRYUNC'");
    EXPECT_TRUE(folder_.ui.boxes.empty());
}

TEST_F(Options, WarnsOfABlankReport) {
    Add(16, "a run");
    ReportOptions& dialog = Opened("Issue Detail");
    dialog.treeRO.UnselectAll();
    EXPECT_FALSE(dialog.Generate());
    ASSERT_EQ(folder_.ui.boxes.size(), 1U);
    const MessageBox box = folder_.ui.boxes.front();
    EXPECT_EQ(box.text, kBlankReport);
    EXPECT_EQ(box.icon, MessageIcon::kExclamation);
    EXPECT_EQ(box.buttons, Buttons::kYesNo);
    EXPECT_EQ(box.default_answer, Answer::kNo);
    EXPECT_EQ(choice_.dataset, "");
    folder_.ui.answers = {Answer::kYes};
    EXPECT_TRUE(dialog.Generate());
    EXPECT_THAT(choice_.excluded_codes, HasSubstr("'APPNODESC','"));
    EXPECT_THAT(choice_.excluded_codes, testing::EndsWith("'MACROUNC','MACROSTP'"));
}

TEST_F(Options, ExcludesNothingWithoutIssuesInTheTemplate) {
    Add(16, "a run");
    Template().Execute("DELETE FROM Zorvel_Resolutions");
    ReportOptions& dialog = Opened("Issue Summary");
    EXPECT_EQ(folder_.OnlyBox(), "No Resolutions where found in Zorvel template database?!");
    EXPECT_THAT(folder_.LogLines(), Contains(" WARNING: No Resolutions found in Zorvel template DBs !!"));
    EXPECT_TRUE(dialog.butAdvancedEnabled);
    EXPECT_THAT(dialog.treeRO.nodes(), IsEmpty());
    EXPECT_TRUE(dialog.Generate());
    EXPECT_EQ(choice_.excluded_codes, "");
    EXPECT_TRUE(folder_.ui.boxes.empty());
}

TEST_F(Options, RaisesFailuresOfTheQueries) {
    const auto number = [](const auto& operation) { return test::RaisedBy(operation).number(); };
    Add(16, "a run");
    ReportOptions& dialog = Opened("Registry Details");
    folder_.master->Execute("DROP TABLE Zorvel_CaptureDetails");
    EXPECT_EQ(number([&] { dialog.Select(0); }), errors::kStore);
    EXPECT_EQ(number([&] { Opened("Registry Details"); }), errors::kStore);
    std::filesystem::remove(folder_.folder.path() / "Empty_Zorvel.mdb");
    EXPECT_EQ(number([&] { Opened("Issue Summary"); }), errors::kStore);
    EXPECT_FALSE(folder_.folder.Has("Empty_Zorvel.mdb"));
}

}  // namespace
}  // namespace zorvel
