// The helpers that nearly every operation needs, passed on as one.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/user_interface.h"
#include "shell/activity.h"
#include "shell/event_sounds.h"
#include "shell/log.h"
#include "shell/options.h"
#include "shell/status_line.h"
#include "shell/writer_lock.h"

namespace zorvel {

struct Services {
    const Files& files;
    Clock& clock;
    UserInterface& ui;
    Log& log;
    StatusLine& status;
    EventSounds& sounds;
    Options& options;
    Activity& activity;
    WriterLock& writers;
};

}  // namespace zorvel
