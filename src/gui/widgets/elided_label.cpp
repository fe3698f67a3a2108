#include "gui/widgets/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "gui/widgets/qt_text.h"

namespace zorvel {

QString ElidedLabel::ShownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || ShownText() == text()) return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainToolTip(text()), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          ShownText(), foregroundRole());
}

}  // namespace zorvel
