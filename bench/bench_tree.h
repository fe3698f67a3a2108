// A generated tree, and a user and a display that cost nothing, for benchmarks of whole runs.
#pragma once

#include <filesystem>
#include <string_view>

#include "browser/tree_refresh.h"
#include "directory/open_directory.h"
#include "sample_tree_writer.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/program_folder.h"

namespace zorvel {

// A user who is shown much and says nothing.
class SilentUserInterface final : public UserInterface {
  public:
    Answer Show(const MessageBox& box) override {
        return box.buttons == Buttons::kYesNo ? Answer::kYes : Answer::kOk;
    }
    void ShowStatus(StatusPicture /*picture*/, std::string_view /*text*/) override {}
    void PlaySound(std::string_view /*path*/) override {}
    void OpenDocument(std::string_view /*address*/) override {}
    void EditTextFile(std::string_view /*path*/) override {}
    void ProcessEvents() override {}
};

class SilentRunDisplay final : public test::FakeRunDisplay {
  public:
    void ShowStatusCounts(const RunStatus& /*status*/) override {}
    void ShowCurrentApplication(std::string_view /*count*/, std::string_view /*name*/) override {}
    void ShowStreamProgress(double /*value*/) override {}
};

// A program folder over a generated tree, for runs over all of it.
struct Tree {
    test::TestShell shell;
    SystemClock clock;
    SilentUserInterface ui;
    TreeLists lists;
    StatusLine status{ui, lists.counts};
    Services services{shell.files,   clock,          ui,           shell.log, status, shell.sounds,
                      shell.options, shell.activity, shell.writers};
    std::unique_ptr<TreeDirectory> opened = OpenDirectory(shell.files, shell.log);
    TreeDirectory& directory = *opened;
    test::FakeOUViewDisplay display;
    TreeRefresh loader{services, directory, lists, display, 0};
    std::uintmax_t ldif_size = 0;

    Tree(std::size_t containers, std::size_t applications, std::size_t entries) {
        test::FillProgramFolder(shell.folder, "");
        const std::filesystem::path ldif = shell.folder.path() / "Trees/T1.ldif";
        OutputFile out(ldif, ldif.string(), OutputFile::Mode::kTruncate);
        tools::SampleTreeOptions options;
        options.containers = containers;
        options.applications = applications;
        options.entries = entries;
        options.addresses = false;  // for searches that find nothing
        tools::WriteSampleTree(options, out);
        out.Close();
        ldif_size = std::filesystem::file_size(ldif);
        directory.NWCallsInit();
    }
};

}  // namespace zorvel
