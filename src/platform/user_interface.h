// What the core asks of whoever faces the user: a window, a shell or a test.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

enum class MessageIcon { kNone, kInformation, kQuestion, kExclamation, kCritical };
enum class Buttons { kOk, kYesNo };
enum class Answer { kOk, kYes, kNo };

// The picture of the status bar's first panel; kUnchanged leaves the one that is there.
enum class StatusPicture { kRedBall, kYellowBall, kGreenBall, kUnchanged };

// The title of message boxes, and the application title.
inline constexpr std::string_view kProductName = "Zorvel";

struct MessageBox {
    std::string text;
    MessageIcon icon = MessageIcon::kNone;
    Buttons buttons = Buttons::kOk;
    Answer default_answer = Answer::kOk;
    std::string title{kProductName};
    // Where the trouble lies and why: a sentence for whoever sees the box and cannot read the log meanwhile.
    std::string detail{};
};

class UserInterface {
  public:
    virtual ~UserInterface() = default;

    // Shows a message box and waits for its answer.
    virtual Answer Show(const MessageBox& box) = 0;
    // Shows picture and text in the status bar and repaints it at once.
    virtual void ShowStatus(StatusPicture picture, std::string_view text) = 0;
    // Starts playing a sound file (a path of the program's text form) and returns at once; stays silent on
    // any failure.
    virtual void PlaySound(std::string_view path) = 0;
    // Opens a file or an address with the desktop's default handler.
    virtual void OpenDocument(std::string_view address) = 0;
    // Opens a text file in the desktop's text editor and returns at once. Raises an Error when it cannot be
    // started.
    virtual void EditTextFile(std::string_view path) = 0;
    // Lets pending window events run.
    virtual void ProcessEvents() = 0;

    // Shows a Yes/No question; true when it was answered Yes.
    bool Ask(std::string text, MessageIcon icon, Answer default_answer) {
        return Show({std::move(text), icon, Buttons::kYesNo, default_answer}) == Answer::kYes;
    }
    // Shows a message with an OK button.
    void Tell(std::string text, MessageIcon icon, std::string detail = {}) {
        Show({.text = std::move(text), .icon = icon, .detail = std::move(detail)});
    }
};

}  // namespace zorvel
