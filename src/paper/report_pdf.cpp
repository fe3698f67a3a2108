#include "paper/report_pdf.h"

#include <QIODevice>
#include <QPdfWriter>
#include <exception>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

#include "paper/report_fonts.h"
#include "paper/report_painter.h"
#include "platform/code_page.h"
#include "platform/user_interface.h"
#include "platform/write_in_place.h"
#include "reporting/report_export.h"

namespace zorvel {
namespace {

// Units in an inch: a fine grid, on which numbers in the file are short.
constexpr int kResolution = 1200;

QString Text(std::string_view text) {
    return QString::fromStdString(ToUtf8(text));
}

// An output file as Qt writes to it. What fails is kept until somebody asks: no exception passes through Qt.
class OutputDevice final : public QIODevice {
  public:
    explicit OutputDevice(OutputFile& file) : file_(file) { open(WriteOnly | Unbuffered); }

    bool isSequential() const override { return true; }
    // Raises the first failure.
    void Check() const {
        if (failure_) std::rethrow_exception(failure_);
    }

  protected:
    qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        if (failure_) return -1;
        try {
            file_.Write(std::string_view(data, static_cast<std::size_t>(size)));
        } catch (...) {
            failure_ = std::current_exception();
            return -1;
        }
        return size;
    }

  private:
    OutputFile& file_;
    std::exception_ptr failure_;
};

void WritePages(const Report& report, const PageLayout& layout, const PaperFonts& fonts,
                const std::vector<std::size_t>& pages, const QPageLayout& paper, OutputFile& file,
                const PageProgress& progress) {
    OutputDevice device(file);
    QPdfWriter writer(&device);
    writer.setResolution(kResolution);
    writer.setTitle(Text(report.facts().caption));
    writer.setCreator(Text(kProductName));
    writer.setPageLayout(paper);
    const bool whole =
        DrawPages(writer, file.name(), layout, fonts, pages, [&](std::size_t done, std::size_t count) {
            device.Check();
            return !progress || progress(done, count);
        });
    device.Check();
    if (!whole) throw Interrupted{};
}

}  // namespace

std::vector<std::size_t> AllPages(const PageLayout& layout) {
    std::vector<std::size_t> pages(layout.page_count());
    std::iota(pages.begin(), pages.end(), std::size_t{0});
    return pages;
}

bool WritePdf(const Report& report, const std::filesystem::path& path, const AskInterrupted& ask) {
    try {
        const PaperFonts fonts;
        const PageLayout layout(report, fonts.metrics(), ask);
        return WritePdf(report, layout, fonts, AllPages(layout), PaperOf(layout), path,
                        [&ask](std::size_t /*done*/, std::size_t /*pages*/) { return !ask || !ask(); });
    } catch (const Interrupted&) {
        return false;
    }
}

bool WritePdf(const Report& report, const PageLayout& layout, const PaperFonts& fonts,
              const std::vector<std::size_t>& pages, const QPageLayout& paper,
              const std::filesystem::path& path, const PageProgress& progress) {
    try {
        WriteInPlace(
            path, [&](OutputFile& file) { WritePages(report, layout, fonts, pages, paper, file, progress); });
    } catch (const Interrupted&) {
        return false;
    }
    return true;
}

}  // namespace zorvel
