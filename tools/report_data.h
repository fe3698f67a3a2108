// Fills a dataset with a made-up run of any size, for measuring reports and findings.
#pragma once

#include <cstdint>

#include "platform/store.h"

namespace zorvel::tools {

struct ReportSize {
    std::int64_t rows = 1000;  // registry settings, the same number for each application
    std::int64_t applications = 100;
    std::int64_t containers = 10;

    bool operator==(const ReportSize&) const = default;
};

// Adds applications and registry settings to a dataset that has none. Keys have 40 to 90 characters and up to
// three values each. The same size gives the same rows.
void FillRegistry(Database& dataset, const ReportSize& size);

// Adds applications with associations, and that many findings instead: half of them about files, each in one
// of 40 folders of its application. Every third target is one of a kind; the others come in several
// applications.
void FillFindings(Database& dataset, const ReportSize& size);

}  // namespace zorvel::tools
