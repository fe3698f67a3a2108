// The pointer while the user waits, and while he is asked meanwhile.
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace zorvel {

// A pointer that is the same everywhere while this lives.
class OverridePointer {
  public:
    explicit OverridePointer(Qt::CursorShape shape) { QGuiApplication::setOverrideCursor(shape); }
    ~OverridePointer() { QGuiApplication::restoreOverrideCursor(); }
    OverridePointer(const OverridePointer&) = delete;
    OverridePointer& operator=(const OverridePointer&) = delete;
};

struct Hourglass : OverridePointer {
    Hourglass() : OverridePointer(Qt::WaitCursor) {}
};

struct UsualPointer : OverridePointer {
    UsualPointer() : OverridePointer(Qt::ArrowCursor) {}
};

}  // namespace zorvel
