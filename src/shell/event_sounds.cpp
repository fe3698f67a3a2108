#include "shell/event_sounds.h"

#include <string>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {

EventSounds::EventSounds(const Files& files, UserInterface& ui, const bool& enabled)
    : files_(files), ui_(ui), enabled_(enabled) {}

void EventSounds::PlayEventSound(std::string_view path) {
    if (!enabled_) return;
    std::string sound(path);
    const std::size_t tail = sound.size() < 4 ? 0 : sound.size() - 4;
    if (!EqualIgnoringCase(std::string_view(sound).substr(tail), ".WAV")) sound += ".WAV";
    // A path of this desktop's file dialog holds "/" where the program's own paths hold "\".
    if (sound.find_first_of("\\/") == std::string::npos) sound = files_.Path(sound);
    try {
        if (files_.Exists(sound)) ui_.PlaySound(sound);
    } catch (const Error&) {
        // A sound is never worth an error.
    }
}

}  // namespace zorvel
