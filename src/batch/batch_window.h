// The face of an unattended run: messages and progress on standard error, answers from the command line.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "controller/main_window.h"
#include "database/import.h"
#include "platform/user_interface.h"

namespace zorvel {

// The ways in which an unattended run deals with its surroundings.
struct BatchManners {
    bool yes = false;            // questions are answered Yes instead of with their default button
    bool show_progress = false;  // standard error is a terminal
};

class BatchWindow final : public UserInterface, public MainWindow, public ImportDisplay {
  public:
    // Results go to `out`, messages and progress to `err`; both get UTF-8.
    BatchWindow(std::ostream& out, std::ostream& err, BatchManners manners);

    // The closing offer of a run is answered by this.
    bool import_wanted = false;
    // Called once, from ProcessEvents, after the user interrupted the program.
    std::function<void()> on_interrupt;
    // Tells the window of an interruption; safe to call from a signal handler.
    static void Interrupt();
    // True when the program was interrupted since the window was made.
    bool interrupted() const;

    // Writes a line of results, which is UTF-8 already.
    void PrintLine(std::string_view line);
    // Writes a reason for failure to standard error.
    void Fail(std::string_view reason);

    Answer Show(const MessageBox& box) override;
    void ShowStatus(StatusPicture picture, std::string_view text) override;
    void PlaySound(std::string_view path) override;
    void OpenDocument(std::string_view address) override;
    void EditTextFile(std::string_view path) override;
    void ProcessEvents() override;

    std::optional<std::string> AskPassword(std::string_view tree, std::string_view identity) override;
    bool OfferImport(const std::string& summary, const std::string& question) override;
    void ShowCurrentApplication(std::string_view count, std::string_view name) override;
    void ShowSelectedCount(std::string_view text) override;
    void Status(std::string_view application, std::string_view section, std::string_view activity,
                std::string_view count) override;

  private:
    bool ProgressIsDue();
    void ShowProgress(const std::string& line);
    void ClearProgress();

    std::ostream& out_;
    std::ostream& err_;
    BatchManners manners_;
    std::string progress_prefix_;  // which application of how many
    std::string selected_count_;
    bool progress_shown_ = false;
    bool interrupt_passed_on_ = false;
    std::chrono::steady_clock::time_point last_progress_;
};

}  // namespace zorvel
