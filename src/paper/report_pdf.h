// A report as a PDF file, page by page as it is printed.
#pragma once

#include <QPageLayout>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

#include "platform/interruption.h"
#include "reporting/page_layout.h"
#include "reporting/report.h"

namespace zorvel {

class PaperFonts;

// Told before each page how many of how many are done; answers false to stop.
using PageProgress = std::function<bool(std::size_t done, std::size_t pages)>;

// Lays the report out and writes the file in the place of `path` (a real path). False when `ask`, which is
// asked for each page, ended it; then, and when writing fails, an older file of that name stays. Needs a
// QGuiApplication. Raises an OutputError that names the file (61, 70, 75 or 76).
bool WritePdf(const Report& report, const std::filesystem::path& path, const AskInterrupted& ask = {});

// The same for pages, numbered from 0, of a report that has been laid out with these fonts; on `paper`, as a
// printer would. False when `progress` stopped it.
bool WritePdf(const Report& report, const PageLayout& layout, const PaperFonts& fonts,
              const std::vector<std::size_t>& pages, const QPageLayout& paper,
              const std::filesystem::path& path, const PageProgress& progress);

// All pages of a layout.
std::vector<std::size_t> AllPages(const PageLayout& layout);

}  // namespace zorvel
