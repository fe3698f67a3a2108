#include "gui/widgets/up_down.h"

#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include "gui/widgets/qt_text.h"

namespace zorvel {

UpDown::UpDown(QWidget* parent) : QAbstractSpinBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccelerated(true);
    setAlignment(Qt::AlignRight);
}

QSize UpDown::sizeHint() const {
    // The same for all ranges, so that boxes below each other line up.
    const int text_width = fontMetrics().horizontalAdvance(QStringLiteral("0000000"));
    const QSize text_size(text_width, lineEdit()->sizeHint().height());
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text_size, this);
}

void UpDown::stepBy(int steps) {
    lineEdit()->setText(ToQString(Spin(FromQString(lineEdit()->text()), steps, range_)));
    selectAll();
}

void UpDown::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QAbstractSpinBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

}  // namespace zorvel
