// The options tab as a user works with it.
#include "gui/main/options_page.h"

#include <QDir>
#include <QFileDialog>
#include <QStyleOptionSpinBox>

#include "gui/controls.h"
#include "gui/widgets/up_down.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

struct Page {
    test::TestShell shell;
    OptionsPage page{shell.services};

    Page() { test::ShowActive(page); }
    OptionControls& controls() { return shell.options.controls; }
    template <typename T>
    T& Control(const char* name) {
        return test::Control<T>(page, name);
    }
    QLineEdit& Text(const char* name) { return Control<QLineEdit>(name); }
    void Click(const char* name) {
        auto& control = Control<QWidget>(name);
        // A check box is clicked on its box; the middle of it may be empty.
        const bool check_box = qobject_cast<QCheckBox*>(&control) != nullptr;
        QTest::mouseClick(&control, Qt::LeftButton, {},
                          check_box ? QPoint(8, control.height() / 2) : QPoint());
    }
    // Replaces the text of a text box, which a click gives the focus.
    void TypeInto(const char* name, const char* text) {
        Click(name);
        test::PressKey(Qt::Key_A, Qt::ControlModifier);
        test::TypeText(text);
    }
    void ClickSpinner(const char* name, QStyle::SubControl button) {
        auto& spinner = Control<UpDown>(name);
        QStyleOptionSpinBox option;
        option.initFrom(&spinner);
        option.buttonSymbols = spinner.buttonSymbols();
        option.frame = true;
        const QRect rect = spinner.style()->subControlRect(QStyle::CC_SpinBox, &option, button, &spinner);
        QTest::mouseClick(&spinner, Qt::LeftButton, {}, rect.center());
    }
};

// The number boxes: check box, text box and spinner, the limits of the spinner, and the text in the controls.
struct BoxCase {
    const char *check, *text, *spinner;
    const char *lowest, *highest;
    std::string OptionControls::*value;
};
const BoxCase kBoxes[] = {
    {"checkGeneral_1", "txtSlowINIThreshold", "UpDownOption_1", "50", "10000",
     &OptionControls::txtSlowINIThreshold},
    {"checkGeneral_2", "txtSlowTextThreshold", "UpDownOption_2", "50", "10000",
     &OptionControls::txtSlowTextThreshold},
    {"checkGeneral_6", "txtThrottle", "UpDownOption_3", "1", "600", &OptionControls::txtThrottle},
    {"checkGeneral_7", "txtSlowRegistryThreshold", "UpDownOption_4", "50", "10000",
     &OptionControls::txtSlowRegistryThreshold},
    {"checkGeneral_8", "txtCache", "UpDownOption_5", "1", "600", &OptionControls::txtCache},
};

TEST(OptionsPage, ShowsTheOptionsThatWereRead) {
    Page page;
    page.shell.folder.Write("Zorvel.ini",
                            "SlowTextFileThresholdEnabled=True\r\nSlowTextFileThreshold=75\r\n"
                            "AppendToLog=True\r\nSoundsEnabled=True\r\nFinishedSound=\xE9.wav\r\n");
    page.shell.options.ReadOptions();
    page.page.Refresh();
    for (int i = 0; i < 9; ++i) {
        const std::string name = "checkGeneral_" + std::to_string(i);
        EXPECT_EQ(page.Control<QCheckBox>(name.c_str()).isChecked(), i == 2 || i == 5) << i;
    }
    EXPECT_EQ(page.Text("txtSlowTextThreshold").text(), "75");
    EXPECT_TRUE(page.Text("txtSlowTextThreshold").isEnabled());
    EXPECT_FALSE(page.Text("txtSlowINIThreshold").isEnabled());
    EXPECT_TRUE(page.Control<QCheckBox>("checkSoundsEnabled").isChecked());
    EXPECT_EQ(page.Text("txtSound_1").text(), QStringLiteral("\u00C9.WAV"));
    EXPECT_TRUE(page.Text("txtSound_1").isEnabled());
}

TEST(OptionsPage, ACheckBoxEnablesItsNumberBoxAndSpinner) {
    for (const BoxCase& c : kBoxes) {
        Page page;
        for (const bool enabled : {true, false}) {
            page.Click(c.check);
            for (const BoxCase& other : kBoxes) {
                const bool expected = enabled && other.check == c.check;
                EXPECT_EQ(page.Text(other.text).isEnabled(), expected) << c.check << other.text;
                EXPECT_EQ(page.Control<UpDown>(other.spinner).isEnabled(), expected) << other.spinner;
            }
        }
    }
}

TEST(OptionsPage, EveryCheckBoxIsAppliedAtOnce) {
    Page page;
    for (std::size_t i = 0; i < 9; ++i) {
        page.Click(("checkGeneral_" + std::to_string(i)).c_str());
        EXPECT_EQ(page.controls().checkGeneral[i], 1) << i;
    }
    const SessionOptions& session = page.shell.options.session;
    EXPECT_TRUE(session.AppNamesWithSpacesIllegal);
    EXPECT_FALSE(session.WarnStreamParsingErrors);
    EXPECT_TRUE(session.CreateDMPFileOnError);
    EXPECT_TRUE(session.AppendToLog);
    page.Click("checkGeneral_3");
    EXPECT_TRUE(session.WarnStreamParsingErrors);
    EXPECT_TRUE(page.shell.options.warning_boxes);
}

TEST(OptionsPage, WhatIsTypedIntoANumberBoxCountsAtOnceAndIsNotChecked) {
    for (const BoxCase& c : kBoxes) {
        Page page;
        page.Click(c.check);
        page.TypeInto(c.text, "99999x");
        EXPECT_EQ(page.controls().*c.value, "99999x");
        test::PressKey(Qt::Key_Return);
        page.Control<QPushButton>("butApply").setFocus();
        EXPECT_EQ(page.Text(c.text).text(), "99999x") << c.text;
    }
}

TEST(OptionsPage, ASpinnerStepsWithinItsRange) {
    for (const BoxCase& c : kBoxes) {
        Page page;
        page.Click(c.check);
        QLineEdit& text = page.Text(c.text);
        text.setText("300");
        page.ClickSpinner(c.spinner, QStyle::SC_SpinBoxUp);
        EXPECT_EQ(text.text(), "301") << c.text;
        page.ClickSpinner(c.spinner, QStyle::SC_SpinBoxDown);
        test::PressKey(Qt::Key_Down);
        EXPECT_EQ(page.controls().*c.value, "299") << c.text;
        for (const char* beyond : {"99999", c.highest}) {
            text.setText(beyond);
            test::PressKey(Qt::Key_Up);
            EXPECT_EQ(page.controls().*c.value, c.highest) << c.text;
        }
        for (const char* below : {"-3", "", c.lowest}) {
            text.setText(below);
            page.ClickSpinner(c.spinner, QStyle::SC_SpinBoxDown);
            EXPECT_EQ(page.controls().*c.value, c.lowest) << c.text << below;
        }
    }
}

TEST(OptionsPage, SoundsAreChosenAndPlayedOnlyWhileEnabled) {
    Page page;
    page.shell.folder.Write("Ding.wav", "");
    const auto enabled = [&](bool expected) {
        for (const char* name :
             {"txtSound_0", "butSound_0", "butPlay_0", "txtSound_1", "butSound_1", "butPlay_1"}) {
            EXPECT_EQ(page.Control<QWidget>(name).isEnabled(), expected) << name;
        }
    };
    enabled(false);
    page.Click("checkSoundsEnabled");
    enabled(true);
    page.shell.options.warning_boxes = false;  // as the user's answer during a run has left it
    page.TypeInto("txtSound_1", "ding");
    page.TypeInto("txtSound_0", "dong");
    EXPECT_EQ(page.shell.options.session.FinishedSound, "ding") << "at the next event";
    EXPECT_EQ(page.shell.options.session.WarningSound, "dong");
    EXPECT_FALSE(page.shell.options.warning_boxes);
    EXPECT_EQ(page.controls().txtSound[1], "ding");
    page.Text("txtSound_0").clear();
    page.Click("butPlay_1");
    page.Click("butPlay_0");  // an empty box is silent
    EXPECT_EQ(page.shell.ui.sounds, std::vector<std::string>{page.shell.files.Path("ding.WAV")});
    page.Click("checkSoundsEnabled");
    enabled(false);
    EXPECT_FALSE(page.shell.options.session.SoundsEnabled);
}

TEST(OptionsPage, ASoundIsFoundInTheProgramFolder) {
    const struct {
        const char *button, *text, *title;
        bool accepted;
    } cases[] = {
        {"butSound_0", "txtSound_0", "Please select the WAV file to play for 'Warning' notifications", true},
        {"butSound_1", "txtSound_1", "Please select the WAV file to play for 'Finished' notifications", true},
        {"butSound_1", "txtSound_1", "Please select the WAV file to play for 'Finished' notifications",
         false},
    };
    for (const auto& c : cases) {
        Page page;
        page.shell.folder.Write("Ding.wav", "");
        page.Click("checkSoundsEnabled");
        page.Text(c.text).setText("before");
        page.Click(c.button);
        auto* dialog = page.page.findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), c.title);
        EXPECT_EQ(dialog->nameFilters(), QStringList{"WAV Files (*.wav)"});
        const QString folder = QString::fromStdString(page.shell.folder.path().string());
        EXPECT_EQ(dialog->directory().absolutePath(), folder);
        dialog->selectFile(folder + "/Ding.wav");
        ASSERT_TRUE(test::TakesKeyboard(*dialog));
        test::PressKey(c.accepted ? Qt::Key_Return : Qt::Key_Escape);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(page.Text(c.text).text(), c.accepted ? folder + "/Ding.wav" : QString("before"));
    }
}

TEST(OptionsPage, SavingWritesWhatTheControlsHold) {
    Page page;
    page.Click("checkGeneral_6");
    page.Text("txtThrottle").setText("3.5");
    page.Click("butApply");
    const std::string file = page.shell.folder.Read("Zorvel.ini");
    EXPECT_NE(file.find("eDirThrottleEnabled=True\r\neDirThrottle=3.5\r\n"), std::string::npos) << file;
    ASSERT_EQ(page.shell.ui.boxes.size(), 1U);
    EXPECT_EQ(page.shell.ui.boxes[0].text, "Current option settings written to configuration file");
    EXPECT_EQ(page.shell.ui.boxes[0].icon, MessageIcon::kInformation);
}

}  // namespace
}  // namespace zorvel
