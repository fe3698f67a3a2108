// Changes the engine's tables of characters at arbitrary places: they are refused, or become those of the
// code page, whatever they said of its upper half.
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "fuzz_input.h"
#include "platform/regex_tables.h"

namespace zorvel::fuzz {
namespace {

std::vector<std::uint8_t> EngineTables() {
    std::uint32_t size = 0;
    pcre2_config(PCRE2_CONFIG_TABLES_LENGTH, &size);
    const std::uint8_t* const made = pcre2_maketables(nullptr);
    std::vector<std::uint8_t> tables(made, made + size);
    pcre2_maketables_free(nullptr, made);
    return tables;
}

}  // namespace

// Three bytes of the input are a place of the tables and what stands there; what is left over, cuts them.
void TestOneInput(std::string_view input) {
    constexpr std::size_t kUpperHalf = 128;
    constexpr std::size_t kCodes = 256;
    static const std::vector<std::uint8_t> kMade = EngineTables();
    static const std::vector<std::uint8_t> kRight = CharacterTables(kMade);
    std::vector<std::uint8_t> tables = kMade;
    const auto byte = [&input](std::size_t at) { return static_cast<std::uint8_t>(input[at]); };
    bool only_letters = true;  // of the upper half: their cases, which the code page gives
    for (; input.size() >= 3; input.remove_prefix(3)) {
        const std::size_t place = (byte(0) * kCodes + byte(1)) % tables.size();
        tables[place] = byte(2);
        only_letters = only_letters && place < 2 * kCodes && place % kCodes >= kUpperHalf;
    }
    tables.resize(tables.size() - input.size());
    const auto result = Readable({errors::kNoAutomation}, [&] { return CharacterTables(tables); });
    Require(!result || result->size() == kMade.size());
    if (only_letters && input.empty()) Require(result == kRight);
}

}  // namespace zorvel::fuzz
