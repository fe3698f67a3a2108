#include "gui/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace zorvel {

QString ElidedLabel::ShownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || ShownText() == text()) return QLabel::event(event);
    // Escaped, else a name with "<" would be read as markup.
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       QStringLiteral("<qt>%1</qt>").arg(text().toHtmlEscaped()), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          ShownText(), foregroundRole());
}

}  // namespace zorvel
