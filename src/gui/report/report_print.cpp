#include "gui/report/report_print.h"

#include <QPageRanges>
#include <algorithm>

#include "gui/widgets/qt_text.h"
#include "paper/report_painter.h"
#include "platform/user_interface.h"

namespace zorvel {
namespace {

bool IsWanted(const QPrinter& printer, std::size_t page, std::size_t current) {
    const int number = static_cast<int>(page) + 1;
    switch (printer.printRange()) {
        case QPrinter::CurrentPage:
            return page == current;
        case QPrinter::PageRange:
            if (!printer.pageRanges().isEmpty()) return printer.pageRanges().contains(number);
            return number >= printer.fromPage() && (printer.toPage() == 0 || number <= printer.toPage());
        case QPrinter::AllPages:
        case QPrinter::Selection:
            break;
    }
    return true;
}

}  // namespace

void PreparePrinter(QPrinter& printer, const Report& report, const PageLayout& layout) {
    printer.setDocName(ToQString(report.facts().caption));
    printer.setCreator(ToQString(kProductName));
    printer.setFullPage(true);
    printer.setPageLayout(PaperOf(layout));
}

std::vector<std::size_t> PagesToPrint(const QPrinter& printer, std::size_t count, std::size_t current) {
    std::vector<std::size_t> wanted;
    for (std::size_t page = 0; page < count; ++page)
        if (IsWanted(printer, page, current)) wanted.push_back(page);
    if (printer.pageOrder() == QPrinter::LastPageFirst) std::reverse(wanted.begin(), wanted.end());
    const auto copies =
        static_cast<std::size_t>(printer.supportsMultipleCopies() ? 1 : std::max(printer.copyCount(), 1));
    std::vector<std::size_t> pages;
    if (printer.collateCopies()) {
        for (std::size_t copy = 0; copy < copies; ++copy)
            pages.insert(pages.end(), wanted.begin(), wanted.end());
    } else {
        for (const std::size_t page : wanted)
            pages.insert(pages.end(), copies, page);
    }
    return pages;
}

bool PrintPages(QPrinter& printer, const PageLayout& layout, const PaperFonts& fonts,
                const std::vector<std::size_t>& pages, const PageProgress& progress) {
    const QString name =
        printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
    const bool printed = DrawPages(printer, FromQString(name), layout, fonts, pages, progress);
    if (!printed) printer.abort();
    return printed;
}

}  // namespace zorvel
