#include "paper/headless_pdf.h"

#include <QGuiApplication>
#include <clocale>
#include <cstdio>
#include <optional>

#include "paper/report_pdf.h"

namespace zorvel {

bool WritePdfWithoutDisplay(const Report& report, const std::filesystem::path& path,
                            const AskInterrupted& interrupted) {
    int argc = 1;
    char name[] = "zorvel-batch";
    char* argv[] = {name, nullptr};
    std::optional<QGuiApplication> application;
    if (QCoreApplication::instance() == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // What Qt misses of a desktop is none of the user's concern here.
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
            if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(message));
        });
        application.emplace(argc, argv);
        std::setlocale(LC_ALL, "C");  // Qt has set the user's
    }
    return WritePdf(report, path, interrupted);
}

}  // namespace zorvel
