// The pointer while the user waits.
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace zorvel {

// The pointer as an hourglass while this lives.
class Hourglass {
  public:
    Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

}  // namespace zorvel
