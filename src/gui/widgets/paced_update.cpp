#include "gui/widgets/paced_update.h"

#include <utility>

namespace zorvel {
namespace {

constexpr int kInterval = 50;  // milliseconds

}  // namespace

PacedUpdate::PacedUpdate(std::function<void()> update, QObject* parent)
    : QObject(parent), update_(std::move(update)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &PacedUpdate::Flush);
}

void PacedUpdate::Request() {
    if (pending_) return;
    const qint64 elapsed = since_last_.isValid() ? since_last_.elapsed() : kInterval;
    if (elapsed >= kInterval) {
        Run();
    } else {
        pending_ = true;
        timer_.start(static_cast<int>(kInterval - elapsed));
    }
}

void PacedUpdate::Flush() {
    if (pending_) Run();
}

void PacedUpdate::Cancel() {
    pending_ = false;
    timer_.stop();
}

void PacedUpdate::Run() {
    Cancel();
    since_last_.start();
    update_();
}

}  // namespace zorvel
