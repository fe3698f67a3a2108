// Reads arbitrary bytes as Zorvel.ini: boxes are checked or not, numbers and spinners keep to their ranges,
// and what a line can hold reads the same when it is written again.
#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz_input.h"
#include "platform/code_page.h"
#include "shell/formats.h"
#include "shell/options.h"

namespace zorvel::fuzz {
namespace {

constexpr int kMostSteps = 3;

bool StaysOneField(std::string_view text) {
    return text.find_first_of(",\r\n") == std::string_view::npos;
}

void CheckNumber(const std::string& text, const SpinnerRange& range) {
    Readable({errors::kOverflow}, [&] { return WholeValue(text); });
    for (const int steps : {-kMostSteps, 0, kMostSteps}) {
        const std::string spun = Spin(text, steps, range);
        Require(WholeValue(spun) >= range.minimum && WholeValue(spun) <= range.maximum);
    }
}

}  // namespace

void TestOneInput(std::string_view input) {
    OptionControls controls;
    ReadControls(AsFile(input), controls);
    Require(std::all_of(controls.checkGeneral.begin(), controls.checkGeneral.end(),
                        [](int box) { return box == 0 || box == 1; }));
    bool one_field = true;
    for (const NumberBox& box : kNumberBoxes) {
        CheckNumber(controls.*box.text, box.range);
        one_field = one_field && StaysOneField(controls.*box.text);
    }
    for (const std::string& sound : controls.txtSound) {
        Require(UpperCase(sound) == sound);
        one_field = one_field && StaysOneField(sound);
    }
    if (!one_field) return;
    const std::string text = OptionsText(controls);
    OptionControls again;
    ReadControls(AsFile(text), again);
    Require(OptionsText(again) == text);
}

}  // namespace zorvel::fuzz
