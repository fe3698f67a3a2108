#include "gui/main/window_user_interface.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QSoundEffect>
#include <QUrl>

#include "gui/widgets/hourglass.h"
#include "gui/widgets/qt_text.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// Milliseconds between two looks at the pending events: often enough for ESC and for windows that follow the
// mouse, seldom enough for loops that ask once an entry.
constexpr int kEventInterval = 15;

// What the box says, and behind it what more there is to say.
QString TextOf(const MessageBox& box) {
    const QString text = ToQString(box.text).replace('\r', '\n');
    return box.detail.empty() ? text : text + "\n\n" + ToQString(box.detail);
}

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::kInformation:
            return QMessageBox::Information;
        case MessageIcon::kQuestion:
            return QMessageBox::Question;
        case MessageIcon::kExclamation:
            return QMessageBox::Warning;
        case MessageIcon::kCritical:
            return QMessageBox::Critical;
        case MessageIcon::kNone:
            break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

WindowUserInterface::WindowUserInterface(const Files& files, QWidget& window, BarStatus& bar)
    : files_(files), window_(window), bar_(bar) {}

WindowUserInterface::~WindowUserInterface() = default;

Answer WindowUserInterface::Show(const MessageBox& box) {
    if (!asking_) return box.buttons == Buttons::kOk ? Answer::kOk : box.default_answer;
    const UsualPointer pointer;  // also where something has put up the hourglass
    // Questions of a dialog belong to the dialog, those of another window to that: below it nobody would see
    // them.
    QWidget* owner = QApplication::activeModalWidget();
    if (owner == nullptr) owner = QApplication::activeWindow();
    QMessageBox message(owner != nullptr ? owner : &window_);
    message.setWindowTitle(ToQString(box.title));
    message.setIcon(IconOf(box.icon));
    message.setTextFormat(Qt::PlainText);
    message.setText(TextOf(box));
    message.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (box.buttons == Buttons::kOk) {
        message.setStandardButtons(QMessageBox::Ok);
        message.exec();
        return Answer::kOk;
    }
    message.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    message.setDefaultButton(box.default_answer == Answer::kNo ? QMessageBox::No : QMessageBox::Yes);
    return message.exec() == QMessageBox::Yes ? Answer::kYes : Answer::kNo;
}

void WindowUserInterface::ShowStatus(StatusPicture picture, std::string_view text) {
    bar_.Show(picture, text);
}

void WindowUserInterface::PlaySound(std::string_view path) {
    try {
        if (!sound_) sound_ = std::make_unique<QSoundEffect>();
        sound_->setSource(QUrl::fromLocalFile(QString::fromStdString(files_.Resolve(path).string())));
        sound_->play();
    } catch (const Error&) {
        // A sound that is not there is not heard.
    }
}

void WindowUserInterface::OpenDocument(std::string_view address) {
    QUrl url(ToQString(address));
    const bool is_path = url.scheme().size() <= 1;  // one letter is a drive
    if (is_path) url = QUrl::fromLocalFile(QString::fromStdString(files_.Resolve(address).string()));
    if (!QDesktopServices::openUrl(url))
        Tell("'" + std::string(address) + "' could not be opened.", MessageIcon::kExclamation);
}

void WindowUserInterface::EditTextFile(std::string_view path) {
    const QString file = QString::fromStdString(files_.Resolve(path).string());
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file)))
        throw Error(errors::kFileNotFound)
            .With("no text editor could be started for '" + std::string(path) + "'");
}

void WindowUserInterface::ProcessEvents() {
    if (processed_.isValid() && processed_.elapsed() < kEventInterval) return;
    QCoreApplication::processEvents();
    processed_.start();
}

}  // namespace zorvel
