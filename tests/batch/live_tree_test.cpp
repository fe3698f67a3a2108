// What zorvel-batch makes of a tree that a server holds is what it makes of the tree's export.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <thread>

#include "batch/batch_run.h"
#include "support/databases.h"
#include "support/served_sample.h"
#include "support/slapd.h"
#include "support/slow_proxy.h"

namespace zorvel::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

// A program folder whose only tree is `name`; `source` says where it comes from.
struct Folder : TempFolder {
    Folder(const std::string& name, const std::string& source, const std::string& ldif = {}) {
        FillWholeProgramFolder(*this, ldif);
        Write("Directory.toml", "[[tree]]\nname = \"" + name + "\"\n" + source + "\n");
    }
};

// The data files and caches that a run leaves, without what tells its time.
std::map<std::string, std::string> FilesOfRun(const TempFolder& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path() / "TempData")) {
        std::string content = ReadFile(entry.path());
        const std::string name = entry.path().filename();
        if (name == "Zorvel_CaptureDetails.CSV") content.erase(0, content.find(','));
        if (!name.ends_with(".CacheMark")) files.emplace(name, std::move(content));
    }
    return files;
}

// The names of the files in which two runs differ.
std::vector<std::string> Differing(const std::map<std::string, std::string>& expected,
                                   const std::map<std::string, std::string>& found) {
    std::vector<std::string> names;
    for (const auto& [name, content] : expected) {
        if (found.count(name) == 0 || found.at(name) != content) names.push_back(name);
    }
    if (names.empty() && found.size() != expected.size()) names.emplace_back("more files than expected");
    return names;
}

BatchResult Analyse(const TempFolder& folder) {
    return RunBatch(folder, {"--yes", "analyse", "--all", "--refresh", "--pace", "0"});
}

class LiveTree : public testing::TestWithParam<std::string> {};

TEST_P(LiveTree, GivesTheBytesAndTheHitsOfItsExport) {
    const std::string& name = GetParam();
    const std::string served = ServedSample(name);
    const Slapd server(served);
    const Folder exported(name, "ldif = \"Trees/T1.ldif\"", served);
    const Folder live(name, "ldap = [\"" + server.url() + "\"]");
    ASSERT_EQ(Analyse(exported).status, 0);
    const std::map<std::string, std::string> expected = FilesOfRun(exported);
    EXPECT_GE(expected.size(), 13U);
    ASSERT_EQ(Analyse(live).status, 0);
    EXPECT_THAT(Differing(expected, FilesOfRun(live)), IsEmpty());
    for (const std::string search : {".exe", "corp", "\\\\"}) {
        const std::vector<std::string> find = {"--yes", "find", search, "--all", "--pace", "0"};
        const BatchResult hits = RunBatch(exported, find);
        EXPECT_NE(hits.out, "");
        EXPECT_TRUE(RunBatch(live, find).out == hits.out) << search;
    }

    const std::string file = (live.path() / "Trees/saved.ldif").string();
    const BatchResult saved = RunBatch(live, {"export-ldif", "--tree", name, "--output", file});
    EXPECT_EQ(saved.status, 0) << saved.err;
    EXPECT_THAT(saved.out, testing::StartsWith(name + "\t"));
    const Folder offline(name, "ldif = \"" + file + "\"");
    ASSERT_EQ(Analyse(offline).status, 0);
    EXPECT_THAT(Differing(expected, FilesOfRun(offline)), IsEmpty());
    EXPECT_EQ(RunBatch(live, {"export-ldif", "--tree", "NONE", "--output", file}).status, 1);
}
INSTANTIATE_TEST_SUITE_P(Sample, LiveTree, testing::Values("CORP_TREE", "LAB_TREE"));

TEST(LiveRun, EndsWithTheServerAndWorksWithItAgain) {
    Slapd server(ServedSample("CORP_TREE"));
    SlowProxy proxy(server.folder().path() / "socket");
    const Folder folder("CORP_TREE", "ldap = [\"" + proxy.url() + "\"]\nconnect_timeout = 2");
    ASSERT_EQ(Analyse(folder).status, 0);
    const std::map<std::string, std::string> whole = FilesOfRun(folder);

    proxy.delay = std::chrono::milliseconds(5);
    std::jthread stopping([&](const std::stop_token& given_up) {
        const std::filesystem::path record = folder.path() / "TempData/Zorvel_CaptureDetails.CSV";
        while (std::filesystem::exists(record) && !given_up.stop_requested())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        server.Stop();
    });
    const BatchResult ended = RunBatch(folder, {"--yes", "analyse", "--all", "--pace", "0"});
    stopping.join();
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("The directory could not be read"));
    EXPECT_THAT(folder.Read("Zorvel.log"), HasSubstr("check"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "TempData/Zorvel_CaptureDetails.CSV"));

    proxy.delay = std::chrono::milliseconds(0);
    server.Start();
    EXPECT_EQ(Analyse(folder).status, 0);
    EXPECT_THAT(Differing(whole, FilesOfRun(folder)), IsEmpty());
}

}  // namespace
}  // namespace zorvel::test
