// Updates of a display that are asked for far more often than an eye can follow.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

namespace zorvel {

// Runs an update at most 20 times a second. What was put off runs from the event loop when its time has come,
// or when it is flushed: the last state is always shown in the end.
class PacedUpdate final : public QObject {
    Q_OBJECT

  public:
    explicit PacedUpdate(std::function<void()> update, QObject* parent = nullptr);

    // Asks for an update. Costs next to nothing while one is put off: not even the clock is read.
    void Request();
    // Runs the update that was put off, if there is one.
    void Flush();
    // Forgets the update that was put off.
    void Cancel();

  private:
    void Run();

    std::function<void()> update_;
    QElapsedTimer since_last_;
    QTimer timer_;
    bool pending_ = false;
};

}  // namespace zorvel
