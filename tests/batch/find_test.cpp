// zorvel-batch find as a shell user meets it.
#include <gmock/gmock.h>
#include <regex.h>

#include <algorithm>
#include <sstream>

#include "analysis/data_files.h"
#include "batch/batch_run.h"
#include "find/predefined_searches.h"
#include "platform/files.h"
#include "stream_builder.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

using Result = test::BatchResult;
using testing::HasSubstr;

class BatchFind : public testing::Test {
  protected:
    Result Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--yes", "find", "--pace", "0"});
        return test::RunBatch(folder_, arguments);
    }
    std::string Results() const { return folder_.Read("TempData/Zorvel.$$$"); }

    test::TempFolder folder_;
};

TEST_F(BatchFind, PrintsALineForEachMatchAndTheTotal) {
    using namespace test;
    StreamBuilder files;
    files.FileCopy("s", "c:\\caf\xE9\\www.txt").FileCopy("s", "c:\\a\tb\nwww.txt").FileCopy("s", "none");
    StreamBuilder keys;
    keys.RegistryValue("HKEY_CLASSES_ROOT\\x", "url", "HTTP://site");
    FillProgramFolder(folder_,
                      LdifOrganization("S\xC3\xA9") +
                          LdifApplication("7-Zip", "o=S\xC3\xA9",
                                          StreamLine("appCopyFiles", files.bytes()) +
                                              StreamLine("appRegistrySettingsAlways", keys.bytes())) +
                          LdifApplication("None", "o=S\xC3\xA9"));
    const Result result = Run({"--preset", "web addresses", "--all"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out,
              "7-Zip.S\xC3\xA9\t(Copy Files)\tC:\\CAF\xC3\x89\\WWW.TXT\n"
              "7-Zip.S\xC3\xA9\t(Copy Files)\tC:\\A B WWW.TXT\n"
              "7-Zip.S\xC3\xA9\t(Registry Settings Always)\tHKEY_CLASSES_ROOT\\x  url  HTTP://site\n"
              "Total of 3 match(es) found\n");
    EXPECT_THAT(Results(), HasSubstr("\\plain\\f2\\fs20 7-Zip - (Copy Files)\\par\r\n"
                                     "\\plain\\f2\\fs20\\cf1\\b  C:\\\\CAF\xC9\\\\WWW.TXT\\par\r\n"));
    EXPECT_THAT(folder_.Read("TempData/Zorvel_CaptureDetails.CSV"), HasSubstr(",Find\r\n"));

    for (const char* typed : {"caf\xC3\xA9", "CAF\xC3\x89"}) {
        EXPECT_EQ(Run({typed, "--all"}).out,
                  "7-Zip.S\xC3\xA9\t(Copy Files)\tC:\\CAF\xC3\x89\\WWW.TXT\n"
                  "Total of 1 match(es) found\n");
    }
    const Result nothing = Run({"--all", "--", "-x\xC3\xA9?y"});
    EXPECT_EQ(nothing.status, 0) << nothing.err;
    EXPECT_EQ(nothing.out, "Total of 0 match(es) found\n");
}

TEST_F(BatchFind, WhatCannotBeSearchedForFailsWithItsReason) {
    test::FillProgramFolder(folder_,
                            test::LdifOrganization("SITE") + test::LdifApplication("Word", "o=SITE"));
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* reason;
    };
    for (const Case& c :
         {Case{{"a(b", "--all"}, 1, "Zorvel: Error 5 (Invalid expression at character 4: missing closing"},
          Case{{"\xE6\x97\xA5", "--all"}, 1, "the expression holds a character that the code page"},
          Case{{"x", "--container", "NDS:\\\\T1\\GONE"}, 1, "there is no container 'NDS:\\\\T1\\GONE'"},
          Case{{"--all"}, 2, "an expression or --preset is required"},
          Case{{"  ", "--all"}, 2, "there is nothing to find"},
          Case{{"x", "--preset", "Web Addresses", "--all"}, 2, "excludes"},
          Case{{"--preset", "Phone Numbers", "--all"}, 2, "Phone Numbers not in"},
          Case{{"x"}, 2, "[--all,--container,--selection] is required"}}) {
        const Result result = Run(c.arguments);
        EXPECT_EQ(result.status, c.status) << testing::PrintToString(c.arguments) << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.reason));
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(folder_.Has("TempData/Zorvel.$$$"));
        EXPECT_FALSE(folder_.Has("TempData/Zorvel_Issues.CSV"));
    }
}

TEST_F(BatchFind, AnEntryThatCouldNotBeSearchedIsAFailure) {
    test::FillProgramFolder(
        folder_, test::LdifOrganization("SITE") +
                     test::LdifApplication("Word", "o=SITE",
                                           test::StreamLine("appRegistrySettings",
                                                            StreamBuilder()
                                                                .RegistryKeyCreate(std::string(60, 'A') + "?")
                                                                .RegistryKeyCreate("baa")
                                                                .bytes())));
    const Result result = Run({"(a+)+$", "--all"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Word.SITE\t(Registry Settings)\tBAA\nTotal of 1 match(es) found\n");
    EXPECT_THAT(result.err, HasSubstr("1 entries could not be searched"));
}

// The C library's expressions, which read the predefined ones as the program does.
class ReferenceRegex {
  public:
    explicit ReferenceRegex(std::string_view expression) {
        EXPECT_EQ(regcomp(&compiled_, std::string(expression).c_str(), REG_EXTENDED | REG_ICASE | REG_NOSUB),
                  0);
    }
    ~ReferenceRegex() { regfree(&compiled_); }
    ReferenceRegex(const ReferenceRegex&) = delete;
    ReferenceRegex& operator=(const ReferenceRegex&) = delete;

    bool Matches(const std::string& text) const {
        return regexec(&compiled_, text.c_str(), 0, nullptr, 0) == 0;
    }

  private:
    regex_t compiled_{};
};

// How many of the records of a run's file have an entry that matches `expression`; `text` makes the entry.
template <typename Text>
std::size_t CountMatches(const Files& files, const DataFile& layout, const ReferenceRegex& expression,
                         Text text) {
    std::size_t matches = 0;
    DataFileReader reader(files, layout);
    for (std::vector<std::string> record; reader.Next(record);)
        matches += expression.Matches(text(record)) ? 1 : 0;
    return matches;
}

TEST_F(BatchFind, ThePredefinedSearchesFindWhatAnAnalysisOfTheSampleTreeHolds) {
    test::FillProgramFolder(folder_, test::ReadFile(ZORVEL_SOURCE_DIR "/program/Trees/CORP_TREE.ldif"));
    ASSERT_EQ(test::RunBatch(folder_, {"analyse", "--all", "--pace", "0"}).status, 0);
    const Files files(folder_.path());
    const auto file_text = [](const std::vector<std::string>& r) {
        const bool directory = r[3].find(" Directory") != std::string::npos;
        return directory ? r[2] + "\\" + r[1] : r[1];
    };
    const auto registry_text = [](const std::vector<std::string>& r) {
        return r[1] + "  " + r[2] + "  " + r[3];
    };
    std::vector<std::size_t> expected;
    for (const PredefinedSearch& search : PredefinedSearches) {
        const ReferenceRegex expression(search.expression);
        using namespace data_files;
        expected.push_back(CountMatches(files, kCopyFiles, expression, file_text) +
                           CountMatches(files, kCopyFilesAlways, expression, file_text) +
                           CountMatches(files, kRegistrySettings, expression, registry_text) +
                           CountMatches(files, kRegistrySettingsAlways, expression, registry_text));
    }
    EXPECT_GT(*std::min_element(expected.begin(), expected.end()), 50U);

    for (std::size_t i = 0; i < expected.size(); ++i) {
        const Result result = Run({"--preset", std::string(PredefinedSearches.at(i).name), "--all"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.out,
                    testing::EndsWith("Total of " + std::to_string(expected[i]) + " match(es) found\n"));
        // A heading for each run of lines with one application and stream, a line for each match.
        std::istringstream lines(result.out);
        std::size_t headings = 0;
        std::size_t entries = 0;
        std::string heading;
        for (std::string line; std::getline(lines, line) && line.find('\t') != std::string::npos; ++entries) {
            headings += line.substr(0, line.rfind('\t')) != heading ? 1 : 0;
            heading = line.substr(0, line.rfind('\t'));
        }
        EXPECT_EQ(entries, expected[i]);
        const std::string results = Results();
        EXPECT_EQ(static_cast<std::size_t>(std::count(results.begin(), results.end(), '\n')),
                  8 + headings + entries + 1);
        EXPECT_THAT(results, testing::EndsWith("}\r\n"));
    }
}

}  // namespace
}  // namespace zorvel
