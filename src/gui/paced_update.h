// Updates of a display that are asked for far more often than an eye can follow.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

namespace zorvel {

// Runs an update at most 20 times a second. What was put off runs with the next request after its time has
// come, or from the event loop, or when it is flushed: the last state is always shown in the end.
class PacedUpdate final : public QObject {
    Q_OBJECT

  public:
    explicit PacedUpdate(std::function<void()> update, QObject* parent = nullptr);

    // Asks for an update.
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
