// Whole runs over small trees.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/analysis_run.h"
#include "browser/tree_refresh.h"
#include "directory/open_directory.h"
#include "stream_builder.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/faulty_directory.h"
#include "support/program_folder.h"

namespace zorvel::test {

// An application that has nothing to complain about, described by an attribute.
inline std::string Healthy(const std::string& description) {
    return description + ": d\naCL: 3#entry#cn=Bob,o=SITE#[All Attributes Rights]\n" +
           StreamLine("appAdministratorNotes", "n");
}
inline const std::string kHealthy = Healthy("appDescription");
inline const std::string kBob = "dn: cn=Bob,o=SITE\nobjectClass: inetOrgPerson\ncn: Bob\n\n";

// Notes what a Find run asks of its search.
class FakeFindRun final : public FindRun {
  public:
    std::vector<std::string> calls;
    bool results_lost = false;
    std::int32_t stream_error = 0;
    void Start() override { calls.emplace_back("start"); }
    void BeginStream(std::string_view name, std::string_view full_name, std::string_view label) override {
        calls.push_back(std::string(name) + " " + std::string(full_name) + " " + std::string(label));
    }
    void EndStream() noexcept override { calls.emplace_back("end"); }
    void Finish() override {
        calls.emplace_back("finish");
        if (results_lost) throw OutputError(Error(errors::kDiskFull));
    }
    bool MatchesStream(std::string_view stream) override {
        if (stream_error != 0) throw Error(stream_error);
        return stream.find("findme") != std::string_view::npos;
    }
    void Find(char kind, std::string_view text) override {
        calls.push_back(std::string(1, kind) + " " + std::string(text));
    }
};

class Run : public testing::Test {
  protected:
    // Makes the tree T1 of `ldif`, loads it and selects every application.
    void Load(const std::string& ldif) {
        FillProgramFolder(shell_.folder, LdifOrganization("SITE") + kBob + ldif);
        directory_.NWCallsInit();
        directory_.NWDSCreateContextHandle(context_handle_);
        FakeOUViewDisplay display;
        ASSERT_TRUE(TreeRefresh(shell_.services, directory_, lists_, display, 0).RefreshOUView("T1", true));
        for (AppRecord& application : lists_.AppList)
            lists_.Select(application, true);
        slots_.Fill();
        shell_.clock.slept = 0;
        shell_.ui.statuses.clear();
    }
    void LoadApplication(const std::string& attributes) {
        Load(LdifApplication("Word", "o=SITE", attributes));
    }

    RunOutcome Go(FindRun* find = nullptr) {
        const RunInputs inputs{shell_.services,
                               directory_,
                               lists_,
                               rules_,
                               slots_,
                               context_handle_,
                               display_,
                               {},
                               [this](const std::string& path) { return shell_.files.Exists(path); }};
        AnalysisRun run(inputs, find);
        const RunOutcome outcome = run.Run();
        import_wanted_ = run.import_wanted();
        return outcome;
    }

    std::string Data(const std::string& name) const {
        return shell_.folder.Read("TempData/Zorvel_" + name + ".CSV");
    }
    // The issues as "application|type|target|source|code".
    std::vector<std::string> Issues() const {
        std::vector<std::string> issues;
        DataFileReader reader(shell_.files, data_files::kIssues);
        for (std::vector<std::string> r; reader.Next(r);) {
            issues.push_back(r[0] + "|" + r[1] + "|" + r[2] + "|" + r[3] + "|" + r[4]);
        }
        return issues;
    }
    std::string Capture() const { return Data("CaptureDetails"); }

    TestShell shell_;
    FaultyDirectory directory_{OpenDirectory(shell_.files, shell_.log)};
    TreeLists lists_;
    RuleLists rules_;
    AppIssueSlots slots_;
    std::uint32_t context_handle_ = 0;
    FakeRunDisplay display_;
    bool import_wanted_ = false;
};

}  // namespace zorvel::test
