// Reports on pages: nothing is lost, cut or drawn beside the page.
#include "reporting/page_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "reporting/report_fixture.h"

namespace zorvel {
namespace {

using testing::Contains;
using testing::ElementsAre;

// Keeps what is drawn, and says where it leaves the page.
class NotingCanvas final : public PageCanvas {
  public:
    NotingCanvas(double width, double height) : width_(width), height_(height) {}

    struct Drawn {
        std::string text;
        TextPlace place;
        double x;
        double baseline;
    };
    std::vector<Drawn> texts;

    void Draw(const PageText& text) override {
        const double length = static_cast<double>(text.text.size()) * text.size * 0.5;
        const double right = text.turned ? text.x : text.x + length;
        const double top = text.turned ? text.baseline - length : text.baseline - text.size * 0.8;
        EXPECT_TRUE(text.x >= 0 && right <= width_ + 0.01 && top >= 0 && text.baseline <= height_)
            << text.text << " at " << text.x << ", " << text.baseline;
        texts.push_back({std::string(text.text), text.place, text.x, text.baseline});
    }
    void Fill(double x, double y, double width, double height, PageColour /*colour*/) override {
        EXPECT_TRUE(x >= 0 && y >= 0 && x + width <= width_ + 0.01 && y + height <= height_ + 0.01);
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> all;
        for (const Drawn& drawn : texts)
            all.push_back(drawn.text);
        return all;
    }

  private:
    double width_;
    double height_;
};

const std::string kDefinition = R"(
title = "The title"
query = "SELECT Attribute, Data, Attribute AS A2 FROM Zorvel_AppDetails ORDER BY AppUniqueRef"
[page]
margin = 20
text_size = 10
[[group]]
by = "Attribute"
heading = "Group {Attribute}"
[[column]]
field = "A2"
heading = "Attribute"
width = 20
blank_repeats = true
[[column]]
field = "Data"
width = 80
[[total]]
heading = "Rows"
count = true
)";

class PageLayoutTest : public testing::Test {
  protected:
    void Add(const std::string& attribute, const std::string& data) { added_.push_back({attribute, data}); }
    void LayOut(const std::string& definition = kDefinition) {
        Database database = folder_.Open(folder_.dataset);
        database.Begin();
        Command insert = database.Prepare("INSERT INTO Zorvel_AppDetails VALUES (?1, ?2, ?3)");
        for (std::size_t row = 0; row < added_.size(); ++row) {
            const std::vector<std::string> values{std::to_string(row), added_[row].first, added_[row].second};
            insert.Execute(values);
        }
        database.Complete();
        ReportFacts facts;
        facts.dataset = folder_.dataset;
        facts.tree = "CORP_TREE";
        facts.captured = "16/11/2026 17:28:05";
        facts.comment = comment_;
        report_ = folder_.Make(definition, facts);
        layout_ = std::make_unique<PageLayout>(*report_, fonts_);
    }
    NotingCanvas Page(std::size_t page) const {
        NotingCanvas canvas(layout_->page_width(), layout_->page_height());
        layout_->Draw(page, canvas);
        return canvas;
    }
    // What the pages show of a value, its lines joined as they stand.
    std::string Whole(TextPlace::Kind kind, std::size_t index, std::size_t column) const {
        std::string text;
        for (std::size_t page = 0; page < layout_->page_count(); ++page) {
            for (const auto& drawn : Page(page).texts) {
                if (drawn.place.kind != kind || drawn.place.index != index || drawn.place.column != column)
                    continue;
                text.resize(std::max(text.size(), drawn.place.offset), ' ');
                text += drawn.text;
            }
        }
        return text;
    }

    test::ReportFolder folder_;
    const ReportFonts fonts_ = test::SquareFonts();
    std::string comment_ = "a comment";
    std::shared_ptr<const Report> report_;
    std::unique_ptr<PageLayout> layout_;
    std::vector<std::pair<std::string, std::string>> added_;  // attribute and data
};

TEST_F(PageLayoutTest, OnePageShowsFactsHeadingsRowsAndTotals) {
    Add("A", "first");
    Add("A", "second");
    LayOut();
    ASSERT_EQ(layout_->page_count(), 1U);
    EXPECT_THAT(
        Page(0).Texts(),
        ElementsAre("The title", "16/11/2026 17:28:05", "Zorvel", "Page 1 of 1", "Dataset", "Zorvel_1.MDB",
                    "Tree", "CORP_TREE", "Zorvelrun", "16/11/2026 17:28:05", "Comments", "a comment",
                    "Attribute", "Data", "Group A", "Rows 2", "A", "first", "second", "Total     Rows 2"));
}

TEST_F(PageLayoutTest, EveryRowStandsOnOnePageBelowItsHeading) {
    for (int i = 0; i < 400; ++i)
        Add(std::string(1, static_cast<char>('A' + i / 150)), "value " + std::to_string(i));
    LayOut();
    ASSERT_GT(layout_->page_count(), 3U);
    std::size_t next = 0;
    for (std::size_t page = 0; page < layout_->page_count(); ++page) {
        const NotingCanvas canvas = Page(page);
        EXPECT_THAT(canvas.Texts(), Contains("Page " + std::to_string(page + 1) + " of " +
                                             std::to_string(layout_->page_count())));
        bool first = true;
        for (const auto& drawn : canvas.texts) {
            if (drawn.place.kind != TextPlace::Kind::kCell || drawn.place.column != 1) continue;
            EXPECT_EQ(drawn.text, "value " + std::to_string(next));
            EXPECT_EQ(layout_->PageOfRow(next), page);
            const std::string group(1, static_cast<char>('A' + next / 150));
            if (first) {
                // The page says which group it goes on with, and repeats the value that is left out below
                // others.
                const bool begins = next % 150 == 0;
                EXPECT_THAT(canvas.Texts(), Contains("Group " + group + (begins ? "" : " (continued)")));
                EXPECT_THAT(canvas.Texts(), Contains(group));
            }
            first = false;
            ++next;
        }
    }
    EXPECT_EQ(next, 400U);
    for (std::size_t group = 0; group < 3; ++group)
        EXPECT_EQ(layout_->PageOfGroup(group), layout_->PageOfRow(150 * group));
}

TEST_F(PageLayoutTest, ValuesOfAnyLengthAndContentComeOutWhole) {
    std::string words;
    while (words.size() < 10'000)
        words += "word" + std::to_string(words.size()) + ' ';
    words.pop_back();
    const std::vector<std::string> kValues = {
        words,
        std::string(10'000, 'x'),
        "C:\\Program Files\\" + std::string(300, 'a') + "\\b.txt",
        "one\n\nthree",
        "<b>\xE9\x80\"quoted\", 'and' & so on</b>",
        "",
    };
    for (const std::string& value : kValues)
        Add("A", value);
    comment_ = words;
    LayOut();
    for (std::size_t row = 0; row < kValues.size(); ++row) {
        std::string expected = kValues[row];
        std::replace(expected.begin(), expected.end(), '\n', ' ');
        EXPECT_EQ(Whole(TextPlace::Kind::kCell, row, 1), expected);
    }
}

TEST_F(PageLayoutTest, APageIsTheSameWhateverWasDrawnBefore) {
    for (int i = 0; i < 3; ++i) {
        Add("A", "short\t" + std::to_string(i));
        Add("A", std::string(20'000, static_cast<char>('x' + i)) + "\tend");
    }
    LayOut();
    ASSERT_GT(layout_->page_count(), 6U);
    std::vector<std::vector<std::string>> forwards;
    for (std::size_t page = 0; page < layout_->page_count(); ++page)
        forwards.push_back(Page(page).Texts());
    for (std::size_t page = layout_->page_count(); page-- > 0;) {
        EXPECT_EQ(Page(page).Texts(), forwards[page]) << page;
        EXPECT_EQ(Page(page).Texts(), forwards[page]) << page;
    }
}

TEST_F(PageLayoutTest, AHeadingIsNeverTheLastOfItsPage) {
    for (int i = 0; i < 200; ++i)
        Add("group " + std::to_string(i), "value\nof\ntwo lines or more");
    LayOut();
    for (std::size_t group = 0; group < 200; ++group)
        EXPECT_EQ(layout_->PageOfGroup(group), layout_->PageOfRow(group)) << group;
}

TEST_F(PageLayoutTest, HeadingsNotesAndLabelsThatFillPagesHaveAnEnd) {
    Add(std::string(9'000, 'h'), "value");
    Add("short", "value");
    LayOut(kDefinition + "[[chart]]\nheading = \"Chart\"\nby = \"Attribute\"\nlabel = \"{Attribute}\"\n");
    EXPECT_EQ(Whole(TextPlace::Kind::kHeading, 0, 0), "Group " + std::string(9'000, 'h'));
    EXPECT_LT(layout_->page_count(), 40U);
    EXPECT_THAT(Page(layout_->page_count() - 1).Texts(), Contains("Total     Rows 2"));
}

TEST_F(PageLayoutTest, GroupsThatWantItBeginAPageWithAllTheirHeadings) {
    for (const auto& [attribute, data] :
         {std::pair("A", "x"), {"A", "x"}, {"A", "y"}, {"B", "x"}, {"B", "z"}, {"C", "x"}})
        Add(attribute, data);
    const std::string rest = kDefinition.substr(kDefinition.find("[[column]]"));
    const std::string head = kDefinition.substr(0, kDefinition.find("[[column]]"));
    const std::string inner = "[[group]]\nby = \"Data\"\nheading = \"In {Attribute}: {Data}\"\n";
    const std::string new_page = "new_page = true\n";
    const struct {
        std::string definition;
        std::vector<std::size_t> pages;  // of the groups A, x, y, B, x, z, C, x
    } kCases[] = {
        {head + inner + rest, {0, 0, 0, 0, 0, 0, 0, 0}},
        {head + new_page + inner + rest, {0, 0, 0, 1, 1, 1, 2, 2}},
        {head + inner + new_page + rest, {0, 0, 1, 2, 2, 3, 4, 4}},
    };
    for (const auto& test : kCases) {
        LayOut(test.definition);
        added_.clear();
        std::vector<std::size_t> pages;
        for (std::size_t group = 0; group < report_->rows().groups().size(); ++group)
            pages.push_back(layout_->PageOfGroup(group));
        EXPECT_EQ(pages, test.pages);
        EXPECT_EQ(layout_->page_count(), test.pages.back() + 1);
    }
}

TEST_F(PageLayoutTest, TotalsThatAreWiderThanTheirGroupsLineAreBroken) {
    Add("A", "value");
    std::string definition = kDefinition;
    definition.replace(definition.find("\"Rows\""), 6, "\"" + std::string(90, 't') + " rows\"");
    LayOut(definition);
    const NotingCanvas page = Page(0);
    const auto heading = std::find_if(page.texts.begin(), page.texts.end(), [](const auto& drawn) {
        return drawn.place.kind == TextPlace::Kind::kHeading;
    });
    ASSERT_NE(heading, page.texts.end());
    const double heading_end = heading->x + static_cast<double>(heading->text.size()) * 12 * 0.5;
    std::string totals;
    for (auto drawn = heading + 1; drawn->place.kind != TextPlace::Kind::kCell; ++drawn) {
        EXPECT_GT(drawn->x, heading_end);
        totals += drawn->text;
    }
    EXPECT_EQ(totals, std::string(90, 't') + "rows 1");  // the blank ends a line
}

TEST_F(PageLayoutTest, AValueThatIsLeftOutStaysSoWhereItsRowGoesOn) {
    const std::string lines = "a\nb\nc\nd\ne\nf\ng\nh\ni\nj\nk\nl\nm\nn\no\np\nq\nr\ns\nt\nu\nv\nw\nx\ny\nz";
    Add(lines, "value");
    Add(lines, std::string(20'000, 'x'));
    Add(lines, "first to begin on its page");
    LayOut();
    ASSERT_GT(layout_->page_count(), 3U);
    EXPECT_THAT(Whole(TextPlace::Kind::kCell, 2, 0), testing::StartsWith("a b c"));
    EXPECT_EQ(Whole(TextPlace::Kind::kCell, 1, 0), "");
    EXPECT_EQ(Whole(TextPlace::Kind::kCell, 1, 1), std::string(20'000, 'x'));
}

TEST_F(PageLayoutTest, AReportWithoutRowsSaysSo) {
    LayOut();
    ASSERT_EQ(layout_->page_count(), 1U);
    EXPECT_THAT(Page(0).Texts(), Contains("There is nothing to report."));
}

TEST_F(PageLayoutTest, NarrowPagesWithWideMarginsStillEnd) {
    Add("A", std::string(500, 'x'));
    std::string definition = kDefinition;
    definition.replace(definition.find("margin = 20"), 11, "margin = 60");
    definition.replace(definition.find("text_size = 10"), 14, "text_size = 24");
    LayOut(definition);
    EXPECT_EQ(Whole(TextPlace::Kind::kCell, 0, 1), std::string(500, 'x'));
}

TEST_F(PageLayoutTest, EndsWithinAPageOfTheUsersWish) {
    Add("A", std::string(20'000, 'x'));
    LayOut();
    ASSERT_GT(layout_->page_count(), 4U);
    int pages = 0;
    const ReportFonts fonts = test::SquareFonts();
    EXPECT_THROW(PageLayout(*report_, fonts, [&pages] { return ++pages == 3; }), Interrupted);
    EXPECT_EQ(pages, 3);
}

}  // namespace
}  // namespace zorvel
