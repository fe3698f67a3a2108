#include "shell/options.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <variant>

#include "platform/code_page.h"
#include "platform/error.h"
#include "shell/formats.h"
#include "shell/report_error.h"
#include "shell/text_records.h"

namespace zorvel {
namespace {

using Box = CheckGeneral;
struct Sound {
    std::size_t index;
};
struct SoundsEnabledBox {};

// One setting: the key as it is written, and the control that holds it.
struct Setting {
    std::string_view key;
    std::variant<Box, SoundsEnabledBox, NumberText, Sound> control;
};

// All settings, in the order in which they are written.
const std::array<Setting, 17> kSettings = {{
    {"AppNamesWithSpacesIllegal", Box::kAppNamesWithSpacesIllegal},
    {"SlowINIFileThresholdEnabled", Box::kSlowINIFileThreshold},
    {"SlowINIFileThreshold", &OptionControls::txtSlowINIThreshold},
    {"SlowTextFileThresholdEnabled", Box::kSlowTextFileThreshold},
    {"SlowTextFileThreshold", &OptionControls::txtSlowTextThreshold},
    {"SlowRegistryThresholdEnabled", Box::kSlowRegistryThreshold},
    {"SlowRegistryThreshold", &OptionControls::txtSlowRegistryThreshold},
    {"IgnoreStreamParsingErrors", Box::kIgnoreStreamParsingErrors},
    {"CreateDMPFileOnError", Box::kCreateDMPFileOnError},
    {"AppendToLog", Box::kAppendToLog},
    {"eDirThrottleEnabled", Box::kEDirThrottle},
    {"eDirThrottle", &OptionControls::txtThrottle},
    {"AutoTreeCacheRefreshEnabled", Box::kAutoTreeCacheRefresh},
    {"AutoTreeCacheRefresh", &OptionControls::txtCache},
    {"SoundsEnabled", SoundsEnabledBox{}},
    {"WarningSound", Sound{0}},
    {"FinishedSound", Sound{1}},
}};

// Calls `check_box` with the state of a boolean setting's box, or `text` with the text of any other setting.
template <typename Controls, typename OnCheckBox, typename OnText>
void Visit(const Setting& setting, Controls& controls, OnCheckBox check_box, OnText text) {
    if (const auto* box = std::get_if<Box>(&setting.control)) {
        check_box(controls.checkGeneral[static_cast<std::size_t>(*box)]);
    } else if (std::holds_alternative<SoundsEnabledBox>(setting.control)) {
        check_box(controls.checkSoundsEnabled);
    } else if (const auto* number = std::get_if<NumberText>(&setting.control)) {
        text(controls.*(*number));
    } else {
        text(controls.txtSound[std::get<Sound>(setting.control).index]);
    }
}

std::string_view KeyOf(NumberText box) {
    const auto holds = [box](const Setting& setting) {
        const auto* number = std::get_if<NumberText>(&setting.control);
        return number != nullptr && *number == box;
    };
    return std::find_if(kSettings.begin(), kSettings.end(), holds)->key;
}

void Apply(std::string_view key, const std::string& value, bool flag, OptionControls& controls) {
    for (const Setting& setting : kSettings) {
        if (!EqualIgnoringCase(setting.key, key)) continue;
        Visit(
            setting, controls, [&](int& box) { box = flag ? 1 : 0; },
            [&](std::string& text) { text = value; });
    }
}

}  // namespace

std::string Chk2Text(int check_state) {
    return check_state == 1 ? "True" : "False";
}

std::string Spin(std::string_view text, int steps, const SpinnerRange& range) {
    std::int64_t value = 0;
    try {
        value = WholeValue(text);
    } catch (const Error&) {  // a number beyond 32 bits is beyond every range
        value = text.find('-') < text.find_first_of("0123456789") ? std::numeric_limits<std::int32_t>::min()
                                                                  : std::numeric_limits<std::int32_t>::max();
    }
    return std::to_string(std::clamp<std::int64_t>(value + steps, range.minimum, range.maximum));
}

void ReadControls(InputFile file, OptionControls& controls) {
    FieldReader reader(std::move(file));
    std::string key;
    bool flag = false;
    while (!reader.AtEnd()) {
        const std::string record = reader.Next();
        const std::size_t equals = record.find('=');
        std::string value = UpperCase(record);
        if (equals != std::string::npos) {
            key = value.substr(0, equals);
            value.erase(0, equals + 1);
        }
        if (value == "TRUE") flag = true;
        if (value == "FALSE") flag = false;
        Apply(key, value, flag, controls);
    }
}

std::string OptionsText(const OptionControls& controls) {
    std::string text;
    for (const Setting& setting : kSettings) {
        text.append(setting.key) += '=';
        Visit(
            setting, controls, [&](int box) { text += Chk2Text(box); },
            [&](const std::string& value) { text += value; });
        text += "\r\n";
    }
    return text;
}

Options::Options(const Files& files, UserInterface& ui, Log& log, WriterLock& writers)
    : files_(files), ui_(ui), log_(log), writers_(writers) {}

std::string Options::FileName() const {
    return files_.Path("Zorvel.ini");
}

bool Options::ReadOptions() {
    bool complete = false;
    try {
        ReadControls(files_.Open(FileName()), controls);
        complete = true;
    } catch (...) {
        const Error error = CurrentError();
        ui_.Tell("Error" + ErrorText(error) + " occurred during Options File Read.", MessageIcon::kCritical,
                 error.detail());
        LogDetail(log_, error);
    }
    RefreshOptions();
    return complete;
}

std::optional<double> Options::Number(NumberText box) {
    try {
        WholeValue(controls.*box);
        return NumericValue(controls.*box);
    } catch (const Error&) {
        TellBadNumber(box);
        return std::nullopt;
    }
}

void Options::TellBadNumber(NumberText box) {
    const std::string key(KeyOf(box));
    const std::string& value = controls.*box;
    if (!bad_numbers_told_.insert(key + '=' + value).second) return;
    const std::string text = "The value '" + value + "' of the option " + key +
                             " is not a number of 32 bits - the option is left out of account";
    ui_.Tell(text, MessageIcon::kExclamation);
    log_.WriteLog("WARNING: " + text);
}

bool Options::WriteOptions() {
    const auto hold = writers_.Acquire();
    if (!hold) return false;
    try {
        files_.WriteInPlace(FileName(), [this](OutputFile& file) { file.Write(OptionsText(controls)); });
    } catch (...) {
        const Error error = CurrentError();
        ui_.Tell("Error" + ErrorText(error) + " occurred during Options File Write.", MessageIcon::kCritical,
                 error.detail());
        LogUnexpectedError(log_, error, "Options File Write procedure");
    }
    return true;
}

void Options::RefreshOptions() {
    controls.enabled.SlowINIThreshold = controls.Checked(Box::kSlowINIFileThreshold);
    controls.enabled.SlowTextThreshold = controls.Checked(Box::kSlowTextFileThreshold);
    controls.enabled.SlowRegistryThreshold = controls.Checked(Box::kSlowRegistryThreshold);
    controls.enabled.Throttle = controls.Checked(Box::kEDirThrottle);
    controls.enabled.Cache = controls.Checked(Box::kAutoTreeCacheRefresh);
    session.AppNamesWithSpacesIllegal = controls.Checked(Box::kAppNamesWithSpacesIllegal);
    session.WarnStreamParsingErrors = !controls.Checked(Box::kIgnoreStreamParsingErrors);
    session.CreateDMPFileOnError = controls.Checked(Box::kCreateDMPFileOnError);
    session.AppendToLog = controls.Checked(Box::kAppendToLog);
    session.SoundsEnabled = controls.checkSoundsEnabled == 1;
    RefreshSounds();
    warning_boxes = session.WarnStreamParsingErrors;
}

void Options::RefreshSounds() {
    session.FinishedSound = controls.txtSound[1];
    session.WarningSound = controls.txtSound[0];
}

}  // namespace zorvel
