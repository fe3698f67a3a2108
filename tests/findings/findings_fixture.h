// A program folder with a dataset whose rows a test gives.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "findings/finding_filter.h"
#include "findings/finding_list.h"
#include "support/databases.h"

namespace zorvel::test {

inline constexpr Date kToday{std::chrono::year{2026}, std::chrono::month{11}, std::chrono::day{23}};

class FindingsTest : public testing::Test {
  protected:
    static constexpr const char* kDataset = "Zorvel_261116172805.MDB";

    FindingsTest() {
        AddDatabases(folder_);
        AddDataset(folder_, kDataset);
        details_.DBName = kDataset;
        details_.Tree = "CORP_TREE";
        details_.Captured = "16/11/2026 17:28:05";
    }

    void Execute(const std::string& sql, const std::vector<std::string>& values = {}) const {
        Database(folder_.path() / "Databases" / kDataset, kDataset).Prepare(sql).Execute(values);
    }
    void AddApplication(const std::string& key, const std::string& name, const std::string& container) const {
        Execute("INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU) VALUES (?1,?2,?3)",
                {key, name, container});
    }
    void AddIssue(const std::string& key, const std::string& place, const std::string& target,
                  const std::string& source, const std::string& code) const {
        Execute("INSERT INTO Zorvel_Issues VALUES (?1,?2,?3,?4,?5)", {key, place, target, source, code});
    }
    void Associate(const std::string& key, const std::string& type, const std::string& user,
                   const std::string& association) const {
        Execute("INSERT INTO Zorvel_Associations VALUES (?1,?2,?3,?4)", {key, user, association, type});
    }
    // Four applications and seven findings.
    void Fill() const {
        AddApplication("1", "Word", "APPS.LEEDS.CORP");
        AddApplication("2", "Reader 7.0", "APPS.K\xD6LN.NORTH");
        AddApplication("3", "calc", "APPS.LEEDS.CORP");
        AddApplication("4", "Draw", "CORP");
        for (const char* member : {"Ann.HR.CORP", "BOB.HR.CORP", "ann.hr.corp"})
            Associate("1", "Group", member, "HR.CORP");
        Associate("1", "User", "Bob.HR.Corp", "");
        Associate("1", "User", "Cy.HR.CORP", "");
        Execute("INSERT INTO Zorvel_AppAssociations VALUES (1,'','',?1,0,'')",
                {"PC1\nPC1.A.CORP\nPC1\nPC1.B.CORP\nPC1\npc1.b.corp"});
        Associate("2", "User", "Dan.CORP", "");
        Associate("3", "OU", "", "LEEDS.CORP");
        Associate("3", "OU", "", "leeds.corp");
        AddIssue("1", "Application", "", "", "APPNODESC");
        AddIssue("1", "File", R"(C:\WINNT\A.PWL)", R"(\\FS1\PACK\a.pwl)", "FILEPWL");
        AddIssue("2", "File", R"(C:\WINNT\b.PWL)", "%SOURCE_PATH%\\1.fil", "FILEPWL");
        AddIssue("2", "Registry", R"(HKEY_LOCAL_MACHINE\SOFTWARE\Folio\Share)", R"(\\FS1\FOLIO)",
                 "REGISTRYUNC");
        AddIssue("3", "Registry", R"(HKEY_CURRENT_USER\Software\Folio\Share)", R"(\\FS2\FOLIO)",
                 "REGISTRYUNC");
        AddIssue("3", "Registry", R"(HKEY_LOCAL_MACHINE\SOFTWARE\FOLIO)", R"(\\FS2\X)", "REGISTRYUNC");
        AddIssue("4", "File", R"(c:\winnt\A.OLD)", "", "FILEOLD");
        AddIssue("99", "File", "of no application", "", "FILEOLD");
    }
    void Accept(const std::string& toml) const { folder_.Write("Accepted.toml", toml); }
    Findings Read() const { return Findings(files_, details_, kToday); }

    TempFolder folder_;
    Files files_{folder_.path()};
    CatalogueRow details_;
};

// The rows as digits, in their order.
inline std::string Digits(const std::vector<std::uint32_t>& rows) {
    std::string digits;
    for (const std::uint32_t row : rows)
        digits += std::to_string(row);
    return digits;
}

}  // namespace zorvel::test
