// The right to write to the program folder, which one process at a time has.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/folder_lock.h"
#include "platform/user_interface.h"
#include "shell/log.h"

namespace zorvel {

class WriterLock {
  public:
    WriterLock(const Files& files, Clock& clock, UserInterface& ui, Log& log);

    // The right itself: given up when the last of its holds is gone.
    class Hold {
      public:
        explicit Hold(WriterLock& lock) : lock_(&lock) {}
        Hold(Hold&& other) noexcept : lock_(std::exchange(other.lock_, nullptr)) {}
        Hold& operator=(Hold&& other) noexcept {
            std::swap(lock_, other.lock_);
            return *this;
        }
        ~Hold() {
            if (lock_ != nullptr) lock_->GiveUp();
        }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

      private:
        WriterLock* lock_;
    };

    // Takes the right to write, or shares it when this process has it. None when another process has it, or
    // when the folder cannot be written at all: the user was told who has it, or why, and nothing is to be
    // changed.
    std::optional<Hold> Acquire();

    // What others are told that this process does.
    std::string command = "zorvel";
    // How many seconds Acquire waits for another process, unless `stop_waiting` answers true.
    double patience = 0;
    std::function<bool()> stop_waiting;

  private:
    bool Wait();
    void GiveUp();
    void Tell(const std::string& reason);

    Clock& clock_;
    UserInterface& ui_;
    Log& log_;
    FolderLock lock_;
    int holds_ = 0;
};

}  // namespace zorvel
