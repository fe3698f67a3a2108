// A stand-in for the user, and the services made of it and of a clock that stands still.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/user_interface.h"
#include "shell/services.h"
#include "support/fake_clock.h"
#include "support/temp_folder.h"

namespace zorvel::test {

// Notes all that is shown; answers questions from `answers`, else with their default.
class FakeUserInterface final : public UserInterface {
  public:
    std::vector<MessageBox> boxes;
    std::vector<std::string> statuses;
    StatusPicture picture = StatusPicture::kUnchanged;
    std::vector<std::string> sounds;
    std::vector<std::string> opened;
    std::vector<std::string> edited;
    std::deque<Answer> answers;
    std::function<void()> on_events;

    Answer Show(const MessageBox& box) override {
        boxes.push_back(box);
        if (box.buttons == Buttons::kOk) return Answer::kOk;
        if (answers.empty()) return box.default_answer;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void ShowStatus(StatusPicture new_picture, std::string_view text) override {
        if (new_picture != StatusPicture::kUnchanged) picture = new_picture;
        statuses.emplace_back(text);
    }
    void PlaySound(std::string_view path) override { sounds.emplace_back(path); }
    void OpenDocument(std::string_view address) override { opened.emplace_back(address); }
    void EditTextFile(std::string_view path) override { edited.emplace_back(path); }
    void ProcessEvents() override {
        if (on_events) on_events();
    }
};

// A program folder with the services that work in it; the log is open.
struct TestShell {
    TempFolder folder;
    FakeClock clock;
    FakeUserInterface ui;
    Files files{folder.path()};
    Log log{files, clock};
    TreeCounts counts;
    StatusLine status{ui, counts};
    WriterLock writers{files, clock, ui, log};
    Options options{files, ui, log, writers};
    EventSounds sounds{files, ui, options.session.SoundsEnabled};
    Activity activity;
    Services services{files, clock, ui, log, status, sounds, options, activity, writers};

    TestShell() { log.Open(false); }

    // The text of the only message box shown since the last call.
    std::string OnlyBox() {
        std::string text =
            ui.boxes.size() == 1 ? ui.boxes[0].text : std::to_string(ui.boxes.size()) + " boxes";
        ui.boxes.clear();
        return text;
    }

    // The lines of the log so far, each without its time ("    text" or " ERROR: text").
    std::vector<std::string> LogLines() {
        log.Close();
        const std::string text = folder.Read("Zorvel.log");
        log.Open(true);
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            lines.push_back(text.substr(at + 19, end - at - 19));
            at = end + 2;
        }
        return lines;
    }
};

}  // namespace zorvel::test
