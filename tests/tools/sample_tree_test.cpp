// Sample trees as files, and their containers as the program reads them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "directory/ldif_reader.h"
#include "platform/error.h"
#include "sample_flaws.h"
#include "sample_support.h"

namespace zorvel::test {
namespace {

using ::testing::Contains;
using ::testing::StartsWith;

std::string ReadShipped(const std::string& name) {
    return ReadFile(Shipped(name));
}

TEST(ShippedTrees, AreWhatTheDocumentedCommandsMake) {
    EXPECT_TRUE(SampleTree({"CORP_TREE", 1, 60, 150, 40}) == ReadShipped("Trees/CORP_TREE.ldif"))
        << "make it again as docs/sample-trees.md says";
    EXPECT_TRUE(SampleTree({"LAB_TREE", 2, 8, 15, 40}) == ReadShipped("Trees/LAB_TREE.ldif"))
        << "make it again as docs/sample-trees.md says";
}

TEST(SampleTree, IsAsciiInFoldedLines) {
    std::istringstream text(ReadShipped("Trees/CORP_TREE.ldif"));
    for (std::string line; std::getline(text, line);) {
        ASSERT_TRUE(line.size() <= 76 || line.front() == '#') << line;
        ASSERT_TRUE(std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; }))
            << line;
    }
}

TEST(SampleTree, HoldsNoValueTwiceInAnAttributeOfAnObject) {
    const TempFolder folder;
    folder.Write("Large.ldif", SampleTree({"T", 3, 60, 1500, 4}));
    for (const std::filesystem::path& path :
         {Shipped("Trees/CORP_TREE.ldif"), Shipped("Trees/LAB_TREE.ldif"), folder.path() / "Large.ldif"}) {
        LdifReader reader(InputFile(path, path.filename()));
        std::size_t values = 0;
        while (reader.NextRecord()) {
            std::set<std::pair<std::string, std::string>> held;
            for (LdifAttribute line; reader.NextAttribute(line); ++values)
                EXPECT_TRUE(held.emplace(line.name, line.value).second) << reader.dn() << ": " << line.value;
        }
        EXPECT_GT(values, 500U) << path;
    }
}

TEST(SampleTree, ChangesWithItsSeed) {
    EXPECT_NE(SampleTree({"T", 1, 10, 10, 10}), SampleTree({"T", 2, 10, 10, 10}));
}

TEST(SampleTree, NeedsAContainerAndAName) {
    EXPECT_THROW(SampleTree({"T", 1, 0, 10, 10}), Error);
    EXPECT_THROW(SampleTree({"_TREE", 1, 1, 10, 10}), Error);
}

TEST(SampleTree, HasAsManyContainersAndApplicationsAsAskedFor) {
    SampleFolder folder;
    folder.folder.Write("Directory.toml", "[[tree]]\nname = \"T\"\nldif = \"t.ldif\"\n");
    for (const auto& [containers, applications] : std::vector<std::pair<std::size_t, std::size_t>>{
             {1, 0}, {1, 60}, {2, 9}, {3, 7}, {8, 15}, {39, 3}, {40, 2}, {40, 100}, {73, 500}, {1000, 300}}) {
        folder.folder.Write("t.ldif", SampleTree({"T", 7, containers, applications, 0}));
        ASSERT_EQ(folder.Run({"containers", "--refresh"}), kDone);
        const std::vector<std::string> lines = folder.OutputLines();
        std::size_t sum = 0;
        for (const std::string& line : lines)
            sum += std::stoul(line.substr(line.find('\t') + 1));
        EXPECT_EQ(lines.size(), containers + 1) << "with the root";
        EXPECT_EQ(sum, applications) << containers << " containers";
    }
}

TEST(SampleTree, HasAddressesUnlessTheyAreLeftOut) {
    SampleFolder folder;
    folder.folder.Write("Directory.toml", "[[tree]]\nname = \"T\"\nldif = \"t.ldif\"\n");
    for (const bool addresses : {true, false}) {
        folder.folder.Write("t.ldif", SampleTree({"T", 3, 10, 60, 40, addresses}));
        for (const char* search : {"IP Addresses", "Web Addresses"}) {
            ASSERT_EQ(folder.Run({"--yes", "find", "--preset", search, "--all", "--refresh", "--pace", "0"}),
                      kDone);
            EXPECT_EQ(folder.out == "Total of 0 match(es) found\n", !addresses) << search << folder.out;
        }
    }
}

TEST(SampleTree, HasEveryKindOfContainer) {
    SampleFolder folder;
    ASSERT_EQ(folder.Run({"containers"}), kDone);
    const std::vector<std::string> lines = folder.OutputLines();
    const std::string tree = R"(NDS:\\CORP_TREE\)";
    for (const char* path :
         {"NORTH\t", "SOUTH\\", "SE\t", "SE\\G\303\266teborg\t1", "CORP\\ARCHIVE\t1",
          "CORP\\MALM\303\226\\HR\t", "CORP\\LEEDS\\PRODUCTION\\LINE-A\\PACKING\\SHIFT-2\t1"}) {
        EXPECT_THAT(lines, Contains(StartsWith(tree + path)));
    }
    // The archive is part of names only, and aliases are no containers.
    EXPECT_EQ(ReadShipped("Trees/CORP_TREE.ldif").find("\ndn: ou=ARCHIVE"), std::string::npos);
    EXPECT_THAT(lines, Not(Contains(StartsWith(tree + "CORP\\SOFTWARE"))));
    EXPECT_NE(ReadShipped("Trees/CORP_TREE.ldif").find("\ndn: ou=SOFTWARE,o=CORP\nobjectClass: alias\n"),
              std::string::npos);
}

TEST(FlawDealer, GivesSixtyApplicationsEveryFlawAndLeavesAQuarterAlone) {
    for (const std::size_t applications : {60U, 61U, 97U, 150U, 1000U, 10000U}) {
        const tools::FlawDealer dealer(applications);
        std::set<tools::Flaw> dealt;
        std::size_t clean = 0;
        for (std::size_t i = 0; i < applications; ++i) {
            const std::vector<tools::Flaw> flaws = dealer.FlawsOf(i);
            dealt.insert(flaws.begin(), flaws.end());
            clean += flaws.empty() ? 1U : 0U;
        }
        EXPECT_EQ(dealt.size(), tools::FlawCount()) << applications;
        EXPECT_EQ(clean, applications / 4) << applications;
    }
}

}  // namespace
}  // namespace zorvel::test
