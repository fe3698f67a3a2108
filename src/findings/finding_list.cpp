#include "findings/finding_list.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/hex.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::array<FindingFormat, 4> kFormats = {
    {{"csv", ".csv", "Comma-separated values (*.csv)", WriteFindingsCsv},
     {"json", ".json", "JSON (*.json)", WriteFindingsJson},
     {"sarif", ".sarif", "SARIF, static analysis results (*.sarif)", WriteFindingsSarif},
     {"html", ".html", "Web page (*.html)", WriteFindingsHtml}}};

// FNV-1a, of 64 bits.
class Hash {
  public:
    void Add(std::string_view text) {
        for (const char character : text)
            AddByte(static_cast<unsigned char>(character));
        AddByte(0);
    }
    std::string Digits() const {
        std::string digits;
        for (int shift = 56; shift >= 0; shift -= 8)
            AppendHex(digits, static_cast<unsigned char>(value_ >> static_cast<unsigned>(shift)));
        return digits;
    }

  private:
    void AddByte(unsigned char byte) {
        constexpr std::uint64_t kPrime = 0x100000001B3;
        value_ = (value_ ^ byte) * kPrime;
    }
    std::uint64_t value_ = 0xCBF29CE484222325;
};

template <std::size_t kSize>
std::string CountsOfEach(const std::array<std::size_t, kSize>& counts,
                         const std::array<std::string_view, kSize>& names) {
    std::string text;
    for (std::size_t i = 0; i < kSize; ++i)
        text += (i == 0 ? "" : ", ") + GroupedCount(counts[i]) + ' ' + std::string(names[i]);
    return text;
}

}  // namespace

FindingCounts CountsOf(const Findings& findings, std::span<const std::uint32_t> rows) {
    FindingCounts counts;
    counts.all = rows.size();
    for (const std::uint32_t row : rows) {
        ++counts.severities[static_cast<std::size_t>(findings.table().RuleOf(row).severity)];
        ++counts.states[static_cast<std::size_t>(findings.states()[row])];
    }
    return counts;
}

std::string CountsText(const FindingCounts& counts) {
    return CountedFindings(counts.all) + ": " + CountsOfEach(counts.severities, kSeverityTexts) + "; " +
           CountsOfEach(counts.states, kFindingStates);
}

std::span<const FindingFormat> FindingFormats() {
    return kFormats;
}

const FindingFormat* FindingFormatOf(const std::filesystem::path& path) {
    const std::string suffix = path.extension().string();
    const auto* const found =
        std::find_if(kFormats.begin(), kFormats.end(),
                     [&](const FindingFormat& format) { return EqualIgnoringCase(format.suffix, suffix); });
    return found == kFormats.end() ? nullptr : found;
}

std::string FingerprintOf(const FindingTable& table, std::size_t row) {
    Hash hash;
    hash.Add(table.RuleOf(row).code);
    hash.Add(table.ApplicationOf(row).full_name);
    hash.Add(table.PlaceOf(row));
    hash.Add(table.TargetOf(row));
    return hash.Digits();
}

}  // namespace zorvel
