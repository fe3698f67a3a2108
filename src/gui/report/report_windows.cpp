#include "gui/report/report_windows.h"

#include <QMenu>
#include <QScopeGuard>
#include <utility>

#include "database/catalogue.h"
#include "gui/report/frm_report.h"
#include "gui/report/frm_report_options.h"
#include "gui/widgets/qt_text.h"
#include "reporting/report_catalogue.h"
#include "reporting/report_options.h"
#include "reporting/reports.h"

namespace zorvel {
namespace {

constexpr qint64 kEventsInterval = 40;  // milliseconds between two looks at the pending events

}  // namespace

ReportWindows::ReportWindows(MainController& controller, QMenu& menu, QWidget& window, const Run& run)
    : controller_(controller), window_(window) {
    QMenu* submenu = nullptr;
    for (const CatalogueReport& report : CatalogueReports()) {
        const QString group = ToQString(report.group);
        if (submenu == nullptr || submenu->title() != group) submenu = menu.addMenu(group);
        QAction* const entry = submenu->addAction(ToQString(report.caption));
        QObject::connect(entry, &QAction::triggered, &window,
                         [this, run, caption = report.caption] { run([&] { Generate(caption); }); });
    }
}

// The main window can go without having been closed, and takes along what the report windows use.
ReportWindows::~ReportWindows() {
    for (const QPointer<frmReport>& window : std::as_const(windows_))
        delete window.data();
}

bool ReportWindows::CloseAll() {
    bool closed = true;
    for (const QPointer<frmReport>& window : std::as_const(windows_)) {
        if (window != nullptr && !window->close()) closed = false;
    }
    return closed;
}

void ReportWindows::Generate(std::string_view caption) {
    windows_.removeAll(nullptr);
    const auto prepared = qScopeGuard([this] { preparing_.reset(); });
    if (caption == kCaptureDetailsReport) preparing_.emplace();
    const Catalogue catalogue(*controller_.session().MasterConnection);
    Reports(controller_.services(), catalogue, choice_, *this).Generate(caption);
}

void ReportWindows::ShowReportOptions(ReportChoice& choice) {
    const Catalogue catalogue(*controller_.session().MasterConnection);
    ReportOptions options(controller_.services(), catalogue, choice);
    options.Open();
    frmReportOptions(options, &window_).exec();
    preparing_.emplace();
}

bool ReportWindows::Interrupted() {
    Services& services = controller_.services();
    if (!since_events_.isValid() || since_events_.hasExpired(kEventsInterval)) {
        services.ui.ProcessEvents();
        since_events_.start();
    }
    return services.activity.UserInterrupt;
}

void ReportWindows::ShowReport(std::shared_ptr<const Report> report) {
    auto* window = new frmReport(controller_.services(), std::move(report), [this] { return Interrupted(); });
    windows_.append(window);
    window->showMaximized();
}

}  // namespace zorvel
