// Reports as files for other programs: what values become.
#include "reporting/report_export.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "platform/write_in_place.h"
#include "reporting/export_readers.h"
#include "reporting/html_page.h"
#include "support/file_size_limit.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr std::string_view kTwoColumns = R"(
title = "Values"
query = "SELECT Name, Value FROM T ORDER BY rowid"
[[column]]
field = "Name"
[[column]]
field = "Value"
)";

class ReportExport : public testing::Test {
  protected:
    ReportExport() {
        database_.Execute("CREATE TABLE T (Name TEXT, Value TEXT, Extra)");
        database_.Begin();
    }

    void Add(const std::string& name, const std::string& value, const std::string& extra = {}) {
        if (value.find('\0') == std::string::npos) {
            database_.Prepare("INSERT INTO T VALUES (?1, ?2, ?3)")
                .Execute(std::array<std::string, 3>{name, value, extra});
            return;
        }
        // Only an expression puts a NUL into the store.
        std::string parts;
        for (const char character : value)
            parts += (parts.empty() ? "char(" : ",") + std::to_string(static_cast<unsigned char>(character));
        database_.Execute("INSERT INTO T VALUES ('" + name + "', " + parts + "), '')");
    }
    std::string Written(decltype(ReportFormat::write) write, std::string_view definition = kTwoColumns,
                        ReportFacts facts = {}, const AskInterrupted& ask = {}) const {
        ReportDefinition parsed = ParseReportDefinition(definition, "Test.rpt");
        const std::string query = parsed.query;
        const Report report(std::move(parsed), std::move(facts), database_, query);
        WriteInPlace(folder_.path() / "out", [&](OutputFile& file) { write(report, file, ask); });
        return folder_.Read("out");
    }
    std::vector<std::vector<std::string>> Csv(std::string_view definition = kTwoColumns) const {
        return test::ReadCsv(Written(WriteCsv, definition));
    }

    test::TempFolder folder_;
    Database database_{folder_.path() / "Data.mdb", "Data.mdb", Database::Access::kCreate};
};

struct ValueCase {
    std::string name;
    std::string value;  // of the code page
    std::string csv;    // UTF-8, as a reader gets it
    std::string html;   // the cell
};

const std::vector<ValueCase>& ValueCases() {
    static const std::vector<ValueCase> kCases = {
        {"plain", "C:\\WINDOWS\\x.dll", "C:\\WINDOWS\\x.dll", "C:\\WINDOWS\\x.dll"},
        {"empty", "", "", ""},
        {"markup", "</td><script>alert('1')</script>&amp;", "</td><script>alert('1')</script>&amp;",
         "&lt;/td&gt;&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt;&amp;amp;"},
        {"attribute", "\" onload=\"x", "\" onload=\"x", "&quot; onload=&quot;x"},
        {"comma", "a,b;\tc", "a,b;\tc", "a,b;    c"},
        {"quotes", "\"", "\"", "&quot;"},
        {"lines", "one\ntwo\r\nthree\rfour\n", "one\ntwo\r\nthree\rfour\n", "one\ntwo\nthree\nfour\n"},
        {"blanks", "  x ", "  x ", "  x "},
        {"NUL", "a\0b"s, "a\u2400b", "a\u00B7b"},
        {"controls", "\x01\x1B[2J\x7F\x9D", "\u2401\u241B[2J\u2421\uFFFD", "\u00B7\u00B7[2J\u00B7\u00B7"},
        {"letters", "caf\xE9 \x80 \x8A", "caf\u00E9 \u20AC \u0160", "caf\u00E9 \u20AC \u0160"},
        {"long", std::string(10000, 'x') + '\xE9', std::string(10000, 'x') + "\u00E9",
         std::string(10000, 'x') + "\u00E9"},
        {"backslashes", R"(\u0041\")", R"(\u0041\")", R"(\u0041\&quot;)"},
        {"formula", "=1+1", "'=1+1", "=1+1"},
    };
    return kCases;
}

TEST_F(ReportExport, ValuesComeOutOfCsvWhole) {
    std::vector<std::vector<std::string>> expected = {{"Name", "Value"}};
    for (const ValueCase& test : ValueCases()) {
        Add(test.name, test.value);
        expected.push_back({test.name, test.csv});
    }
    EXPECT_EQ(Csv(), expected);
}

TEST_F(ReportExport, ValuesComeOutOfJsonAsTheyAre) {
    for (const ValueCase& test : ValueCases())
        Add(test.name, test.value);
    const std::string text = Written(WriteJson);
    const test::Json json = test::JsonReader::Read(text);
    ASSERT_EQ(json["rows"].elements.size(), ValueCases().size());
    for (std::size_t i = 0; i < ValueCases().size(); ++i) {
        const test::Json& row = json["rows"].elements[i];
        EXPECT_THAT(row.keys, ElementsAre("Name", "Value"));
        EXPECT_EQ(row["Name"].text, '\'' + ValueCases()[i].name);
        EXPECT_EQ(row["Value"].text, '\'' + ToUtf8(ValueCases()[i].value)) << ValueCases()[i].name;
    }
    EXPECT_THAT(text, HasSubstr("\n{\"Name\": \"quotes\", \"Value\": \"\\\"\"},\n"));
    EXPECT_THAT(text, HasSubstr("\\u0001\\u001B[2J\\u007F\\u009D"));
}

TEST_F(ReportExport, ValuesComeOutOfHtmlHarmless) {
    for (const ValueCase& test : ValueCases())
        Add(test.name, test.value);
    const std::string page = Written(WriteHtml);
    for (const ValueCase& test : ValueCases())
        EXPECT_THAT(page, HasSubstr("<td>" + test.name + "</td><td>" + test.html + "</td>"));
    EXPECT_EQ(test::NestingFault(page), "");
    for (const char* loaded :
         {"http:", "https:", "//cdn", "src=", "href=", "url(", "@import", "<link", "<img"})
        EXPECT_THAT(page, Not(HasSubstr(loaded)));
    EXPECT_EQ(page.find("<script"), page.rfind("<script"));
}

TEST_F(ReportExport, WhatReportsSayOfThemselvesIsTextInEveryFile) {
    const std::string hostile = "<b>\"x\"\\ & 'caf\xE9'\n";
    Add(hostile, "1");
    const std::string definition = R"(
title = '<b>"x"\ & é'
explanation = "</header>"
query = "SELECT Name AS 'A<i>,\"', Value FROM T"
[[group]]
by = 'A<i>,"'
heading = '<u>{A<i>,"}'
note = '</p>{A<i>,"}'
[[column]]
field = "Value"
heading = '<hr>"'
[[total]]
heading = "</dl>"
count = true
[[chart]]
heading = "</h2>"
by = "Value"
label = '</tr>{A<i>,"}'
)";
    const ReportFacts facts{hostile, hostile, hostile, hostile, hostile, hostile, hostile, hostile, hostile};
    const std::string page = Written(WriteHtml, definition, facts);
    EXPECT_EQ(test::NestingFault(page), "");
    const std::string shown = "&lt;b&gt;&quot;x&quot;\\ &amp; &#39;caf\u00E9&#39;\n";
    for (const std::string& text :
         {"<title>&lt;b&gt;&quot;x&quot;\\ &amp; \u00E9</title>"s, "<p>&lt;/header&gt;</p>"s,
          "<dt>Dataset</dt>\n<dd>" + shown + "</dd>", "<dt>Left out</dt>\n<dd>" + shown + "</dd>",
          "id=\"g0\">&lt;u&gt;" + shown + "</h2><span>&lt;/dl&gt; 1</span></summary>",
          "<p class=\"note\">&lt;/p&gt;" + shown + "</p>", "<th scope=\"col\">&lt;hr&gt;&quot;</th>"s,
          "<h2>&lt;/h2&gt;</h2>"s, "<th scope=\"row\">&lt;/tr&gt;" + shown + "</th>",
          "<footer>Generated " + shown + "</footer>"}) {
        EXPECT_THAT(page, HasSubstr(text));
    }

    const test::Json json = test::JsonReader::Read(Written(WriteJson, definition, facts));
    EXPECT_EQ(json["title"].text, "'<b>\"x\"\\ & \u00E9");
    EXPECT_THAT(json["facts"].keys, ElementsAre("caption", "dataset", "tree", "container", "captured",
                                                "comment", "order", "excluded", "generated"));
    EXPECT_EQ(json["facts"]["comment"].text, '\'' + ToUtf8(hostile));
    EXPECT_EQ(json["totals"]["</dl>"].text, "1");
    EXPECT_EQ(json["rows"].elements.at(0)["A<i>,\""].text, '\'' + ToUtf8(hostile));

    EXPECT_EQ(Csv(definition).at(0), (std::vector<std::string>{"A<i>,\"", "<hr>\""}));
}

TEST_F(ReportExport, FormulasAreTextForSpreadsheetsAndNumbersAreNumbers) {
    std::vector<std::vector<std::string>> expected = {{"Name", "Value"}};
    const auto add = [&](const std::string& value, const std::string& mark) {
        Add("x", value);
        expected.push_back({"x", mark + ToUtf8(value)});
    };
    for (const char* formula : {"=cmd|' /C calc'!A0", "+1", "-k netsvcs", "@SUM(A1)", "  =1", "\xA0-x",
                                " \n@x", "\tx", "\rx", "-", "-1-1", "-1.", "-1.2.3", "--1"})
        add(formula, "'");
    for (const char* plain : {"-5", "-1.25", "1.25", "1=2", " x", "   ", "x "})
        add(plain, "");
    EXPECT_EQ(Csv(), expected);
    EXPECT_THAT(Written(WriteCsv), HasSubstr("\r\nx,\"x \"\r\n")) << "some readers trim bare blanks";
}

TEST_F(ReportExport, CsvNamesEveryFieldByAHeadingOfItsOwn) {
    Add("a", "b", "c");
    EXPECT_EQ(Written(WriteCsv, R"(
title = "x"
query = "SELECT Name AS App, Value, Extra, 4 AS Value, 5 AS Other, 6 AS Six, 7 AS Seven, 8 AS Eight FROM T"
[[column]]
field = "VALUE"
heading = "Registry value"
[[column]]
field = "Extra"
heading = "OTHER"
[[column]]
field = "Six"
heading = "=Six"
[[column]]
field = "Seven"
heading = "Extra"
[[column]]
field = "Eight"
heading = "Value"
)"),
              "\xEF\xBB\xBF"
              "App,Registry value,Extra,Value_2,Other,'=Six,Seven,Value\r\na,b,c,4,5,6,7,8\r\n");
    EXPECT_EQ(Written(WriteCsv, R"(
title = "x"
query = "SELECT '' AS App FROM T"
[[column]]
field = "App"
)"),
              "\xEF\xBB\xBF"
              "App\r\n\"\"\r\n");
}

TEST_F(ReportExport, JsonNumbersArePlainWholeNumbersOfNumberColumns) {
    const std::vector<std::array<std::string, 4>> cases = {
        // value, as a text, as a number, as yes or no
        {"12", "'12", "12", "true"},
        {"-3", "'-3", "-3", "true"},
        {"0", "'0", "0", "false"},
        {"", "'", "'", "'"},
        {"007", "'007", "'007", "'007"},
        {"1.5", "'1.5", "'1.5", "'1.5"},
        {"+1", "'+1", "'+1", "'+1"},
        {" 1", "' 1", "' 1", "' 1"},
        {"9007199254740991", "'9007199254740991", "9007199254740991", "true"},
        {"9007199254740992", "'9007199254740992", "'9007199254740992", "'9007199254740992"},
        {"many", "'many", "'many", "'many"},
    };
    for (const auto& test : cases)
        Add("x", test[0]);
    const test::Json json = test::JsonReader::Read(Written(WriteJson, R"(
title = "x"
query = "SELECT Value AS A, Value AS B, Value AS C, Value AS Unshown FROM T ORDER BY rowid"
[[column]]
field = "A"
[[column]]
field = "B"
format = "number"
[[column]]
field = "C"
format = "yes-no"
)"));
    ASSERT_EQ(json["rows"].elements.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const test::Json& row = json["rows"].elements[i];
        EXPECT_THAT((std::array{row["A"].text, row["B"].text, row["C"].text, row["Unshown"].text}),
                    ElementsAre(cases[i][1], cases[i][2], cases[i][3], cases[i][1]));
    }
}

constexpr std::string_view kGroups = R"(
title = "Groups"
query = "SELECT Name, Extra, Value FROM T ORDER BY rowid"
[[group]]
by = "Name"
heading = "{Name}"
[[group]]
by = "Extra"
heading = "App {Extra}"
note = "of {Name}"
[[column]]
field = "Value"
width = 30
blank_repeats = true
[[column]]
field = "Extra"
heading = "Long heading"
width = 10
turned = true
format = "number"
[[total]]
heading = "Settings"
count = true
[[total]]
heading = "Kinds"
distinct = "Value"
levels = 1
)";

TEST_F(ReportExport, HtmlFoldsGroupsInGroups) {
    Add("OU1", "same", "1000");
    Add("OU1", "same", "1000");
    Add("OU1", "same", "2");
    Add("OU2", "other", "1000");
    const std::string page = Written(WriteHtml, kGroups);
    EXPECT_EQ(test::NestingFault(page), "");
    const std::string body = page.substr(page.find("<main"), page.find("</main>") - page.find("<main"));
    const auto app = [](const std::string& number, const std::string& name, const std::string& of,
                        const std::string& settings, const std::string& rows) {
        return "<details open><summary><h3 id=\"g" + number + "\">App " + name + "</h3><span>Settings " +
               settings + "</span></summary>\n<p class=\"note\">of " + of +
               "</p>\n<div class=\"block\" style=\"--n: " + settings +
               "\"><table class=\"rows\" aria-labelledby=\"g" + number +
               "\">\n<thead><tr><th scope=\"col\">Value</th><th scope=\"col\"><span>Long heading</span></th>"
               "</tr></thead>\n<tbody>\n" +
               rows + "</tbody></table></div>\n</details>\n";
    };
    EXPECT_EQ(body,
              "<main id=\"report\">\n"
              "<details class=\"outer\" open><summary><h2 id=\"g0\">OU1</h2><span>Settings 3, Kinds 1</span>"
              "</summary>\n" +
                  app("1", "1000", "OU1", "2",
                      "<tr><td>same</td><td>1,000</td></tr>\n"
                      "<tr><td class=\"again\">same</td><td>1,000</td></tr>\n") +
                  app("2", "2", "OU1", "1", "<tr><td>same</td><td>2</td></tr>\n") +
                  "</details>\n<details class=\"outer\" open><summary><h2 id=\"g3\">OU2</h2>"
                  "<span>Settings 1, Kinds 1</span></summary>\n" +
                  app("4", "1000", "OU2", "1", "<tr><td>other</td><td>1,000</td></tr>\n") + "</details>\n");
    EXPECT_THAT(page, HasSubstr(".rows th:nth-child(1) { width: 75.000%; }\n"
                                ".rows th:nth-child(2) { width: 25.000%; }\n"
                                ".rows th:nth-child(2), .rows td:nth-child(2) { text-align: right; }\n"));
    EXPECT_THAT(page, HasSubstr("<dt>Settings</dt>\n<dd>4</dd>"));
    EXPECT_THAT(page, Not(HasSubstr("break-before")));
    EXPECT_THAT(page, HasSubstr("id=\"expand\""));
}

TEST_F(ReportExport, HtmlBreaksThePageAheadOfAllHeadingsOfAGroupThatWantsIt) {
    Add("OU1", "same", "1000");
    Add("OU1", "same", "2");
    Add("OU2", "other", "1000");
    std::string definition(kGroups);
    definition.insert(definition.find("by = \"Extra\""), "new_page = true\n");
    std::vector<std::string> broken;
    const std::string page = Written(WriteHtml, definition);
    const std::string style = " style=\"break-before: page\" open><summary><";
    for (std::size_t at = page.find(style); at != std::string::npos; at = page.find(style, at + 1))
        broken.push_back(page.substr(at + style.size(), 10));
    EXPECT_THAT(broken, ElementsAre("h3 id=\"g2\"", "h2 id=\"g3\""));
}

TEST_F(ReportExport, HtmlCutsLongTablesIntoBlocks) {
    database_.Execute(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 250) "
        "INSERT INTO T SELECT 'x', i, '' FROM n");
    const std::string page = Written(WriteHtml);
    EXPECT_EQ(test::NestingFault(page), "");
    std::vector<std::string> sizes;
    for (std::size_t at = page.find("--n: "); at != std::string::npos; at = page.find("--n: ", at + 1))
        sizes.push_back(page.substr(at + 5, page.find('"', at) - at - 5));
    EXPECT_THAT(sizes, ElementsAre("100", "100", "50"));
    EXPECT_THAT(page, HasSubstr("<tr><td>x</td><td>101</td></tr>"));
    EXPECT_THAT(page, Not(HasSubstr("id=\"expand\"")));
}

TEST_F(ReportExport, ReportsWithoutRowsAreWholeFiles) {
    EXPECT_EQ(Csv(kGroups), (std::vector<std::vector<std::string>>{{"Name", "Long heading", "Value"}}));
    const test::Json json = test::JsonReader::Read(Written(WriteJson, kGroups));
    EXPECT_TRUE(json["rows"].elements.empty());
    EXPECT_EQ(json["totals"]["Settings"].text, "0");
    const std::string page = Written(WriteHtml, kGroups);
    EXPECT_EQ(test::NestingFault(page), "");
    EXPECT_THAT(page, HasSubstr("<p>There is nothing to report.</p>"));
}

// The browser runs the script only if the page names its hash; sha256sum is of every system.
TEST_F(ReportExport, HtmlNamesTheHashOfItsScript) {
    folder_.Write("script", kPageScript);
    const std::string command = "sha256sum < '" + (folder_.path() / "script").string() + "' > '" +
                                (folder_.path() / "hash").string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string hex = folder_.Read("hash");
    std::string hash;
    for (std::size_t at = 0; at < 64; at += 2)
        hash += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    EXPECT_EQ(kPageScriptHash, "sha256-" + test::Base64(hash));
    EXPECT_THAT(Written(WriteHtml), HasSubstr("script-src '" + std::string(kPageScriptHash) + "'"));
}

TEST_F(ReportExport, EndsWhenTheUserWantsItToAndLeavesTheOlderFile) {
    for (int row = 0; row < 3000; ++row)
        Add("name", "value");
    folder_.Write("out", "older");
    int asked = 0;
    const AskInterrupted second_time = [&asked] { return ++asked % 2 == 0; };
    for (const auto write : {WriteHtml, WriteCsv, WriteJson})
        EXPECT_THROW(Written(write, kTwoColumns, {}, second_time), Interrupted);
    EXPECT_EQ(asked, 6);
    EXPECT_EQ(folder_.Read("out"), "older");
}

}  // namespace
}  // namespace zorvel
