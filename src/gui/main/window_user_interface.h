// The user as the core meets him: message boxes, status bar, sounds and documents of the desktop.
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <memory>
#include <string_view>

#include "gui/main/bar_status.h"
#include "platform/files.h"
#include "platform/user_interface.h"

class QSoundEffect;

namespace zorvel {

class WindowUserInterface final : public UserInterface {
  public:
    // Message boxes belong to `window`.
    WindowUserInterface(const Files& files, QWidget& window, BarStatus& bar);
    ~WindowUserInterface() override;

    // From now on nothing waits for the user: boxes answer themselves with their default.
    void StopAsking() { asking_ = false; }

    Answer Show(const MessageBox& box) override;
    void ShowStatus(StatusPicture picture, std::string_view text) override;
    void PlaySound(std::string_view path) override;
    void OpenDocument(std::string_view address) override;
    void EditTextFile(std::string_view path) override;
    void ProcessEvents() override;

  private:
    const Files& files_;
    QWidget& window_;
    BarStatus& bar_;
    std::unique_ptr<QSoundEffect> sound_;  // made when the first one is played
    QElapsedTimer processed_;
    bool asking_ = true;
};

}  // namespace zorvel
