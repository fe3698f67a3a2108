#include "gui/widgets/qt_text.h"

#include "platform/code_page.h"

namespace zorvel {

QString ToQString(std::string_view text) {
    return QString::fromStdString(ToUtf8(text));
}

QString PlainToolTip(const QString& text) {
    if (text.isEmpty()) return {};
    return QStringLiteral("<div style=\"white-space:pre-wrap\">%1</div>").arg(text.toHtmlEscaped());
}

std::string FromQString(const QString& text) {
    return FromUtf8(text.toStdString());
}

std::string NeedleText(const QString& needle) {
    std::string text = FromQString(needle);
    return ToQString(text) == needle ? text : std::string();
}

}  // namespace zorvel
