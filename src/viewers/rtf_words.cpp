#include "viewers/rtf_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace zorvel {
namespace {

struct Row {
    std::string_view name;
    RtfMeaning meaning;
};

// In the order of the names.
constexpr Row kRows[] = {
    {"annotation", {RtfWord::kSkipped}},
    {"atnid", {RtfWord::kSkipped}},
    {"b", {RtfWord::kBold}},
    {"bkmkend", {RtfWord::kSkipped}},
    {"bkmkstart", {RtfWord::kSkipped}},
    {"bullet", {RtfWord::kCharacter, 0x2022}},
    {"cb", {RtfWord::kBackground}},
    {"cf", {RtfWord::kColour}},
    {"colorschememapping", {RtfWord::kSkipped}},
    {"colortbl", {RtfWord::kColourTable}},
    {"datastore", {RtfWord::kSkipped}},
    {"deff", {RtfWord::kDefaultFont}},
    {"deftab", {RtfWord::kDefaultTab}},
    {"emdash", {RtfWord::kCharacter, 0x2014}},
    {"endash", {RtfWord::kCharacter, 0x2013}},
    {"f", {RtfWord::kFont}},
    {"fi", {RtfWord::kFirstIndent}},
    {"filetbl", {RtfWord::kSkipped}},
    {"fldinst", {RtfWord::kSkipped}},
    {"fonttbl", {RtfWord::kFontTable}},
    {"footer", {RtfWord::kSkipped}},
    {"footerf", {RtfWord::kSkipped}},
    {"footerl", {RtfWord::kSkipped}},
    {"footerr", {RtfWord::kSkipped}},
    {"footnote", {RtfWord::kSkipped}},
    {"fs", {RtfWord::kFontSize}},
    {"generator", {RtfWord::kSkipped}},
    {"header", {RtfWord::kSkipped}},
    {"headerf", {RtfWord::kSkipped}},
    {"headerl", {RtfWord::kSkipped}},
    {"headerr", {RtfWord::kSkipped}},
    {"highlight", {RtfWord::kBackground}},
    {"i", {RtfWord::kItalic}},
    {"info", {RtfWord::kSkipped}},
    {"latentstyles", {RtfWord::kSkipped}},
    {"ldblquote", {RtfWord::kCharacter, 0x201C}},
    {"li", {RtfWord::kLeftIndent}},
    {"line", {RtfWord::kCharacter, 0x2028}},
    {"listoverridetable", {RtfWord::kSkipped}},
    {"listtable", {RtfWord::kSkipped}},
    {"lquote", {RtfWord::kCharacter, 0x2018}},
    {"nonshppict", {RtfWord::kSkipped}},
    {"object", {RtfWord::kSkipped}},
    {"par", {RtfWord::kParagraph}},
    {"pard", {RtfWord::kParagraphDefaults}},
    {"pict", {RtfWord::kSkipped}},
    {"plain", {RtfWord::kPlain}},
    {"qc", {RtfWord::kAlignCentre}},
    {"qj", {RtfWord::kAlignLeft}},
    {"ql", {RtfWord::kAlignLeft}},
    {"qr", {RtfWord::kAlignRight}},
    {"rdblquote", {RtfWord::kCharacter, 0x201D}},
    {"revtbl", {RtfWord::kSkipped}},
    {"rquote", {RtfWord::kCharacter, 0x2019}},
    {"rsidtbl", {RtfWord::kSkipped}},
    {"rxe", {RtfWord::kSkipped}},
    {"sa", {RtfWord::kSpaceAfter}},
    {"sb", {RtfWord::kSpaceBefore}},
    {"stylesheet", {RtfWord::kSkipped}},
    {"tab", {RtfWord::kCharacter, '\t'}},
    {"tc", {RtfWord::kSkipped}},
    {"themedata", {RtfWord::kSkipped}},
    {"txe", {RtfWord::kSkipped}},
    {"u", {RtfWord::kUnicode}},
    {"uc", {RtfWord::kUnicodeFallback}},
    {"ul", {RtfWord::kUnderline}},
    {"ulnone", {RtfWord::kNoUnderline}},
    {"xe", {RtfWord::kSkipped}},
    {"xmlnstbl", {RtfWord::kSkipped}},
};
static_assert(std::ranges::is_sorted(kRows, {}, &Row::name));

// The first eight letters of a name as a number, in the order of the names: documents are half control words,
// and numbers are compared faster.
constexpr std::uint64_t Key(std::string_view name) {
    std::uint64_t key = 0;
    for (std::size_t at = 0; at < sizeof key; ++at)
        key = key << 8 | (at < name.size() ? static_cast<unsigned char>(name[at]) : 0U);
    return key;
}

constexpr auto kKeys = [] {
    std::array<std::uint64_t, std::size(kRows)> keys{};
    std::ranges::transform(kRows, keys.begin(), [](const Row& row) { return Key(row.name); });
    return keys;
}();
static_assert(std::ranges::adjacent_find(kKeys) == kKeys.end(), "two names with the same key");

}  // namespace

RtfMeaning FindRtfWord(std::string_view name) {
    const auto* key = std::ranges::lower_bound(kKeys, Key(name));
    if (key == kKeys.end()) return {};
    const Row& row = kRows[key - kKeys.begin()];
    return row.name == name ? row.meaning : RtfMeaning{};
}

}  // namespace zorvel
