// What an analysis finds in the sample trees.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/data_files.h"
#include "directory/ldif_reader.h"
#include "platform/regex.h"
#include "sample_flaws.h"
#include "sample_support.h"
#include "stream_builder.h"

namespace zorvel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

// The data files of a run over one of the trees that ship.
class Audit {
  public:
    explicit Audit(const std::string& tree) {
        EXPECT_EQ(sample_.Run({"analyse", "--tree", tree, "--all", "--pace", "0"}), kDone);
    }

    std::vector<std::vector<std::string>> Rows(const DataFile& layout) const {
        const Files files(sample_.folder.path());
        DataFileReader reader(files, layout);
        std::vector<std::vector<std::string>> rows;
        for (std::vector<std::string> row; reader.Next(row);)
            rows.push_back(row);
        return rows;
    }
    // How often each text occurs in a field of some files.
    std::map<std::string, int> Texts(const std::vector<DataFile>& layouts, std::size_t field) const {
        std::map<std::string, int> texts;
        for (const DataFile& layout : layouts) {
            for (const std::vector<std::string>& row : Rows(layout))
                ++texts[row[field]];
        }
        return texts;
    }
    std::string Log() const { return sample_.folder.Read("Zorvel.log"); }
    const std::string& out() const { return sample_.out; }

  private:
    SampleFolder sample_;
};

// One run serves all tests of CORP_TREE.
class CorpTree : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { audit_ = std::make_unique<Audit>("CORP_TREE"); }
    static void TearDownTestSuite() { audit_.reset(); }

    static std::set<std::string> TextSet(const std::vector<DataFile>& layouts, std::size_t field) {
        std::set<std::string> texts;
        for (const auto& [text, count] : audit_->Texts(layouts, field))
            texts.insert(text);
        return texts;
    }

    static std::unique_ptr<Audit> audit_;
};
std::unique_ptr<Audit> CorpTree::audit_;

TEST_F(CorpTree, IsReadWithoutErrors) {
    EXPECT_THAT(audit_->out(), HasSubstr("Zorvelrun finished without any stream parsing errors."));
    EXPECT_EQ(audit_->Log().find("ERROR"), std::string::npos);
    EXPECT_EQ(audit_->Log().find("WARNING"), std::string::npos);
}

TEST_F(CorpTree, HasEveryIssue) {
    std::set<std::string> expected = {"INVALIDAN",   "INVALIDRO",       "APPNODESC",      "APPNOADMIN",
                                      "APPNOASSOC",  "APPCOMPLEXINI",   "APPCOMPLEXTEXT", "APPCOMPLEXREG",
                                      "REGISTRYUNC", "REGISTRYEXCLUDE", "MACROUNC",       "MACROSTP"};
    for (const tools::FileFlaw& flaw : tools::FileFlaws())
        expected.emplace(flaw.code);
    EXPECT_EQ(expected.size(), 47U);
    EXPECT_EQ(TextSet({data_files::kIssues}, 4), expected);

    std::set<std::string> fixed_paths;
    for (const std::vector<std::string>& issue : audit_->Rows(data_files::kIssues)) {
        if (issue[4] == "FILEPORTABLE") fixed_paths.insert(issue[1]);
    }
    EXPECT_EQ(fixed_paths, (std::set<std::string>{"File", "Path to Executable", "Working Directory"}));
}

TEST_F(CorpTree, HasOneSlowApplicationOfEachKind) {
    std::map<std::string, int> codes = audit_->Texts({data_files::kIssues}, 4);
    for (const char* code : {"APPCOMPLEXINI", "APPCOMPLEXTEXT", "APPCOMPLEXREG"})
        EXPECT_EQ(codes[code], 1) << code;
}

TEST_F(CorpTree, IsHealthyButForTheFlawsThatWereDealt) {
    constexpr std::size_t kApplications = 150;
    const tools::FlawDealer dealer(kApplications);
    std::size_t flawed = 0;
    for (std::size_t i = 0; i < kApplications; ++i)
        flawed += dealer.FlawsOf(i).empty() ? 0U : 1U;
    EXPECT_EQ(TextSet({data_files::kIssues}, 0).size(), flawed);
    EXPECT_EQ(audit_->Rows(data_files::kAppAssociations).size(), kApplications);
}

TEST_F(CorpTree, HasEveryKindOfFileEntry) {
    std::set<std::string> expected = {"?", "Delete", "Create Directory", "Delete Directory"};
    for (const std::string mode :
         {"Copy Always", "Copy If Exists", "Copy If Does Not Exist", "Copy If Newer",
          "Copy If Newer And Exists", "Request Confirmation", "Copy If Newer Version", "Copy If Different"}) {
        expected.insert({mode, mode + ", Shared"});
    }
    EXPECT_THAT(TextSet({data_files::kCopyFiles, data_files::kCopyFilesAlways}, 3), IsSupersetOf(expected));
}

TEST_F(CorpTree, HasEveryKindOfOtherEntry) {
    EXPECT_THAT(
        TextSet({data_files::kRegistrySettings, data_files::kRegistrySettingsAlways}, 4),
        IsSupersetOf({"Create Always", "Create If Exists", "Create If Doesnt Exist", "Create", "Delete"}));
    EXPECT_EQ(TextSet({data_files::kINISettings, data_files::kINISettingsAlways}, 5),
              (std::set<std::string>{"", "[ITEM DELETED]", "[SECTION DELETED]"}));
    EXPECT_EQ(TextSet({data_files::kTextFiles, data_files::kTextFilesAlways}, 4),
              (std::set<std::string>{"Addition to beginning of file", "Addition to end of file",
                                     "Deleted text string", "Find and Replace"}));
    EXPECT_THAT(TextSet({data_files::kMacros}, 4),
                IsSupersetOf({"", "Please enter your cost centre (four digits)"}));
    EXPECT_THAT(TextSet({data_files::kEnvironmentSettings}, 0), IsSupersetOf({"PATH"}));

    // Entries that stand for nothing leave no row.
    const std::string no_entry = StreamBuilder().NoEntry().bytes().substr(8);
    LdifReader ldif(InputFile(Shipped("Trees/CORP_TREE.ldif"), "CORP_TREE.ldif"));
    int found = 0;
    while (ldif.NextRecord()) {
        for (LdifAttribute line; ldif.NextAttribute(line);)
            found +=
                line.name == "appCopyFiles" && line.value.find(no_entry) != std::string_view::npos ? 1 : 0;
    }
    EXPECT_GT(found, 0);
}

TEST_F(CorpTree, HasAddressesThatAreNobodys) {
    // A number in four parts, or the host of a web address.
    const Regex address(R"([0-9]+\.[0-9]+\.[0-9]+\.[0-9]+|://|www\.)");
    const Regex example(R"(^(192\.0\.2|198\.51\.100|203\.0\.113)\.[0-9]{1,3}(:8080|,1433)?$)"
                        R"(|^((https?|ftp)://[a-z]+|www)\.example\.(com|org)/)");
    std::set<std::string> kinds;
    for (const std::string& data :
         TextSet({data_files::kRegistrySettings, data_files::kRegistrySettingsAlways}, 3)) {
        if (!address.Matches(data)) continue;
        EXPECT_TRUE(example.Matches(data)) << data;
        kinds.insert(data.substr(0, data.find_first_of(".:")));
    }
    EXPECT_EQ(kinds, (std::set<std::string>{"192", "198", "203", "ftp", "http", "https", "www"}));
}

TEST_F(CorpTree, HasEveryKindOfAssociation) {
    EXPECT_EQ(TextSet({data_files::kAssociations}, 3), (std::set<std::string>{"User", "Group", "OU", "WS"}));
    std::size_t largest = 0;
    for (const std::vector<std::string>& row : audit_->Rows(data_files::kAppAssociations))
        largest = std::max(largest, static_cast<std::size_t>(std::stoi(row[4])));
    EXPECT_GT(largest, 5U) << "users that one application reaches";
    const std::set<std::string> machines = TextSet({data_files::kAssociations}, 2);
    EXPECT_THAT(machines, ::testing::Contains(::testing::StartsWith("SRV-")));
    EXPECT_THAT(machines, ::testing::Contains(::testing::ContainsRegex("^LEEDS-PC-")));
    EXPECT_THAT(machines, ::testing::Contains(::testing::StartsWith("WSG-")));
}

TEST_F(CorpTree, HasNamesWithDotsCommasBlanksAndAccents) {
    std::string names;
    for (const std::string& name : TextSet({data_files::kAppAssociations}, 0))
        names += name + "\n";
    for (const char* part :
         {"Printroom 7\\.0.APPS.CORP\n", "Treasury\\.Link.", "Plan,Build,Ship.", "R\xe9serve.",
          "Reader.G\xf6teborg.SE\n", ".SHIFT-2.PACKING.LINE-A.PRODUCTION.LEEDS.CORP\n"}) {
        EXPECT_THAT(names, HasSubstr(part));
    }
}

TEST(LabTree, IsReadWithoutErrors) {
    const Audit audit("LAB_TREE");
    EXPECT_THAT(audit.out(), HasSubstr("Zorvelrun finished without any stream parsing errors."));
    EXPECT_EQ(audit.Log().find("ERROR"), std::string::npos);
    EXPECT_EQ(audit.Rows(data_files::kAppAssociations).size(), 15U);
    EXPECT_FALSE(audit.Rows(data_files::kIssues).empty());
}

}  // namespace
}  // namespace zorvel::test
