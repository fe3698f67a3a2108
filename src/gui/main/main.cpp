// The desktop program. Its command line is logged, never interpreted.
#include <QApplication>
#include <QMessageBox>
#include <clocale>
#include <csignal>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>

#include "directory/open_directory.h"
#include "gui/dialogs/close_dialogs.h"
#include "gui/main/ending_signal.h"
#include "gui/main/frm_zorvel.h"
#include "gui/main/single_window.h"
#include "gui/widgets/qt_text.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace {

std::string CommandLine(int argc, char** argv) {
    std::string line;
    for (int i = 1; i < argc; ++i) {
        if (i > 1) line += ' ';
        line += zorvel::FromUtf8(argv[i]);
    }
    return line;
}

// By this the desktop lets a window come to the front.
QByteArray ActivationToken() {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

int ShowOtherWindow(const zorvel::SingleWindow& single, const QByteArray& activation_token) {
    if (single.ShowOther(activation_token)) return 0;
    QMessageBox::warning(nullptr, "Zorvel", zorvel::ToQString(single.RunsElsewhereText()));
    return 1;
}

int RunZorvel(const std::string& command_line, const QByteArray& activation_token) {
    const zorvel::Files files(QCoreApplication::applicationDirPath().toStdString());
    const zorvel::EndingSignal signal;
    zorvel::SingleWindow single(files);
    if (!single.Claim()) {
        QObject::connect(&signal, &zorvel::EndingSignal::Arrived, &single, zorvel::CloseDialogs);
        return ShowOtherWindow(single, activation_token);
    }
    zorvel::SystemClock clock;
    zorvel::frmZorvel window(files, clock, zorvel::OpenDirectory);
    QObject::connect(&signal, &zorvel::EndingSignal::Arrived, &window, &zorvel::frmZorvel::End);
    QObject::connect(&single, &zorvel::SingleWindow::ShowWanted, &window, &zorvel::frmZorvel::ComeToFront);
    if (!window.StartUp(command_line)) return 1;
    return window.isVisible() ? QApplication::exec() : 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a full disk, not the end of the program
    const std::string command_line = CommandLine(argc, argv);  // before Qt takes its own options from it
    const QByteArray activation_token = ActivationToken();     // and this from the environment
    const QApplication application(argc, argv);
    std::setlocale(LC_ALL, "C");  // Qt has set the user's
    QApplication::setApplicationName("Zorvel");
    QApplication::setDesktopFileName("zorvel");
    try {
        return RunZorvel(command_line, activation_token);
    } catch (const std::exception& error) {
        QMessageBox::critical(nullptr, "Zorvel", QString::fromLocal8Bit(error.what()));
        return 1;
    }
}
