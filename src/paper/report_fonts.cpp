#include "paper/report_fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <algorithm>
#include <string>

#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::size_t kCodes = 256;
constexpr std::size_t kKeptSizes = 16;  // of one font: a page has about five

// All characters of the code page, by their codes.
QString AllCharacters() {
    std::string codes(kCodes, ' ');
    for (std::size_t code = 0; code < kCodes; ++code)
        codes[code] = static_cast<char>(static_cast<unsigned char>(code));
    return QString::fromStdString(ToUtf8(codes));
}

// The first of the families that is there, in the order in which they suit narrow columns of figures.
QString PaperFamily() {
    for (const char* family : {"Liberation Sans", "Arimo", "Arial", "Helvetica", "DejaVu Sans"})
        if (QFontDatabase::hasFamily(QLatin1String(family))) return QLatin1String(family);
    return QGuiApplication::font().family();
}

}  // namespace

PaperFont::PaperFont(const QString& family, bool bold) {
    QFont font(family);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font_ = QRawFont::fromFont(font);
    // At one pixel a design unit, metrics are the designer's own figures.
    const double ems = font_.unitsPerEm();
    font_.setPixelSize(ems);
    const QList<quint32> found = font_.glyphIndexesForString(AllCharacters());
    const quint32 replacement = found[static_cast<qsizetype>('?')];
    for (std::size_t code = 0; code < kCodes; ++code) {
        const quint32 glyph = found[static_cast<qsizetype>(code)];
        glyphs_[code] = glyph != 0 ? glyph : replacement;
    }
    const QList<QPointF> advances = font_.advancesForGlyphIndexes(
        QList<quint32>(glyphs_.begin(), glyphs_.end()), QRawFont::UseDesignMetrics);
    for (std::size_t code = 0; code < kCodes; ++code)
        face_.advances[code] = advances[static_cast<qsizetype>(code)].x() / ems;
    face_.ascent = font_.ascent() / ems;
    face_.descent = font_.descent() / ems;
}

const QRawFont& PaperFont::Sized(double pixel_size) const {
    const auto known = std::find_if(sized_.begin(), sized_.end(),
                                    [&](const QRawFont& font) { return font.pixelSize() == pixel_size; });
    if (known != sized_.end()) return *known;
    if (sized_.size() == kKeptSizes) sized_.erase(sized_.begin());
    QRawFont font = font_;
    font.setPixelSize(pixel_size);
    return sized_.emplace_back(font);
}

PaperFonts::PaperFonts() : PaperFonts(PaperFamily()) {}

PaperFonts::PaperFonts(const QString& family)
    : regular_(family, false), bold_(family, true), metrics_{regular_.face(), bold_.face()} {}

}  // namespace zorvel
