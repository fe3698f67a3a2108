#include "batch/batch_window.h"

#include <csignal>
#include <utility>

#include "batch/field.h"
#include "batch/terminal_password.h"

namespace zorvel {
namespace {

constexpr std::chrono::milliseconds kProgressInterval{100};
constexpr std::size_t kProgressWidth = 100;

// Set by the signal handler; signals reach a process, not an object.
volatile std::sig_atomic_t interrupt_count = 0;

}  // namespace

BatchWindow::BatchWindow(std::ostream& out, std::ostream& err, BatchManners manners)
    : out_(out), err_(err), manners_(manners) {
    interrupt_count = 0;
}

void BatchWindow::Interrupt() {
    interrupt_count = 1;
}

bool BatchWindow::interrupted() const {
    return interrupt_count != 0;
}

void BatchWindow::PrintLine(std::string_view line) {
    ClearProgress();
    out_ << line << '\n';
}

void BatchWindow::Fail(std::string_view reason) {
    ClearProgress();
    err_ << "zorvel-batch: " << Message(reason) << std::endl;
}

Answer BatchWindow::Show(const MessageBox& box) {
    ClearProgress();
    err_ << Field(box.title) << ": " << Message(box.text) << std::endl;
    if (box.buttons == Buttons::kOk) return Answer::kOk;
    return manners_.yes ? Answer::kYes : box.default_answer;
}

void BatchWindow::ShowStatus(StatusPicture /*picture*/, std::string_view text) {
    if (ProgressIsDue()) ShowProgress(progress_prefix_ + std::string(text));
}

void BatchWindow::Status(std::string_view /*application*/, std::string_view section,
                         std::string_view activity, std::string_view count) {
    if (!ProgressIsDue()) return;
    std::string line(section);
    for (const std::string_view text : {activity, count}) {
        line += ' ';
        line += text;
    }
    ShowProgress(line);
}

bool BatchWindow::ProgressIsDue() {
    if (!manners_.show_progress) return false;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_progress_ < kProgressInterval) return false;
    last_progress_ = now;
    return true;
}

void BatchWindow::ShowProgress(const std::string& line) {
    err_ << "\r\x1b[K" << Field(std::string_view(line).substr(0, kProgressWidth)) << std::flush;
    progress_shown_ = true;
}

void BatchWindow::ClearProgress() {
    if (std::exchange(progress_shown_, false)) err_ << "\r\x1b[K" << std::flush;
}

void BatchWindow::PlaySound(std::string_view /*path*/) {
    // Nobody is there to hear it.
}

void BatchWindow::OpenDocument(std::string_view address) {
    Fail("see " + std::string(address));
}

void BatchWindow::EditTextFile(std::string_view path) {
    Fail("edit " + std::string(path));
}

void BatchWindow::ProcessEvents() {
    if (!interrupted() || std::exchange(interrupt_passed_on_, true) || !on_interrupt) return;
    on_interrupt();
}

std::optional<std::string> BatchWindow::AskPassword(std::string_view tree, std::string_view identity) {
    ClearProgress();
    return ReadPassword("Password of " + Field(identity) + " in " + Field(tree) + ": ");
}

bool BatchWindow::OfferImport(const std::string& summary, const std::string& /*question*/) {
    ClearProgress();
    out_ << Message(summary) << std::endl;
    return import_wanted;
}

void BatchWindow::ShowSelectedCount(std::string_view text) {
    selected_count_ = text;
}

void BatchWindow::ShowCurrentApplication(std::string_view count, std::string_view /*name*/) {
    progress_prefix_ = std::string(count) + " of " + selected_count_ + ": ";
}

}  // namespace zorvel
