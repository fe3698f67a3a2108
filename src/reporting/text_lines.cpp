#include "reporting/text_lines.h"

#include <array>

namespace zorvel {
namespace {

enum Break : unsigned char { kNever, kIfNeedBe, kGladly };

// Behind which characters a line may end.
constexpr std::array<Break, 256> kBreaks = [] {
    std::array<Break, 256> breaks{};
    for (const char character : {' ', '\\', '/', ',', ';'})
        breaks[static_cast<unsigned char>(character)] = kGladly;
    for (const char character : {'.', '-', '_', ':', '=', '&', '@', '|', ')', ']', '}'})
        breaks[static_cast<unsigned char>(character)] = kIfNeedBe;
    return breaks;
}();

// A line ends at a good place when that fills so much of it.
constexpr double kFilled = 0.5;

// The places where the line at hand may end.
struct Chances {
    std::size_t good = 0;  // the last good one that fills the line well enough
    std::size_t any = 0;

    void Note(Break kind, std::size_t behind, bool filled) {
        if (kind == kNever) return;
        any = behind;
        if (kind == kGladly && filled) good = behind;
    }
    // Where to end the line; `at` when there is no place for it.
    std::size_t Best(std::size_t at) const {
        if (good != 0) return good;
        return any != 0 ? any : at;
    }
};

std::size_t WithoutBlanks(std::string_view text, std::size_t begin, std::size_t end) {
    while (end > begin && text[end - 1] == ' ')
        --end;
    return end;
}

}  // namespace

double FontFace::Width(std::string_view text, double size) const {
    double width = 0;
    for (const char character : text)
        width += advances[static_cast<unsigned char>(character)];
    return width * size;
}

void BreakLines(std::string_view text, const FontFace& face, double size, double width,
                std::vector<TextLine>& lines) {
    lines.clear();
    const double room = width / size;
    std::size_t begin = 0;
    double used = 0;
    Chances chances;
    const auto start = [&](std::size_t at) {
        begin = at;
        used = 0;
        chances = {};
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            lines.push_back({begin, i});
            start(i + 1);
            continue;
        }
        const auto code = static_cast<unsigned char>(text[i]);
        used += face.advances[code];
        // A blank may hang over the edge, where it is not seen.
        if (used > room && i > begin && text[i] != ' ') {
            const std::size_t cut = chances.Best(i);
            lines.push_back({begin, WithoutBlanks(text, begin, cut)});
            start(cut);
            i = cut - 1;
            continue;
        }
        // What a path begins with stays with it.
        const bool begins = (text[i] == '\\' || text[i] == '/') && (i == begin || text[i - 1] == ' ');
        if (!begins) chances.Note(kBreaks[code], i + 1, used >= room * kFilled);
    }
    if (begin < text.size() || lines.empty()) lines.push_back({begin, text.size()});
}

std::string CutToLine(std::string_view text, const FontFace& face, double size, double width) {
    constexpr char kEllipsis = '\x85';  // "..." in one character
    const std::string_view line = text.substr(0, text.find('\n'));
    if (line.size() == text.size() && face.Width(line, size) <= width) return std::string(line);
    double used = face.Width({&kEllipsis, 1}, size);
    std::size_t kept = 0;
    while (kept < line.size()) {
        used += face.Width(line.substr(kept, 1), size);
        if (used > width) break;
        ++kept;
    }
    return std::string(line.substr(0, kept)) + kEllipsis;
}

}  // namespace zorvel
