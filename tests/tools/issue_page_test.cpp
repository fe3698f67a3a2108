// docs/issues.md says what the catalogue of issues says.
#include <gtest/gtest.h>

#include "issue_page.h"
#include "issues/issue_catalogue.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

TEST(IssuePage, SaysWhatTheCatalogueSays) {
    EXPECT_EQ(test::ReadFile(ZORVEL_SOURCE_DIR "/docs/issues.md"), tools::IssuePage()) << "run ./dev docs";
}

TEST(IssueCatalogue, PutsKnownAndUnknownCodesWhereTheirBeginningSays) {
    for (const IssueDescription& issue : IssueCatalogue()) {
        // Of the known ones two are an application's in spite of theirs.
        if (issue.issue == Issue::kNoAssociations || issue.issue == Issue::kInvalidName) continue;
        EXPECT_EQ(CategoryOf(std::string(issue.code) + "X"), issue.category) << issue.code;
    }
    EXPECT_EQ(CategoryOf("APPNOASSOC"), IssueCategory::kMiscellaneous);
    EXPECT_EQ(CategoryOf("INVALIDAN"), IssueCategory::kBestPractices);
    EXPECT_EQ(CategoryOf("OWNCODE"), IssueCategory::kMiscellaneous);
}

}  // namespace
}  // namespace zorvel
