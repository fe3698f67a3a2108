// The findings of the sample tree, held against what queries of the test's own say of the same dataset.
#include <gmock/gmock.h>

#include <map>
#include <set>

#include "findings/finding_list.h"
#include "sample_support.h"

namespace zorvel::test {
namespace {

// What tells the findings of a dataset apart, joined.
using Keys = std::multiset<std::string>;

class SampleFindings : public testing::Test {
  protected:
    SampleFindings() {
        EXPECT_EQ(sample_.Run({"analyse", "--all", "--pace", "0", "--import"}), 0);
        Database master(sample_.folder.path() / "Databases/ZorvelMaster.mdb", "master");
        dataset_ = Catalogue(master).List().at(0);
    }

    Findings Read(const std::string& today) const { return Findings(files_, dataset_, *DateFrom(today)); }
    static Keys InState(const Findings& findings, FindingState state) {
        Keys keys;
        const FindingTable& table = findings.table();
        for (std::size_t row = 0; row < table.size(); ++row) {
            if (findings.states()[row] != state) continue;
            keys.insert(table.RuleOf(row).code + '|' + table.ApplicationOf(row).name + '|' +
                        table.ApplicationOf(row).container + '|' + table.TargetOf(row));
        }
        return keys;
    }
    // The findings that the store's own GLOB lets through.
    Keys Globbed(const std::string& condition) const {
        Keys keys;
        const Database database = Read("2026-11-23").OpenDataset();
        Rows rows = database.Query(
            "SELECT IssueCode||'|'||AppName||'|'||AppOU||'|'||TargetFile AS Found FROM Zorvel_Issues JOIN "
            "Zorvel_Apps USING (AppUniqueRef) WHERE " +
            condition);
        while (rows.Next())
            keys.insert(rows.Text("Found"));
        return keys;
    }

    SampleFolder sample_;
    Files files_{sample_.folder.path()};
    CatalogueRow dataset_;
};

TEST_F(SampleFindings, CountBySeverityAsTheDatasetDoes) {
    const Findings findings = Read("2026-11-23");
    std::map<std::string, std::size_t> counted;
    for (std::size_t row = 0; row < findings.table().size(); ++row)
        ++counted[std::string(SeverityText(findings.table().RuleOf(row).severity))];
    std::map<std::string, std::size_t> expected;
    const Database database = findings.OpenDataset();
    Rows rows = database.Query(
        "SELECT Severity, COUNT(*) FROM Zorvel_Issues JOIN Zorvel_Resolutions USING (IssueCode) GROUP BY "
        "Severity");
    while (rows.Next())
        expected[rows.Text("Severity")] = static_cast<std::size_t>(rows.Number(1));
    EXPECT_EQ(counted, expected);
    EXPECT_EQ(counted.size(), 4U);
}

TEST_F(SampleFindings, AnAcceptedPatternChangesWhatAGlobSaysUntilItsDayIsOver) {
    const struct {
        const char* entry;
        const char* condition;
    } kCases[] = {
        {"code = 'FILEOLD'\napplication = '*.corp'",
         "IssueCode='FILEOLD' AND UPPER(AppName||'.'||AppOU) GLOB '*.CORP'"},
        {"code = 'REGISTRYUNC'\napplication = '*'\ntarget = 'HKLM\\*\\templateshare'",
         "IssueCode='REGISTRYUNC' AND UPPER(TargetFile) GLOB 'HKEY_LOCAL_MACHINE\\*\\TEMPLATESHARE'"},
        {"code = 'FILETEMP'\napplication = '*.?????.CORP'\ntarget = '*\\~*'",
         "IssueCode='FILETEMP' AND UPPER(AppName||'.'||AppOU) GLOB '*.?????.CORP' AND TargetFile GLOB "
         "'*\\~*'"},
    };
    for (const auto& c : kCases) {
        sample_.folder.Write(
            "Accepted.toml",
            std::string("[[accepted]]\nreason = 'r'\nuntil = 2026-12-31\n") + c.entry + '\n');
        const Keys expected = Globbed(c.condition);
        ASSERT_FALSE(expected.empty()) << c.condition;
        EXPECT_EQ(InState(Read("2026-12-31"), FindingState::kAccepted), expected) << c.entry;
        const Findings later = Read("2027-01-01");
        EXPECT_TRUE(InState(later, FindingState::kAccepted).empty());
        EXPECT_EQ(InState(later, FindingState::kExpired), expected) << c.entry;
    }
}

}  // namespace
}  // namespace zorvel::test
