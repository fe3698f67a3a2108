// Keeps mouse and keys from the windows while a long operation runs; ESC interrupts it.
#pragma once

#include <QObject>
#include <functional>

#include "shell/activity.h"

namespace zorvel {

class BusyInputFilter final : public QObject {
    Q_OBJECT

  public:
    // `interrupt` is what ESC does. Watches the whole application from now on.
    BusyInputFilter(const Activity& activity, std::function<void()> interrupt);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    const Activity& activity_;
    std::function<void()> interrupt_;
};

}  // namespace zorvel
