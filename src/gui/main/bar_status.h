// The main window's status bar: a traffic light and what the program is doing.
#pragma once

#include <QElapsedTimer>
#include <QStatusBar>
#include <string_view>

#include "platform/user_interface.h"

class QLabel;

namespace zorvel {

class BarStatus final : public QStatusBar {
    Q_OBJECT

  public:
    explicit BarStatus(QWidget* parent);

    // Shows picture and text. Operations that do not return to the event loop call it thousands of times a
    // second, so it is painted at once only when the eye could follow.
    void Show(StatusPicture picture, std::string_view text);

  private:
    QLabel* ball_;
    QLabel* text_;
    StatusPicture picture_ = StatusPicture::kUnchanged;
    QElapsedTimer painted_;
};

}  // namespace zorvel
