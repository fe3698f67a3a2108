// Tool tips as a user reads them.
#pragma once

#include <QString>
#include <QTextDocument>
#include <string>

namespace zorvel::test {

// The text that is seen of a tool tip: Qt takes what looks like markup for markup.
inline std::string ShownTip(const QString& tip) {
    if (!Qt::mightBeRichText(tip)) return tip.toStdString();
    QTextDocument shown;
    shown.setHtml(tip);
    return shown.toPlainText().toStdString();
}

}  // namespace zorvel::test
