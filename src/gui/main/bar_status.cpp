#include "gui/main/bar_status.h"

#include <QIcon>
#include <QLabel>

#include "gui/widgets/qt_text.h"

namespace zorvel {
namespace {

constexpr int kPaintInterval = 40;  // milliseconds

struct Ball {
    const char* file;
    const char* meaning;
};

Ball BallOf(StatusPicture picture) {
    switch (picture) {
        case StatusPicture::kRedBall:
            return {":/icons/imageRedBall.svg", "Interrupted or failed"};
        case StatusPicture::kYellowBall:
            return {":/icons/imageYellowBall.svg", "Busy"};
        case StatusPicture::kGreenBall:
        case StatusPicture::kUnchanged:
            break;
    }
    return {":/icons/imageGreenBall.svg", "Idle"};
}

}  // namespace

BarStatus::BarStatus(QWidget* parent) : QStatusBar(parent), ball_(new QLabel(this)), text_(new QLabel(this)) {
    setObjectName("barStatus");
    ball_->setObjectName("barStatus_1");
    text_->setObjectName("barStatus_2");
    text_->setTextFormat(Qt::PlainText);
    text_->setMinimumWidth(1);  // a long path is cut rather than widening the window
    addWidget(ball_);
    addWidget(text_, 1);
}

void BarStatus::Show(StatusPicture picture, std::string_view text) {
    if (picture != StatusPicture::kUnchanged && picture != picture_) {
        picture_ = picture;
        const Ball ball = BallOf(picture);
        const int size = fontMetrics().height();
        ball_->setPixmap(QIcon(ball.file).pixmap(QSize(size, size), devicePixelRatioF()));
        ball_->setAccessibleName(ball.meaning);
        ball_->setToolTip(ball.meaning);
    }
    text_->setText(ToQString(text));
    if (painted_.isValid() && painted_.elapsed() < kPaintInterval) return;
    repaint();
    painted_.start();
}

}  // namespace zorvel
