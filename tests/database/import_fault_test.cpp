// Imports that fail: what is said, and what is left. Kills and full disks come from tests/faults.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "database/dataset_folder.h"

namespace zorvel {
namespace {

using test::DatasetFolder;
using test::Records;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kWord = "Word.APPS.SITE";

class FailingImport : public testing::Test {
  protected:
    void SetUp() override {
        folder_.Write(data_files::kAppDetails, {{kWord, "A", "1"}, {kWord, "B", "2"}});
        folder_.folder.Write("warn.wav", "x");
        folder_.options.session.SoundsEnabled = true;
        folder_.options.session.WarningSound = "warn";
    }
    // Runs the import, which has to fail with `text` ("NUMBER (DESCRIPTION)") at `step`.
    void ExpectFailure(const std::string& text, int step) {
        folder_.ui.sounds.clear();
        EXPECT_EQ(folder_.RunImport(), ImportResult::kFailed);
        const std::string place = " at Line " + std::to_string(step);
        ASSERT_FALSE(folder_.ui.boxes.empty());
        EXPECT_EQ(folder_.ui.boxes.back().text, "Error no. " + text + " occurred during Import" + place);
        EXPECT_EQ(folder_.ui.boxes.back().icon, MessageIcon::kNone);
        EXPECT_EQ(folder_.LogLines().back(), " ERROR: " + folder_.ui.boxes.back().detail);
        EXPECT_THAT(folder_.LogLines(), testing::Contains(" ERROR: Unexpected error # " + text +
                                                          " occurred during data Import routine" + place));
        EXPECT_THAT(folder_.ui.sounds, ElementsAre(folder_.files.Path("warn.WAV")));
        folder_.ui.boxes.clear();
    }
    void Overwrite() { folder_.ui.answers = {Answer::kYes}; }

    DatasetFolder folder_;
};

TEST_F(FailingImport, NamesAMissingAlwaysFileAfterThePlainOneWasLoaded) {
    folder_.Write(data_files::kCopyFiles, {{kWord, "T", "S", "Copy Always"}});
    folder_.files.Remove(folder_.files.Path(data_files::kCopyFilesAlways.name));
    ExpectFailure("53 (File not found)", 8);
    EXPECT_THAT(folder_.Table("Zorvel_CopyFiles", "Target"), ElementsAre("T"));
    EXPECT_EQ(folder_.catalogue->List().size(), 1U);
    EXPECT_THAT(folder_.LogLines().back(), HasSubstr("Zorvel_CopyFilesAlways.CSV"));
}

TEST_F(FailingImport, KeepsWhatCameBeforeARecordThatHasNotItsFields) {
    const std::string row = "\"Word.APPS.SITE\",\"u\",\"a\",\"User\"\r\n";
    const std::string wrong = "5 (Invalid procedure call or argument)";
    const std::string cut = "62 (Input past end of file)";
    const struct {
        std::string table, text, error;
        std::size_t kept;
        std::string line;
    } cases[] = {
        {"Macros", "Word.APPS.SITE\r\nM\r\nV\r\n0\r\n\r\nWord.APPS.SITE\r\nM2\r\n", cut, 1, "7"},
        {"CopyFiles", "Word.APPS.SITE\r\nT\r\nS\r\nCopy Alw", cut, 0, "4"},
        {"Associations", row + "\"Word.APPS.SITE\",\"v\"\r\n" + row, wrong, 1, "2"},
        {"Associations", row + "\"Word.APPS.SITE\",\"v\",\"a\",\"User\",\"more\"\r\n" + row, wrong, 1, "2"},
        {"Associations", row + "\"Word.APPS.SITE\",\"v\"w\",\"a\",\"User\"\r\n", wrong, 1, "2"},
        {"Associations", row + "\"Word.APPS.SITE\",\"v\",\"a\",\"Us", cut, 1, "2"},
        {"Associations", row + "\"Word.APPS.SITE\",\"v\",\"a\",User", cut, 1, "2"},
        {"Associations", row + "\"Word.APPS.SITE\",\"v\",", cut, 1, "2"},
    };
    for (const auto& c : cases) {
        const std::string file = "Zorvel_" + c.table + ".CSV";
        const std::string whole = folder_.folder.Read("TempData/" + file);
        folder_.folder.Write("TempData/" + file, c.text);
        Overwrite();
        ExpectFailure(c.error, 8);
        EXPECT_EQ(folder_.Table("Zorvel_" + c.table, "AppUniqueRef").size(), c.kept) << c.text;
        EXPECT_THAT(folder_.LogLines().back(), HasSubstr(file + ", line " + c.line + ": ")) << c.text;
        folder_.folder.Write("TempData/" + file, whole);
    }
}

TEST_F(FailingImport, SaysLittleOfALongValue) {
    folder_.Write(data_files::kAppDetails, {{kWord, "'" + std::string(100'000, 'x'), ""}});
    EXPECT_EQ(folder_.RunImport(), ImportResult::kFailed);
    EXPECT_LT(folder_.ui.boxes.back().text.size(), 300U);
    for (const std::string& line : folder_.LogLines())
        EXPECT_LT(line.size(), 600U);
}

TEST_F(FailingImport, EndsAtARecordWhoseApplicationHasNoRow) {
    folder_.Write(data_files::kIssues,
                  {{kWord, "File", "", "", "FILEOLD"}, {"Other.APPS", "File", "", "", "FILEOLD"}});
    ExpectFailure("-2147467259 (the application has no row in Zorvel_Apps)", 8);
    EXPECT_THAT(folder_.Table("Zorvel_Issues", "AppUniqueRef"), ElementsAre("1"));
    EXPECT_THAT(folder_.LogLines().back(),
                HasSubstr("Zorvel_Issues.CSV, line 10: the application has no row"));
}

TEST_F(FailingImport, LeavesOutTheNameIssueOfAnApplicationThatWasNotFound) {
    folder_.Write(data_files::kIssues, {{"My App.APPS", "Application", "", "", "INVALIDAN"},
                                        {kWord, "Application", "", "", "INVALIDAN"}});
    EXPECT_EQ(folder_.RunImport(), ImportResult::kDone);
    EXPECT_THAT(folder_.Table("Zorvel_Issues", "AppUniqueRef, IssueCode"), ElementsAre("1|INVALIDAN"));
    EXPECT_THAT(folder_.LogLines(),
                testing::Contains(" WARNING: " + folder_.files.Path(data_files::kIssues.name) +
                                  ", line 5: a record of 'My App.APPS' was left out: the application was not "
                                  "found in the directory"));
}

TEST_F(FailingImport, EndsAtAValueThatDoesNotStayWithinItsLiteral) {
    struct Case {
        DataFile file;
        std::vector<std::string> record;
        std::string description;
        std::string field;
    };
    const std::string apostrophe = "an apostrophe in a value ends its text literal";
    const std::string no_number = "a value that has to be a number is none";
    const std::vector<Case> cases = {
        {data_files::kAppDetails,
         {kWord, "O'Brien", ""},
         "near \"Brien\": syntax error",
         "the attribute name 'O'Brien'"},
        {data_files::kAppDetails,
         {kWord, "x','y'); DROP TABLE Zorvel_Apps; --", ""},
         "the text goes on after its first statement",
         "the attribute name 'x',"},
        {data_files::kAppDetails, {kWord, "x'||'y", ""}, apostrophe, "the attribute name 'x'||'y'"},
        {data_files::kAppDetails,
         {kWord, "App:Icon Order", "1', AppName='stolen"},
         apostrophe,
         "the value of 'App:Icon Order' '1', AppName='stolen'"},
        {data_files::kIssues, {kWord, "x'||'y", "", "", "FILEOLD"}, apostrophe, "the entry type 'x'||'y'"},
        {data_files::kIssues, {kWord, "", "", "", "x'||'y"}, apostrophe, "the issue code 'x'||'y'"},
        {data_files::kCopyFiles, {kWord, "", "", "'"}, "unrecognized token: \"''')\"", "the copy mode '''"},
        {data_files::kINISettings,
         {kWord, "", "", "", "", "a'b"},
         "near \"b\": syntax error",
         "the note 'a'b'"},
        {data_files::kRegistrySettings, {kWord, "", "", "", "'||'"}, apostrophe, "the mode ''||''"},
        {data_files::kAppAssociations,
         {kWord, "", "", "", "1", "'||'"},
         apostrophe,
         "the fingerprint ''||''"},
        {data_files::kAppAssociations, {kWord, "", "", "", "many", ""}, no_number, no_number},
        {data_files::kAppAssociations, {kWord, "", "", "", "(SELECT 1)", ""}, no_number, no_number},
        {data_files::kAppAssociations, {kWord, "", "", "", "", ""}, no_number, no_number},
    };
    for (const Case& test : cases) {
        Records records;
        if (test.file.name == data_files::kAppDetails.name) records.push_back({kWord, "First", ""});
        records.push_back(test.record);
        folder_.Write(test.file, records);
        Overwrite();
        ExpectFailure("-2147467259 (" + test.description + ")", 8);
        EXPECT_THAT(folder_.Table("Zorvel_Apps", "AppName"), ElementsAre("Word"));
        EXPECT_THAT(folder_.LogLines().back(), testing::ContainsRegex("\\.CSV, line [0-9]+: "));
        EXPECT_THAT(folder_.LogLines().back(), HasSubstr(test.field));
        folder_.Write(test.file, {});
        folder_.Write(data_files::kAppDetails, {{kWord, "A", "1"}});
    }
}

TEST_F(FailingImport, KeepsHostileTextAsText) {
    const std::string hostile = "'; DROP TABLE Zorvel_Apps; --\"\n, \xE9 %' OR '1'='1";
    const std::string huge(1'000'000, '\'');
    folder_.Write(data_files::kAppDetails,
                  {{huge + "." + huge, "App:Caption", hostile}, {kWord, "Notes", huge}});
    folder_.Write(data_files::kRegistrySettings, {{kWord, hostile, hostile, hostile, "Create"}});
    EXPECT_EQ(folder_.RunImport(), ImportResult::kDone);
    const std::string name(50, '\'');
    EXPECT_THAT(folder_.Table("Zorvel_Apps", "AppName, AppOU, AppCaption"),
                ElementsAre(name + '|' + name + '|' + hostile, "Word|APPS.SITE|"));
    EXPECT_THAT(folder_.Table("Zorvel_AppDetails", "length(Data)"), ElementsAre("1000000"));
    EXPECT_THAT(folder_.Table("Zorvel_RegistrySettings", "[Key], Data, [Value]"),
                ElementsAre(hostile + '|' + hostile + '|' + hostile));
}

TEST_F(FailingImport, StopsAtTheCatalogueForATreeWithAnApostrophe) {
    folder_.tree = "O'TREE";
    ExpectFailure("-2147467259 (near \"TREE\": syntax error)", 7);
    EXPECT_THAT(folder_.LogLines().back(),
                HasSubstr("the capture record's tree 'O'TREE' holds an apostrophe: near"));
    EXPECT_TRUE(folder_.catalogue->List().empty());
    EXPECT_TRUE(folder_.folder.Has("Databases/" + folder_.dataset));
}

TEST_F(FailingImport, SaysWhyTheDatasetCannotBeMade) {
    folder_.files.Remove(folder_.files.Path("Empty_Zorvel.mdb"));
    ExpectFailure("53 (File not found)", 5);
    folder_.folder.Write("Empty_Zorvel.mdb", std::string(4096, 'x'));
    ExpectFailure("-2147467259 (file is not a database)", 6);
    EXPECT_TRUE(folder_.catalogue->List().empty());
}

TEST_F(FailingImport, LeavesADatasetAloneThatAnotherProgramUses) {
    ASSERT_EQ(folder_.RunImport(), ImportResult::kDone);
    Database other = folder_.Open(folder_.dataset);
    other.ExecuteScript("BEGIN; SELECT count(*) FROM Zorvel_Apps");
    Rows reading = other.Query("SELECT * FROM Zorvel_Apps");
    ASSERT_TRUE(reading.Next());
    Overwrite();
    ExpectFailure("-2147467259 (database is locked)", 4);
    EXPECT_EQ(folder_.catalogue->List().size(), 1U);
    EXPECT_EQ(reading.Text("AppName"), "Word");
}

TEST_F(FailingImport, FailsAtTheCatalogueWhileAnotherProgramWritesIt) {
    Database other = folder_.Open("ZorvelMaster.mdb");
    other.ExecuteScript("BEGIN IMMEDIATE");
    ExpectFailure("-2147467259 (database is locked)", 7);
}

}  // namespace
}  // namespace zorvel
