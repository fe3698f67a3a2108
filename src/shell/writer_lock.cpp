#include "shell/writer_lock.h"

#include "platform/error.h"
#include "shell/pause.h"

namespace zorvel {
namespace {

constexpr const char* kLockFile = "Zorvel.lock";
constexpr double kAttemptInterval = 0.1;  // seconds
// How long a program that has just taken the lock may need to say who it is.
constexpr double kIntroduction = 1;

}  // namespace

WriterLock::WriterLock(const Files& files, Clock& clock, UserInterface& ui, Log& log)
    : clock_(clock), ui_(ui), log_(log), lock_(files.Resolve(files.Path(kLockFile)), files.Path(kLockFile)) {}

std::optional<WriterLock::Hold> WriterLock::Acquire() {
    if (holds_ == 0) {
        try {
            if (!Wait()) {
                Tell(lock_.Holder().Text() + " is writing to the program folder");
                return std::nullopt;
            }
        } catch (const Error& error) {
            Tell(error.detail());
            return std::nullopt;
        }
    }
    ++holds_;
    return Hold(*this);
}

// True when the lock was taken before the patience was at its end.
bool WriterLock::Wait() {
    for (double waited = 0; !lock_.TryAcquire(command); waited += kAttemptInterval) {
        const bool unknown = lock_.Holder().process.empty() && waited < kIntroduction;
        if ((waited >= patience && !unknown) || (stop_waiting && stop_waiting())) return false;
        Pause(clock_, ui_, kAttemptInterval);
    }
    return true;
}

void WriterLock::GiveUp() {
    if (--holds_ == 0) lock_.Release();
}

void WriterLock::Tell(const std::string& reason) {
    log_.WriteLog("WARNING: Nothing was changed: " + reason);
    ui_.Tell("Nothing was changed: " + reason + ". Please try again later.", MessageIcon::kExclamation);
}

}  // namespace zorvel
