#include "gui/elided_label.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace zorvel {
namespace {

constexpr int kMinimumCharacters = 12;

}  // namespace

QSize ElidedLabel::minimumSizeHint() const {
    const QSize whole = QLabel::minimumSizeHint();
    return {qMin(whole.width(), fontMetrics().averageCharWidth() * kMinimumCharacters), whole.height()};
}

QString ElidedLabel::ShownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    // Only when the label does not say it itself; as rich text, so that none of it is taken for markup.
    const QString tip = ShownText() == text() ? QString() : "<p>" + text().toHtmlEscaped() + "</p>";
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          ShownText(), foregroundRole());
}

}  // namespace zorvel
