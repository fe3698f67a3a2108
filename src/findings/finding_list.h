// A list of findings for other programs: what is in it, and the files that it is written to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "findings/findings.h"
#include "platform/interruption.h"
#include "platform/output_file.h"

namespace zorvel {

struct FindingList {
    const Findings& findings;
    std::span<const std::uint32_t> rows;  // of the table, in the order of the list
    std::string generated;                // "dd/mm/yyyy hh:mm:ss"
    std::string version;                  // of this program, "1.0"
};

// How many findings of a list are so severe, and in which state.
struct FindingCounts {
    std::size_t all = 0;
    std::array<std::size_t, kSeverityTexts.size()> severities{};
    std::array<std::size_t, kFindingStates.size()> states{};
};
FindingCounts CountsOf(const Findings& findings, std::span<const std::uint32_t> rows);
// "611 findings: 12 critical, 40 high, 59 medium, 500 low; 597 open, 12 accepted, 2 expired"
std::string CountsText(const FindingCounts& counts);

// Text comes out of every format whole, and without a meaning in it. The writers raise the file's errors, and
// Interrupted when `ask` says so.

// A heading, then one record a finding (RFC 4180), as CsvWriter writes it.
void WriteFindingsCsv(const FindingList& list, OutputFile& file, const AskInterrupted& ask = {});
// An object with "dataset", "counts", the list "accepted" and "findings", an object each, one a line.
void WriteFindingsJson(const FindingList& list, OutputFile& file, const AskInterrupted& ask = {});
// A log of static analysis results (OASIS SARIF 2.1.0). Accepted findings are suppressed, with their reasons.
void WriteFindingsSarif(const FindingList& list, OutputFile& file, const AskInterrupted& ask = {});
// One page for a browser that needs nothing else and runs nothing.
void WriteFindingsHtml(const FindingList& list, OutputFile& file, const AskInterrupted& ask = {});

// What a list can be written as.
struct FindingFormat {
    std::string_view name;    // "csv"
    std::string_view suffix;  // of the file's name, with its dot
    std::string_view filter;  // as file dialogs name the format
    void (*write)(const FindingList&, OutputFile&, const AskInterrupted&);
};
std::span<const FindingFormat> FindingFormats();
// The format that a file's name asks for by its suffix, in any case; null when it names none.
const FindingFormat* FindingFormatOf(const std::filesystem::path& path);

// What stays the same of a finding from one run to the next: a number, in hexadecimal digits, of its code,
// full name, entry type and target.
std::string FingerprintOf(const FindingTable& table, std::size_t row);

}  // namespace zorvel
