#include "gui/main/ending_signal.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>

#include "platform/ending_signals.h"

namespace zorvel {
namespace {

// What the signal's handler writes to: events cannot be sent from there.
int writing_end = -1;

void WriteToPipe() {
    [[maybe_unused]] const ssize_t written = write(writing_end, "", 1);
}

}  // namespace

EndingSignal::EndingSignal() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;  // signals end the program as they always do
    writing_end = ends[1];
    auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT Arrived();
    });
    OnEndingSignal(WriteToPipe);
}

}  // namespace zorvel
