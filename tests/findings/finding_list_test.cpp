// Lists of findings as files: whatever the values hold, it comes out whole and means nothing.
#include "findings/finding_list.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "findings/findings_fixture.h"
#include "reporting/export_readers.h"

namespace zorvel {
namespace {

using test::FindingsTest;
using test::Json;
using testing::HasSubstr;
using testing::Not;

class FindingListTest : public FindingsTest {
  protected:
    FindingListTest() {
        Fill();
        AddApplication("5", "<b>&amp;\"=1+1", "@SUM(1).../..\\.%\x1B[2J\x07.X");
        AddIssue("5", "File", "=cmd|' /C calc'!A0</td><script>\x1B]0;x\x07", "\n+1\t\"\x81", "FILEPWL");
        AddIssue("5", "File", std::string(10'000, 'x'), "-5", "OWN<>CODE");
        Accept(
            "[[accepted]]\ncode = 'FILEPWL'\napplication = 'Word.*'\nreason = \"</li> =1 \\u001b\"\nby = "
            "'us'\n"
            "[[accepted]]\ncode = 'FILEPWL'\napplication = '*'\nreason = 'gone'\nuntil = 2026-11-01\n");
    }
    std::string Write(void (*write)(const FindingList&, OutputFile&, const AskInterrupted&)) const {
        const Findings findings = Read();
        std::vector<std::uint32_t> rows(findings.table().size());
        for (std::size_t i = 0; i < rows.size(); ++i)
            rows[i] = static_cast<std::uint32_t>(i);
        std::string text;
        OutputFile out([&text](std::string_view bytes) { text += bytes; }, "text");
        write({findings, rows, "23/11/2026 12:00:00", "1.0"}, out, {});
        out.Flush();
        return text;
    }
};

TEST_F(FindingListTest, CsvHoldsNoFormulaAndNoControl) {
    const auto records = test::ReadCsv(Write(WriteFindingsCsv));
    ASSERT_EQ(records.size(), 10U);
    EXPECT_EQ(records[0].size(), 14U);
    EXPECT_EQ(records[2], (std::vector<std::string>{"critical", "FILEPWL", "Windows password list (.PWL)",
                                                    "Word.APPS.LEEDS.CORP", "File", R"(C:\WINNT\A.PWL)",
                                                    R"(\\FS1\PACK\a.pwl)", "3 users, 2 workstations", "3",
                                                    "2", "0", "accepted", "</li> =1 \u241B", ""}));
    EXPECT_EQ(records[8][5], "'=cmd|' /C calc'!A0</td><script>\u241B]0;x\u2407");
    EXPECT_EQ(records[8][6], "'\n+1\t\"\uFFFD");
    EXPECT_EQ(records[8][13], "2026-11-01");
    EXPECT_EQ(records[9][5], std::string(10'000, 'x'));
    EXPECT_EQ(records[9][6], "-5");  // a number
}

TEST_F(FindingListTest, JsonHoldsEveryCharacter) {
    const Json json = test::JsonReader::Read(Write(WriteFindingsJson));
    EXPECT_EQ(json["dataset"].text, "'Zorvel_261116172805.MDB");
    EXPECT_EQ(json["counts"]["critical"].text, "3");
    EXPECT_EQ(json["counts"]["accepted"].text, "1");
    EXPECT_EQ(json["counts"]["expired"].text, "2");
    EXPECT_EQ(json["accepted"].elements.at(1)["use"].text, "'expired");
    ASSERT_EQ(json["findings"].elements.size(), 9U);
    const Json& hostile = json["findings"].elements[7];
    EXPECT_EQ(hostile["target"].text, "'=cmd|' /C calc'!A0</td><script>\x1B]0;x\x07");
    EXPECT_EQ(hostile["source"].text, "'\n+1\t\"\u0081");
    EXPECT_EQ(hostile["application"].text, "'<b>&amp;\"=1+1.@SUM(1).../..\\.%\x1B[2J\x07.X");
    EXPECT_EQ(hostile["until"].text, "'2026-11-01");
    EXPECT_EQ(json["findings"].elements[1]["reason"].text, "'</li> =1 \x1B");
}

TEST_F(FindingListTest, HtmlHoldsNoMarkupOfValues) {
    const std::string page = Write(WriteFindingsHtml);
    EXPECT_EQ(test::NestingFault(page), "");
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page,
                HasSubstr("<td>=cmd|&#39; /C calc&#39;!A0&lt;/td&gt;&lt;script&gt;\u00B7]0;x\u00B7</td>"));
    EXPECT_THAT(page, HasSubstr("<td>&lt;b&gt;&amp;amp;&quot;=1+1</td>"));
    EXPECT_THAT(page, HasSubstr("<tr class=\"accepted\"><td class=\"critical\">critical</td>"));
    EXPECT_THAT(
        page,
        HasSubstr("<p>9 findings: 3 critical, 0 high, 4 medium, 2 low; 6 open, 1 accepted, 2 expired</p>"));
    EXPECT_EQ(page.find('\x1B'), std::string::npos);
}

TEST_F(FindingListTest, SarifFitsTheStandardsSchema) {
    const std::string log = Write(WriteFindingsSarif);
    folder_.Write("log.sarif", log);
    const std::string command = "/usr/bin/python3 " ZORVEL_SOURCE_DIR
                                "/tests/findings/check_sarif.py " ZORVEL_SOURCE_DIR
                                "/tests/data/sarif-2.1.0-rtm.5.json " +
                                (folder_.path() / "log.sarif").string();
    EXPECT_EQ(std::system(command.c_str()), 0);

    const Json json = test::JsonReader::Read(log);
    const Json& run = json["runs"].elements.at(0);
    const std::vector<Json>& rules = run["tool"]["driver"]["rules"].elements;
    ASSERT_EQ(rules.size(), 5U);
    const std::vector<Json>& results = run["results"].elements;
    ASSERT_EQ(results.size(), 9U);
    for (const Json& result : results)
        EXPECT_EQ(rules.at(std::stoul(result["ruleIndex"].text))["id"].text, result["ruleId"].text);
    EXPECT_EQ(results[1]["level"].text, "'error");
    EXPECT_EQ(results[1]["message"]["text"].text,
              "'Windows password list (.PWL): C:\\WINNT\\A.PWL (Word.APPS.LEEDS.CORP, reaches 3 users, 2 "
              "workstations)");
    const Json& location = results[1]["locations"].elements.at(0);
    EXPECT_EQ(location["physicalLocation"]["artifactLocation"]["uri"].text,
              "'CORP_TREE/CORP/LEEDS/APPS/Word");
    EXPECT_EQ(results[7]["locations"].elements.at(0)["physicalLocation"]["artifactLocation"]["uri"].text,
              "'CORP_TREE/X/.%25%1B%5B2J%07/%2E/%2F/%2E/%2E/%40SUM%281%29/%3Cb%3E%26amp%3B%22%3D1%2B1");
    // From the entry to its application, the containers and the tree.
    const std::vector<Json>& places = run["logicalLocations"].elements;
    std::string path;
    for (const Json* place =
             &places.at(std::stoul(location["logicalLocations"].elements.at(0)["index"].text));
         ; place = &places.at(std::stoul((*place)["parentIndex"].text))) {
        path += (*place)["name"].text;
        if (place->members.count("parentIndex") == 0) break;
    }
    EXPECT_EQ(path, "'Word'APPS'LEEDS'CORP'CORP_TREE");
    EXPECT_EQ(results[1]["suppressions"].elements.at(0)["justification"].text, "'</li> =1 \x1B (us)");
    EXPECT_TRUE(results[2]["suppressions"].elements.empty());  // it has expired
    EXPECT_EQ(run["invocations"].elements.at(0)["toolExecutionNotifications"].elements.size(), 1U);
}

TEST_F(FindingListTest, FingerprintsStayFromRunToRunAndTellFindingsApart) {
    const Findings findings = Read();
    std::set<std::string> fingerprints;
    for (std::size_t row = 0; row < findings.table().size(); ++row)
        fingerprints.insert(FingerprintOf(findings.table(), row));
    EXPECT_EQ(fingerprints.size(), 9U);
    const std::string before = FingerprintOf(findings.table(), 1);
    EXPECT_EQ(before, "380B941F46C77054");
    Execute("UPDATE Zorvel_Issues SET SourceFile='moved', AppUniqueRef=AppUniqueRef+100");
    Execute("UPDATE Zorvel_Apps SET AppUniqueRef=AppUniqueRef+100");
    EXPECT_EQ(FingerprintOf(Read().table(), 1), before);
}

TEST_F(FindingListTest, AnImportThatWasNotCompletedIsSaidSoInEveryFormat) {
    Execute("UPDATE Zorvel_Import SET Completed=NULL");
    for (const FindingFormat& format : FindingFormats()) {
        const bool json = format.name == "json";
        EXPECT_THAT(Write(format.write),
                    HasSubstr(json ? "\"import completed\": false" : "import not completed"))
            << format.name;
    }
}

}  // namespace
}  // namespace zorvel
