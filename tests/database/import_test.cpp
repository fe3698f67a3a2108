// The import of a run: what the dataset then holds, and what the user and the log are told.
#include "database/import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "database/dataset_folder.h"
#include "database/import_record.h"

namespace zorvel {
namespace {

using test::Records;
using testing::ElementsAre;
using Lines = std::vector<std::string>;

constexpr const char* kWord = "Word.APPS.SITE";
constexpr const char* kReader = R"(Reader 7\.0.O'Brien.SITE)";

class ImportedRun : public testing::Test {
  protected:
    void SetUp() override {
        folder_.Write(data_files::kAppDetails, {{kWord, "App:Caption", "Word for everybody"},
                                                {kReader, "App:Path", R"(C:\It's\READ.EXE)"},
                                                {kReader, "App:Icon Order", "17"}});
    }
    void Import() {
        ASSERT_EQ(folder_.RunImport(), ImportResult::kDone) << folder_.OnlyBox();
        folder_.ui.boxes.clear();
    }
    test::DatasetFolder folder_;
};

TEST_F(ImportedRun, HoldsOneRowForEachApplication) {
    Import();
    EXPECT_THAT(folder_.Table("Zorvel_Apps",
                              "AppUniqueRef, AppName, AppOU, AppCaption, AppIconOrder, typeof(AppIconOrder)"),
                ElementsAre("1|Word|APPS.SITE|Word for everybody|0|integer",
                            "2|Reader 7.0|O'Brien.SITE||17|integer"));
    EXPECT_THAT(folder_.Table("Zorvel_AppDetails", "AppUniqueRef, Attribute, Data"),
                ElementsAre(R"(2|App:Path|C:\It's\READ.EXE)"));
    EXPECT_THAT(folder_.Table("Zorvel_Settings", "Setting, [Value]"), ElementsAre("NextAppUniqueRef|2"));
}

TEST_F(ImportedRun, TurnsAttributesIntoColumns) {
    folder_.Write(data_files::kAppDetails,
                  {{kWord, "app:caption", std::string(99, 'c') + "'tail"},
                   {kWord, "APP:ICON ORDER", "-1"},
                   {kWord, "App:Flags", "&h805"},
                   {kWord, "App:Default Association Flags", "9"},
                   {"Notepad", "App:Flags", "8"},
                   {"Notepad", "App:Default Association Flags", "0"},
                   {"Notepad", "App:Caption", std::string(120, 'n')},
                   {"Notepad", "Description", "line one\nline two, with \"all\"; of 'it'"}});
    Import();
    EXPECT_THAT(folder_.Table("Zorvel_Apps",
                              "AppName, AppOU, AppCaption, AppIconOrder, AFRebootType, AFRunOption, "
                              "AFDisconnectable, DAFDesktop, DAFAppLaunch"),
                ElementsAre("Word|APPS.SITE|" + std::string(99, 'c') + "|-1|Never|Minimized|1|1|1",
                            "Notepad|Notepad|" + std::string(100, 'n') + "|0|If Needed|Normal|1|0|0"));
    EXPECT_THAT(folder_.Table("Zorvel_AppDetails", "AppUniqueRef, Attribute, Data"),
                ElementsAre("2|Description|line one\nline two, with \"all\"; of 'it'"));
}

TEST_F(ImportedRun, KeepsTheRowOfAnApplicationThatIsMetAgain) {
    const std::string long_name(120, 'L');
    folder_.Write(data_files::kAppDetails, {{kWord, "A", "1"},
                                            {kReader, "B", "2"},
                                            {kWord, "C", "3"},
                                            {long_name + "1.X", "D", "4"},
                                            {long_name + "2.X", "E", "5"}});
    Import();
    EXPECT_EQ(folder_.Table("Zorvel_Apps", "AppUniqueRef").size(), 3U);
    EXPECT_THAT(folder_.Table("Zorvel_AppDetails", "AppUniqueRef, Attribute"),
                ElementsAre("1|A", "2|B", "1|C", "3|D", "3|E"));
}

TEST_F(ImportedRun, HoldsEveryRecordCutToItsColumns) {
    const std::string text(300, 't');
    folder_.Write(data_files::kMacros,
                  {{kWord, text, text, " 12.5 MB", text}, {kReader, "M", "it's", "", ""}});
    folder_.Write(data_files::kIssues,
                  {{kReader, text, text, text, text}, {kReader, "File", "a'b", "", "FILEOLD"}});
    folder_.Write(data_files::kCopyFiles, {{kWord, text, text, text}});
    folder_.Write(data_files::kCopyFilesAlways, {{kReader, "T", "S", "Copy Always"}});
    folder_.Write(data_files::kINISettings, {{kWord, text, text, text, text, text}});
    folder_.Write(data_files::kINISettingsAlways, {{kReader, "a", "b", "c", "d", "[ITEM DELETED]"}});
    folder_.Write(data_files::kRegistrySettings,
                  {{kWord, text, text, text, text}, {kReader, "K", "name", "data", "Create"}});
    folder_.Write(data_files::kRegistrySettingsAlways, {{kReader, "K2", "", "", "Delete"}});
    folder_.Write(data_files::kAppAssociations, {{kWord, "G1\nG2", "say \"OU\", twice", "", " 12", text},
                                                 {kReader, "", "", "", "-3", "0"}});
    folder_.Write(data_files::kAssociations, {{kWord, "O'USER.SITE", "G1", "Group"}});
    Import();
    const auto cut = [&](std::size_t length) { return text.substr(0, length) + "|"; };
    EXPECT_THAT(
        folder_.Table("Zorvel_Macros", "AppUniqueRef, Macro, [Value], MinSpace, Prompt, typeof(MinSpace)"),
        ElementsAre("1|" + cut(60) + cut(255) + "13|" + cut(255) + "integer", "2|M|it's|0||integer"));
    EXPECT_THAT(
        folder_.Table("Zorvel_Issues", "AppUniqueRef, EntryType, TargetFile, SourceFile, IssueCode, 0"),
        ElementsAre("2|" + cut(20) + cut(255) + cut(255) + cut(15) + "0", "2|File|a'b||FILEOLD|0"));
    EXPECT_THAT(folder_.Table("Zorvel_CopyFiles", "AppUniqueRef, Target, Source, CopyMode, 0"),
                ElementsAre("1|" + cut(255) + cut(255) + cut(50) + "0", "2|T|S|Copy Always|0"));
    EXPECT_THAT(
        folder_.Table("Zorvel_INISettings", "AppUniqueRef, Data, [Section], [Value], Target, Notes, 0"),
        ElementsAre("1|" + cut(100) + cut(100) + cut(100) + cut(250) + cut(300) + "0",
                    "2|a|b|c|d|[ITEM DELETED]|0"));
    EXPECT_THAT(folder_.Table("Zorvel_RegistrySettings", "AppUniqueRef, [Key], Data, [Value], Mode, 0"),
                ElementsAre("1|" + cut(255) + cut(255) + cut(300) + cut(50) + "0", "2|K|name|data|Create|0",
                            "2|K2|||Delete|0"));
    EXPECT_THAT(
        folder_.Table("Zorvel_AppAssociations",
                      "AppUniqueRef, AssocByGroup, AssocByOU, AssocByWS, TotAssociations, AppFingerPrint, 0"),
        ElementsAre("1|G1\nG2|say \"OU\", twice||12|" + cut(70) + "0", "2||||-3|0|0"));
    EXPECT_THAT(
        folder_.Table("Zorvel_Associations", "AppUniqueRef, FullUserID, FullAssociation, AssociationType"),
        ElementsAre("1|O'USER.SITE|G1|Group"));
    Rows check = folder_.Open(folder_.dataset).Query("PRAGMA integrity_check");
    ASSERT_TRUE(check.Next());
    EXPECT_EQ(check.Text("integrity_check"), "ok");
    EXPECT_EQ(folder_.files.List(folder_.files.Path("Databases"), "", "").size(), 2U)
        << "files are left behind";
}

TEST_F(ImportedRun, IsLoggedFileByFile) {
    Import();
    const std::string folder = folder_.files.ProgramFolder();
    Lines expected = {
        "    Data Import: Creating fresh database ('Zorvel_261116172805.MDB') to import data into",
        "    Physically copying empty DB ('" + folder + R"(\Empty_Zorvel.mdb') to import DB (')" + folder +
            R"(\Databases\Zorvel_261116172805.MDB'))",
        "    Opening newly created DB...",
        "    Inserting Capture Details into DB...",
    };
    const std::vector<std::pair<std::string, std::string>> files = {
        {"AppDetails", "Apps"},
        {"Macros", "Macros"},
        {"Issues", "Issues"},
        {"CopyFiles", "File"},
        {"CopyFilesAlways", "File"},
        {"INISettings", "INI"},
        {"INISettingsAlways", "INI"},
        {"RegistrySettings", "Registry Settings"},
        {"RegistrySettingsAlways", "Registry Settings"},
        {"AppAssociations", "AppAssociations"},
        {"Associations", "Associations"},
    };
    const std::string importing = "    Importing " + folder + R"(\TempData\Zorvel_)";
    for (const auto& [name, timing] : files) {
        expected.push_back(importing + name + ".CSV...");
        expected.push_back("    " + timing + " import took: 0.00 second(s)");
    }
    expected.emplace_back("    Successfully finished import into DB - took 0.00 second(s)");
    EXPECT_EQ(folder_.LogLines(), expected);
}

TEST_F(ImportedRun, ShowsItsProgress) {
    Records macros;
    for (int i = 1; i <= 250; ++i)
        macros.push_back({kWord, "M" + std::to_string(i), "", "", ""});
    folder_.Write(data_files::kMacros, macros);
    folder_.Write(data_files::kCopyFiles, Records(99, {kReader, "plain", "", ""}));
    folder_.Write(data_files::kCopyFilesAlways, Records(901, {kReader, "always", "", ""}));
    folder_.Write(data_files::kAppAssociations, Records(100, {kWord, "", "", "", "0", ""}));
    int events = 0;
    folder_.ui.on_events = [&] { ++events; };
    Import();

    Lines expected = {
        "frame",
        "bar 0 of 8",
        "|Initialization:|Creating fresh Zorvel database to receive import data ...|",
        "bar 1 of 8",
        "|Setup:|Adding capture details..|",
        "bar 2 of 8",
        "|Apps:|Adding application attributes to database..|",
        "bar 3 of 8",
        "|Macros:|Adding application macros to database..|",
        "Word.APPS.SITE|Macros:|Adding:M100 ...|100 entries",
        "Word.APPS.SITE|Macros:|Adding:M200 ...|200 entries",
        "bar 4 of 8",
        "|Issues:|Adding applications issues to database..|",
        "bar 5 of 8",
        "|Files:|Adding application files to database..|",
        "|Files:|Adding application files to database..|",
    };
    for (int i = 100; i < 1000; i += 100) {
        expected.push_back(std::string(kReader) + "|Files:|Adding:always ...|" + std::to_string(i) +
                           " entries");
    }
    const Lines rest = {
        std::string(kReader) + "|Files:|Adding:always ...|1,000 entries",
        "bar 6 of 8",
        "|INI:|Adding application INI files to database..|",
        "|INI:|Adding application INI files to database..|",
        "bar 7 of 8",
        "|Registry:|Adding application registry entries to database..|",
        "|Registry:|Adding application registry entries to database..|",
        "bar 8 of 8",
        "|App Assoc:|Adding application Group associations to database..|",
        "Word.APPS.SITE|App Assoc:|Adding:Word.APPS.SITE ...|",
        "|App Assoc:|Adding user associations to database..|",
    };
    expected.insert(expected.end(), rest.begin(), rest.end());
    EXPECT_EQ(folder_.display.shown, expected);
    EXPECT_EQ(events, std::count_if(expected.begin(), expected.end(), [](const std::string& text) {
                  return text.find('|') != std::string::npos;
              }));
}

TEST_F(ImportedRun, EndsWithASoundAndAMessage) {
    folder_.folder.Write("done.wav", "x");
    folder_.options.session.SoundsEnabled = true;
    folder_.options.session.FinishedSound = "done";
    ASSERT_EQ(folder_.RunImport(), ImportResult::kDone);
    EXPECT_THAT(folder_.ui.sounds, ElementsAre(folder_.files.Path("done.WAV")));
    EXPECT_EQ(folder_.ui.boxes.at(0).icon, MessageIcon::kInformation);
    EXPECT_EQ(folder_.OnlyBox(),
              "Captured data from the last Zorvelrun has been successfully imported into the Zorvel database "
              "- you can now generate reports against the Zorvelrun!");
}

TEST_F(ImportedRun, StaysWhenTheUserDoesNotWantItOverwritten) {
    Import();
    folder_.Write(data_files::kAppDetails, {});
    const std::size_t logged = folder_.LogLines().size();
    EXPECT_EQ(folder_.RunImport(), ImportResult::kAbandoned);
    ASSERT_EQ(folder_.ui.boxes.size(), 2U);
    EXPECT_EQ(folder_.ui.boxes[0].text,
              "The last Zorvelrun data already appears to have been imported into a database. Do you really "
              "want to overwrite the existing database?");
    EXPECT_EQ(folder_.ui.boxes[0].icon, MessageIcon::kQuestion);
    EXPECT_EQ(folder_.ui.boxes[0].default_answer, Answer::kNo);
    EXPECT_EQ(folder_.ui.boxes[1].text, "Last Zorvelrun data will not be imported ...");
    EXPECT_EQ(folder_.ui.boxes[1].icon, MessageIcon::kInformation);
    EXPECT_EQ(folder_.LogLines().back(),
              "    Data already appears to have been imported, user choose to abandon import");
    EXPECT_EQ(folder_.LogLines().size(), logged + 2);
    EXPECT_EQ(folder_.Table("Zorvel_Apps", "AppName").size(), 2U);
    EXPECT_EQ(folder_.catalogue->List().size(), 1U);
}

TEST_F(ImportedRun, SaysThatItWasCompletedAndWhatItHolds) {
    Import();
    EXPECT_TRUE(IsImportCompleted(folder_.Open(folder_.dataset)));
    EXPECT_THAT(folder_.Table("Zorvel_Import",
                              "Run, Tree, OU, Description, AppCount, CountIssues, Begun, Completed, Apps, "
                              "AppDetails, Associations"),
                ElementsAre("2026-11-16 17:28:05|CORP_TREE|APPS.SITE|O'Brien's run|1234|6|2026-11-16 "
                            "17:28:05|2026-11-16 17:28:05|2|1|0"));
}

TEST_F(ImportedRun, IsLeftAloneWhenAFileForASecondImportIsMissing) {
    Import();
    const std::string before = folder_.folder.Read("Databases/" + folder_.dataset);
    std::vector<std::string> needed = {"Empty_Zorvel.mdb"};
    for (const DataFile& file : test::DatasetFolder::AllFiles())
        needed.emplace_back(file.name);
    for (const std::string& name : needed) {
        const std::string path = folder_.files.Path(name);
        folder_.files.Rename(path, path + ".kept");
        folder_.ui.answers = {Answer::kYes};
        EXPECT_EQ(folder_.RunImport(), ImportResult::kFailed) << name;
        EXPECT_EQ(folder_.ui.boxes.back().text,
                  "Error no. 53 (File not found) occurred during Import at Line 4");
        folder_.files.Rename(path + ".kept", path);
    }
    EXPECT_EQ(folder_.folder.Read("Databases/" + folder_.dataset), before);
    EXPECT_EQ(folder_.files.List(folder_.files.Path("Databases"), "", "").size(), 2U);
    EXPECT_EQ(folder_.catalogue->List().size(), 1U);
}

TEST_F(ImportedRun, StaysAsideUntilANewImportIsCompleted) {
    Import();
    const std::string whole = folder_.folder.Read("Databases/" + folder_.dataset);
    const std::string aside = "Databases/" + folder_.dataset + ".previous";
    for (int attempt = 0; attempt < 2; ++attempt) {
        folder_.Write(data_files::kMacros, {{"Unknown.APPS", "M", "", "", ""}});
        folder_.ui.answers = {Answer::kYes};
        EXPECT_EQ(folder_.RunImport(), ImportResult::kFailed);
        EXPECT_FALSE(IsImportCompleted(folder_.Open(folder_.dataset)));
        EXPECT_EQ(folder_.folder.Read(aside), whole) << attempt;
    }
    folder_.Write(data_files::kMacros, {});
    folder_.ui.answers = {Answer::kYes};
    Import();
    EXPECT_TRUE(IsImportCompleted(folder_.Open(folder_.dataset)));
    EXPECT_FALSE(folder_.folder.Has(aside));
}

TEST_F(ImportedRun, IsReplacedByASecondImportThatAddsACatalogueRow) {
    Import();
    folder_.Write(data_files::kAppDetails, {{"Other.APPS", "A", "B"}});
    folder_.ui.answers = {Answer::kYes};
    Import();
    EXPECT_THAT(folder_.Table("Zorvel_Apps", "AppUniqueRef, AppName"), ElementsAre("1|Other"));
    EXPECT_EQ(folder_.catalogue->List().size(), 2U);
    EXPECT_THAT(folder_.LogLines(),
                testing::Contains(
                    "    Data already appears to have been imported, user chooses to over-write database"));
}

}  // namespace
}  // namespace zorvel
