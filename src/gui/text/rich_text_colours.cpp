#include "gui/text/rich_text_colours.h"

#include <algorithm>
#include <cmath>

#include "gui/widgets/palette.h"

namespace zorvel {
namespace {

// The least contrast at which text of common size is comfortable to read (WCAG 2, level AA).
constexpr double kReadable = 4.5;

// The luminance of an sRGB colour, 0 to 1.
double Luminance(const QColor& colour) {
    const auto linear = [](double component) {
        return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// The contrast of two colours, 1 to 21.
double Contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace

QColor ToQColor(RichTextColour colour) {
    return {colour.red, colour.green, colour.blue};
}

QColor TextColour(const std::optional<RichTextColour>& colour,
                  const std::optional<RichTextColour>& background, const QPalette& palette) {
    if (colour && background) return ToQColor(*colour);
    if (background) {
        const QColor paper = ToQColor(*background);
        return Contrast(Qt::black, paper) >= Contrast(Qt::white, paper) ? Qt::black : Qt::white;
    }
    if (!colour) return palette.color(QPalette::Text);
    const QColor text = ToQColor(*colour);
    const QColor base = palette.color(QPalette::Base);
    if (!IsDark(palette) || Contrast(text, base) >= kReadable) return text;
    constexpr int kLightest = 255;
    constexpr int kStep = 8;
    for (int lightness = kLightest - text.lightness(); lightness < kLightest; lightness += kStep) {
        const QColor light = QColor::fromHsl(text.hslHue(), text.hslSaturation(), lightness).toRgb();
        if (Contrast(light, base) >= kReadable) return light;
    }
    return Qt::white;
}

}  // namespace zorvel
