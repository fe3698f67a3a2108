// The sounds that mark the end of long operations and trouble with a stream.
#pragma once

#include <string_view>

#include "platform/files.h"
#include "platform/user_interface.h"

namespace zorvel {

class EventSounds {
  public:
    // `enabled` is read at each call.
    EventSounds(const Files& files, UserInterface& ui, const bool& enabled);

    // Plays a WAV file when sounds are enabled and it exists. ".WAV" is added to a path without it; a path
    // without "\" is a file of the program folder. No failure is reported.
    void PlayEventSound(std::string_view path);

  private:
    const Files& files_;
    UserInterface& ui_;
    const bool& enabled_;
};

}  // namespace zorvel
