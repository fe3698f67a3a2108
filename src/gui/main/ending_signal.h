// A signal that asks the program to end, as an event of the window's loop.
#pragma once

#include <QObject>

namespace zorvel {

class EndingSignal final : public QObject {
    Q_OBJECT

  public:
    // Watches for the process's signals from now on; there is one of these in a program.
    EndingSignal();

  Q_SIGNALS:
    // SIGINT, SIGTERM or SIGHUP has arrived; a second one ends the program at once.
    void Arrived();
};

}  // namespace zorvel
