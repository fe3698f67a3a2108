// Printing a report on a printer that the user has chosen.
#pragma once

#include <QPrinter>
#include <cstddef>
#include <vector>

#include "paper/report_pdf.h"
#include "reporting/page_layout.h"
#include "reporting/report.h"

namespace zorvel {

class PaperFonts;

// Sets a printer up for the paper of a report, under the report's name.
void PreparePrinter(QPrinter& printer, const Report& report, const PageLayout& layout);

// The pages, from 0, that the printer's settings ask for, in their order, copies that the printer does not
// make itself included. `count` is the number of pages that there are, `current` the one that is shown.
std::vector<std::size_t> PagesToPrint(const QPrinter& printer, std::size_t count, std::size_t current);

// Prints pages. False when `progress` stopped it. Raises an OutputError (75) when the printer does not take
// them.
bool PrintPages(QPrinter& printer, const PageLayout& layout, const PaperFonts& fonts,
                const std::vector<std::size_t>& pages, const PageProgress& progress);

}  // namespace zorvel
