// The fonts of reports on paper: what layouts measure with, and what painters draw with, are the same.
#pragma once

#include <QRawFont>
#include <QString>
#include <array>
#include <vector>

#include "reporting/page_layout.h"

namespace zorvel {

// One font, with the glyph of each character of the code page. What the font lacks is shown as "?".
class PaperFont {
  public:
    PaperFont(const QString& family, bool bold);

    // Advances and reach in ems, as the font's designer meant them: neither hinting nor kerning changes them.
    const FontFace& face() const { return face_; }
    quint32 Glyph(unsigned char code) const { return glyphs_[code]; }
    // The font at a size in units of the device, from a small store of those that were used last.
    const QRawFont& Sized(double pixel_size) const;

  private:
    QRawFont font_;
    std::array<quint32, 256> glyphs_{};
    FontFace face_;
    mutable std::vector<QRawFont> sized_;
};

// The fonts of one report. Needs a QGuiApplication.
class PaperFonts {
  public:
    PaperFonts();

    const PaperFont& Of(bool bold) const { return bold ? bold_ : regular_; }
    // What a PageLayout is made with.
    const ReportFonts& metrics() const { return metrics_; }

  private:
    explicit PaperFonts(const QString& family);

    PaperFont regular_;
    PaperFont bold_;
    ReportFonts metrics_;
};

}  // namespace zorvel
