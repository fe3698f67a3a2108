#include "gui/main/busy_input_filter.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

namespace zorvel {
namespace {

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::InputMethod:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::DragEnter:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

bool IsEscape(const QEvent& event) {
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

}  // namespace

BusyInputFilter::BusyInputFilter(const Activity& activity, std::function<void()> interrupt)
    : activity_(activity), interrupt_(std::move(interrupt)) {
    qApp->installEventFilter(this);
}

bool BusyInputFilter::eventFilter(QObject* watched, QEvent* event) {
    // A message box of the operation itself is answered as ever.
    if (!activity_.Busy || !IsInput(event->type()) || QApplication::activeModalWidget() != nullptr)
        return QObject::eventFilter(watched, event);
    // What was typed or clicked meanwhile is dropped, not kept: later it would answer questions that nobody
    // had seen.
    if (IsEscape(*event) && !activity_.UserInterrupt) interrupt_();
    return true;
}

}  // namespace zorvel
