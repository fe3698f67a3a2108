// What is found in a dataset, how it is weighed, filtered and sorted, and what of it is accepted.
#include "findings/findings_fixture.h"

#include <gmock/gmock.h>

#include "findings/finding_details.h"
#include "findings/name_pattern.h"
#include "support/errors.h"

namespace zorvel {
namespace {

using test::Digits;
using test::FindingsTest;
using testing::ElementsAre;

TEST_F(FindingsTest, ReachCountsWhomGroupsUsersAndWorkstationsLeadToOnce) {
    Fill();
    const Findings findings = Read();
    ASSERT_EQ(findings.table().size(), 7U);  // without that of no application
    const char* const kExpected[] = {"3 users, 2 workstations", "1 user", "container", "nobody"};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(ReachText(findings.table().applications()[i].reach), kExpected[i]);
    EXPECT_EQ(ReachText({1204, 1, 2}), "1,204 users, 1 workstation, 2 containers");
}

TEST_F(FindingsTest, TheOrderIsBySeverityThenReachAndByEveryColumn) {
    Fill();
    const Findings findings = Read();
    FindingOrder order(findings.table(), findings.states());
    const struct {
        FindingColumn column;
        const char* rows;
    } kCases[] = {
        {FindingColumn::kSeverity, "1245306"},  // of low ones the application that reaches more comes first
        {FindingColumn::kCode, "0612453"},      // equal ones by weight
        {FindingColumn::kApplication, "4562310"},
        {FindingColumn::kContainer, "2314506"},
        {FindingColumn::kWhere, "0126453"},
        {FindingColumn::kTarget,
         "0612453"},  // without regard to case; a folder's own files, then those below
        {FindingColumn::kSource, "0623145"},
        {FindingColumn::kReach, "4510236"},
        {FindingColumn::kState, "1245306"},
    };
    for (const auto& c : kCases) {
        std::vector<std::uint32_t> rows = {0, 1, 2, 3, 4, 5, 6};
        order.Sort(rows, c.column);
        std::string digits = Digits(rows);
        EXPECT_EQ(digits, c.rows) << static_cast<int>(c.column);
        order.Sort(rows, c.column, true);
        std::reverse(digits.begin(), digits.end());
        EXPECT_EQ(Digits(rows), digits) << static_cast<int>(c.column);
    }
}

TEST_F(FindingsTest, TheFilterBoxTakesWordsCodesApplicationsAndSeverities) {
    Fill();
    const Findings findings = Read();
    FindingFilter filter(findings.table(), findings.states());
    const struct {
        const char* text;
        const char* rows;
    } kCases[] = {
        {"", "0123456"},
        {"  ", "0123456"},
        {"pwl", "12"},
        {"code:filepwl", "12"},
        {"code:FILEPWL code:FILEOLD", "126"},
        {"app:leeds", "0145"},
        {"app:*.leeds.corp code:REGISTRYUNC", "45"},
        {"app:leeds.corp", "0145"},
        {"app:w?rd.*", "01"},
        {"app:\"reader 7\\.0\"", "23"},
        {"severity:critical", "12"},
        {"severity:LOW severity:medium", "03456"},
        {"fs1 folio", "3"},
        {"WINNT\\a", "16"},  // across the end of a folder
        {"folio\\sh", "34"},
        {"\"password list\"", "12"},
        {"severity:none", ""},  // no severity, so a word
        {"k\xF6ln", "23"},
        {"registry", "345"},
        {"nothing", ""},
    };
    for (const auto& c : kCases) {
        filter.SetText(c.text);
        EXPECT_EQ(Digits(filter.Apply()), c.rows) << c.text;
    }
}

std::string Shown(const FindingFilter& filter, Facet facet) {
    std::string shown;
    for (const FacetValue& value : filter.Values(facet))
        if (value.count > 0 || value.chosen) shown += value.text + ' ' + std::to_string(value.count) + ';';
    return shown;
}

TEST_F(FindingsTest, FacetsCountWhatTheOthersLetThrough) {
    Fill();
    const Findings findings = Read();
    FindingFilter filter(findings.table(), findings.states());
    filter.Apply();
    EXPECT_EQ(Shown(filter, Facet::kSeverity), "critical 2;medium 3;low 2;");
    EXPECT_EQ(Shown(filter, Facet::kCategory),
              "Best Practices 1;File Related Issues 3;Registry Related Issues 3;");
    EXPECT_EQ(Shown(filter, Facet::kRule), "APPNODESC 1;FILEOLD 1;FILEPWL 2;REGISTRYUNC 3;");
    EXPECT_EQ(Shown(filter, Facet::kContainer), "APPS.K\xD6LN.NORTH 2;APPS.LEEDS.CORP 4;CORP 1;");
    EXPECT_EQ(Shown(filter, Facet::kState), "open 7;");

    filter.ChooseOnly(Facet::kContainer, "APPS.LEEDS.CORP");
    EXPECT_EQ(Digits(filter.Apply()), "0145");
    EXPECT_EQ(Shown(filter, Facet::kContainer), "APPS.K\xD6LN.NORTH 2;APPS.LEEDS.CORP 4;CORP 1;");
    EXPECT_EQ(Shown(filter, Facet::kRule), "APPNODESC 1;FILEPWL 1;REGISTRYUNC 2;");
    filter.ChooseOnly(Facet::kRule, "FILEPWL");
    filter.Choose(Facet::kRule, 3, true);
    EXPECT_EQ(Digits(filter.Apply()), "145");
    filter.SetText("fs1");
    EXPECT_EQ(Digits(filter.Apply()), "1");
    EXPECT_FALSE(filter.IsEmpty());
    filter.Clear();
    EXPECT_TRUE(filter.IsEmpty());
    EXPECT_EQ(Digits(filter.Apply()), "0123456");
}

TEST(NamePattern, StarsAndQuestionMarksAreAsDirectoryNamesCompare) {
    const struct {
        const char* pattern;
        const char* name;
        bool matches;
    } kCases[] = {
        {"*", "", true},
        {"", "", true},
        {"", "A", false},
        {"?", "", false},
        {"*.LEEDS.CORP", "Word.Apps.leeds.corp", true},
        {"*.LEEDS.CORP", "Word.LEEDS.CORP.X", false},
        {"W?rd*", "WORD", true},
        {"W?rd", "Wrd", false},
        {"*a*b*", "xxaxxbxx", true},
        {"*a*b", "ab ab a", false},
        {"*ab", "aab", true},
        {"k\xD6ln", "K\xF6LN", true},
        {"[ab]", "a", false},
        {"a.c", "abc", false},
        {"***x", "yx", true},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(NamePattern(c.pattern).Matches(c.name), c.matches) << c.pattern << ' ' << c.name;
    EXPECT_EQ(NamePattern::WithWholeHive(R"(hklm\Software\*)"), R"(HKEY_LOCAL_MACHINE\Software\*)");
    EXPECT_EQ(NamePattern::WithWholeHive("HKLMX"), "HKLMX");
    // A pattern that would take years if every star could need more again.
    EXPECT_FALSE(NamePattern("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b").Matches(std::string(10'000, 'a')));
}

TEST_F(FindingsTest, AcceptedOnesAreAcceptedUntilTheirDayIsOver) {
    Fill();
    const struct {
        const char* fields;
        const char* states;  // of the rows: o, a, e
        const char* use;
    } kCases[] = {
        {"code = 'REGISTRYUNC'\napplication = '*'", "oooaaao", "used"},
        {"code = 'REGISTRYUNC'\napplication = '*.apps.leeds.corp'", "ooooaao", "used"},
        {"code = 'REGISTRYUNC'\napplication = '*'\ntarget = 'HKLM\\software\\folio*'", "oooaoao", "used"},
        {"code = 'REGISTRYUNC'\napplication = 'Reader 7\\.0.*'", "oooaooo", "used"},
        {"code = 'APPNODESC'\napplication = 'Word.APPS.LEEDS.CORP'\nuntil = 2026-11-23", "aoooooo", "used"},
        {"code = 'APPNODESC'\napplication = '*'\nuntil = 2026-11-22", "eoooooo", "expired"},
        {"code = 'FILEBAK'\napplication = '*'", "ooooooo", "unused"},
        {"code = 'FILEOLD'\napplication = '*.LEEDS.CORP'\nuntil = 2026-11-22", "ooooooo", "expired, unused"},
    };
    for (const auto& c : kCases) {
        Accept(std::string("[[accepted]]\nreason = 'because'\n") + c.fields + '\n');
        const Findings findings = Read();
        ASSERT_EQ(findings.fault(), "");
        std::string states;
        for (std::size_t row = 0; row < findings.table().size(); ++row)
            states += StateText(findings.states()[row]).front();
        EXPECT_EQ(states, c.states) << c.fields;
        EXPECT_EQ(findings.UseOf(0), c.use) << c.fields;
    }
}

TEST_F(FindingsTest, OfSeveralEntriesTheFirstThatCountsIsTold) {
    Fill();
    Accept(
        "[[accepted]]\ncode = 'FILEPWL'\napplication = '*'\nreason = 'old'\nuntil = 2020-01-01\n"
        "[[accepted]]\ncode = 'FILEPWL'\napplication = 'Word.*'\nreason = 'new'\n"
        "[[accepted]]\ncode = 'FILEBAK'\napplication = '*'\nreason = 'none'\n");
    const Findings findings = Read();
    EXPECT_EQ(findings.states().EntryOf(0), std::nullopt);
    EXPECT_EQ(findings.states().EntryOf(1), 1U);
    EXPECT_EQ(findings.states().EntryOf(2), 0U);
    EXPECT_THAT(
        findings.Notes(),
        ElementsAre("Accepted.toml, line 1: FILEPWL of * expired on 2020-01-01; 2 findings open again",
                    "Accepted.toml, line 10: FILEBAK of * matches nothing any more"));
    EXPECT_EQ(CountsText(CountsOf(findings, std::vector<std::uint32_t>{0, 1, 2, 3})),
              "4 findings: 2 critical, 0 high, 1 medium, 1 low; 2 open, 1 accepted, 1 expired");
    EXPECT_EQ(DetailsOf(findings, 2).acceptance, "expired on 2020-01-01: old");
}

TEST_F(FindingsTest, AMistakeInTheListLeavesEverythingOpen) {
    Fill();
    Accept(
        "[[accepted]]\ncode = 'FILEPWL'\napplication = '*'\nreason = 'x'\n[[accepted]]\ncode = 'FILEPW'\n");
    const Findings findings = Read();
    EXPECT_EQ(findings.states()[1], FindingState::kOpen);
    EXPECT_THAT(
        findings.Notes(),
        ElementsAre(files_.Path("Accepted.toml") +
                    ", line 5: [[accepted]]: expected a text \"application\"; nothing counts as accepted"));
}

TEST_F(FindingsTest, ADatasetOfAnOlderVersionHasTheCataloguesSeverities) {
    Fill();
    Execute("UPDATE Zorvel_Resolutions SET Severity='low' WHERE IssueCode='FILEPWL'");
    EXPECT_EQ(Read().table().RuleOf(1).severity, Severity::kLow);  // the dataset's own
    Execute("ALTER TABLE Zorvel_Resolutions DROP COLUMN Severity");
    EXPECT_EQ(Read().table().RuleOf(1).severity, Severity::kCritical);
    AddIssue("1", "File", "X", "", "OWNCODE");
    EXPECT_EQ(Read().table().RuleOf(7).severity, Severity::kMedium);
    EXPECT_EQ(Read().table().RuleOf(7).what, "An issue without a description");
}

TEST_F(FindingsTest, DetailsShowTheEntryAmongItsNeighboursAndTheAssociations) {
    Fill();
    for (const char* name : {"1.TXT", "2.TXT", "3.TXT", "A.PWL", "4.TXT", "5.TXT", "6.TXT"})
        Execute("INSERT INTO Zorvel_CopyFiles VALUES (1,?1,'s','Copy Always')",
                {std::string("C:\\WINNT\\") + name});
    Execute("INSERT INTO Zorvel_RegistrySettings VALUES (2,?1,'Share','x','Create')",
            {R"(HKEY_LOCAL_MACHINE\SOFTWARE\Folio)"});
    Execute("INSERT INTO Zorvel_AppDetails VALUES (4,'App:Path',?1)", {R"(c:\winnt\x.exe)"});
    AddIssue("4", "Path to Executable", R"(C:\WINNT\X.EXE)", "", "FILEPORTABLE");
    const Findings findings = Read();
    FindingDetails details = DetailsOf(findings, 1);
    EXPECT_EQ(details.rule, "FILEPWL: Windows password list (.PWL)");
    std::string entries;
    for (const FindingDetails::Entry& entry : details.entries)
        entries += entry.fields[0].substr(9) + (entry.is_own ? "* " : " ");
    EXPECT_EQ(entries, "2.TXT 3.TXT A.PWL* 4.TXT 5.TXT ");
    EXPECT_THAT(details.associations,
                ElementsAre("group HR.CORP (3 members)", "user Bob.HR.Corp", "user Cy.HR.CORP"));
    details = DetailsOf(findings, 3);
    ASSERT_EQ(details.entries.size(), 1U);
    EXPECT_THAT(details.entries[0].fields,
                ElementsAre(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Folio)", "Share", "x", "Create"));
    EXPECT_THAT(DetailsOf(findings, 7).entries.at(0).fields, ElementsAre("App:Path", R"(c:\winnt\x.exe)"));
    EXPECT_TRUE(DetailsOf(findings, 0).columns.empty());
    EXPECT_TRUE(DetailsOf(findings, 2).entries.empty());  // the dataset lacks the entry
}

}  // namespace
}  // namespace zorvel
