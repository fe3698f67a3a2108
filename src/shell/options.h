// The options file Zorvel.ini and the state of the options tab it is read into.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/user_interface.h"
#include "shell/log.h"
#include "shell/writer_lock.h"

namespace zorvel {

// "True" for a checked box (1), "False" for every other state (0 unchecked, 2 greyed).
std::string Chk2Text(int check_state);

// The check boxes of the options tab, by their index in `checkGeneral`.
enum class CheckGeneral : std::size_t {
    kAppNamesWithSpacesIllegal = 0,
    kSlowINIFileThreshold = 1,
    kSlowTextFileThreshold = 2,
    kIgnoreStreamParsingErrors = 3,
    kCreateDMPFileOnError = 4,
    kAppendToLog = 5,
    kEDirThrottle = 6,
    kSlowRegistryThreshold = 7,
    kAutoTreeCacheRefresh = 8,
};

// The state of the options tab's controls. Check boxes hold 0, 1 or 2 (greyed).
struct OptionControls {
    std::array<int, 9> checkGeneral{};
    int checkSoundsEnabled = 0;
    std::string txtSlowINIThreshold = "200";
    std::string txtSlowTextThreshold = "200";
    std::string txtSlowRegistryThreshold = "1000";
    std::string txtThrottle = "1";
    std::string txtCache = "30";
    std::array<std::string, 2> txtSound;  // 0 warning, 1 finished

    // Which of the number boxes and their spinners are enabled; set by RefreshOptions.
    struct Enabled {
        bool SlowINIThreshold = false;
        bool SlowTextThreshold = false;
        bool SlowRegistryThreshold = false;
        bool Throttle = false;
        bool Cache = false;
    } enabled;

    bool Checked(CheckGeneral box) const { return checkGeneral[static_cast<std::size_t>(box)] == 1; }
};

// What RefreshOptions derives from the controls.
struct SessionOptions {
    bool AppNamesWithSpacesIllegal = false;
    bool WarnStreamParsingErrors = false;
    bool CreateDMPFileOnError = false;
    bool AppendToLog = false;
    bool SoundsEnabled = false;
    std::string FinishedSound;
    std::string WarningSound;
};

// The text of one of the number boxes.
using NumberText = std::string OptionControls::*;

// What a spinner keeps its text box within.
struct SpinnerRange {
    int minimum = 0;
    int maximum = 0;
};

// A number box: its text, whether it is enabled, and the range of its spinner.
struct NumberBox {
    NumberText text;
    bool OptionControls::Enabled::*enabled;
    SpinnerRange range;
};

// The number boxes by the index of their spinner, `UpDownOption` 1 to 5, less 1.
inline constexpr std::array<NumberBox, 5> kNumberBoxes = {{
    {&OptionControls::txtSlowINIThreshold, &OptionControls::Enabled::SlowINIThreshold, {50, 10000}},
    {&OptionControls::txtSlowTextThreshold, &OptionControls::Enabled::SlowTextThreshold, {50, 10000}},
    {&OptionControls::txtThrottle, &OptionControls::Enabled::Throttle, {1, 600}},
    {&OptionControls::txtSlowRegistryThreshold, &OptionControls::Enabled::SlowRegistryThreshold, {50, 10000}},
    {&OptionControls::txtCache, &OptionControls::Enabled::Cache, {1, 600}},
}};

// The text of a number box after its spinner went `steps` up (or down, when negative): the whole number that
// the text held before, moved, and kept within the range.
std::string Spin(std::string_view text, int steps, const SpinnerRange& range);

// Reads an options file into the controls. Keys that it does not hold keep their values, and so do those that
// stand behind an error. Raises error 75 on a read error.
void ReadControls(InputFile file, OptionControls& controls);
// The options file of the controls: all 17 keys, a line each.
std::string OptionsText(const OptionControls& controls);

class Options {
  public:
    Options(const Files& files, UserInterface& ui, Log& log, WriterLock& writers);

    // Reads Zorvel.ini into the controls and applies them. True when the whole file was read; an error is
    // shown to the user, and what was read before it stays.
    bool ReadOptions();
    // Writes the controls to Zorvel.ini, all 17 keys; the file is the old or the new one, whole, at every
    // moment. An error is shown to the user and logged. False when another program writes to the folder,
    // which the user was told, too.
    bool WriteOptions();
    // Derives the session options and the enabled number boxes from the controls.
    void RefreshOptions();
    // Derives only the sounds' paths.
    void RefreshSounds();
    // The number that the text of a number box begins with (0 when there is none), with its fraction. Nothing
    // when it goes beyond 32 bits, which the user and the log are told once for each such value.
    std::optional<double> Number(NumberText box);

    OptionControls controls;
    SessionOptions session;
    // Whether stream decoding warnings are shown in message boxes: set by RefreshOptions, and cleared by the
    // user's answer to a warning until the options are next applied.
    bool warning_boxes = false;

  private:
    std::string FileName() const;
    void TellBadNumber(NumberText box);

    const Files& files_;
    UserInterface& ui_;
    Log& log_;
    WriterLock& writers_;
    std::set<std::string> bad_numbers_told_;  // "option=value"
};

}  // namespace zorvel
