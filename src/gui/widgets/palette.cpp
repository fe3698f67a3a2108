#include "gui/widgets/palette.h"

#include <QGuiApplication>

namespace zorvel {

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Text).lightness() > palette.color(QPalette::Base).lightness();
}

QBrush NodeBrush(NodeColour colour) {
    // Blue and dark grey cannot be read on black; there, lighter shades stand for them.
    const bool dark = IsDark(QGuiApplication::palette());
    switch (colour) {
        case NodeColour::kApplications:
            return dark ? QColor(128, 176, 255) : QColor(0, 0, 255);
        case NodeColour::kChildToggled:
            return dark ? QColor(160, 160, 160) : QColor(128, 128, 128);
        case NodeColour::kDefault:
            break;
    }
    return {};
}

QBrush SeverityBrush(Severity severity) {
    const bool dark = IsDark(QGuiApplication::palette());
    switch (severity) {
        case Severity::kCritical:
            return dark ? QColor(255, 138, 150) : QColor(164, 0, 29);
        case Severity::kHigh:
            return dark ? QColor(255, 178, 122) : QColor(163, 71, 0);
        case Severity::kMedium:
            return dark ? QColor(232, 210, 122) : QColor(107, 90, 0);
        case Severity::kLow:
            return dark ? QColor(169, 196, 220) : QColor(61, 90, 115);
    }
    return {};
}

QPalette FilteredPalette(QPalette palette) {
    palette.setColor(QPalette::Window, QColor(255, 255, 128));
    palette.setColor(QPalette::WindowText, Qt::black);
    return palette;
}

}  // namespace zorvel
