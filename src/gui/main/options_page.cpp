#include "gui/main/options_page.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "gui/widgets/qt_text.h"
#include "gui/widgets/up_down.h"
#include "ui_options_page.h"

namespace zorvel {

OptionsPage::OptionsPage(Services& services, QWidget* parent)
    : QWidget(parent),
      services_(services),
      options_(services.options.controls),
      ui_(std::make_unique<Ui::OptionsPage>()) {
    ui_->setupUi(this);
    controls_ = {
        {ui_->checkGeneral_0, ui_->checkGeneral_1, ui_->checkGeneral_2, ui_->checkGeneral_3,
         ui_->checkGeneral_4, ui_->checkGeneral_5, ui_->checkGeneral_6, ui_->checkGeneral_7,
         ui_->checkGeneral_8},
        {ui_->UpDownOption_1, ui_->UpDownOption_2, ui_->UpDownOption_3, ui_->UpDownOption_4,
         ui_->UpDownOption_5},
        {ui_->txtSound_0, ui_->txtSound_1},
        {ui_->butSound_0, ui_->butSound_1},
        {ui_->butPlay_0, ui_->butPlay_1},
    };
    const std::array<const char*, kNumberBoxes.size()> text_boxes = {
        "txtSlowINIThreshold", "txtSlowTextThreshold", "txtThrottle", "txtSlowRegistryThreshold", "txtCache"};
    for (std::size_t i = 0; i < kNumberBoxes.size(); ++i) {
        controls_.UpDownOption[i]->SetRange(kNumberBoxes[i].range);
        controls_.UpDownOption[i]->TextBox().setObjectName(QLatin1String(text_boxes[i]));
    }
    Refresh();
    ConnectOptions();
    ConnectSounds();
    connect(ui_->butApply, &QPushButton::clicked, this, &OptionsPage::Apply);
}

OptionsPage::~OptionsPage() = default;

void OptionsPage::ConnectOptions() {
    for (std::size_t i = 0; i < controls_.checkGeneral.size(); ++i) {
        connect(controls_.checkGeneral[i], &QCheckBox::clicked, this, [this, i](bool checked) {
            options_.checkGeneral[i] = checked ? 1 : 0;
            services_.options.RefreshOptions();
            EnableControls();
        });
    }
    for (std::size_t i = 0; i < kNumberBoxes.size(); ++i) {
        connect(&controls_.UpDownOption[i]->TextBox(), &QLineEdit::textChanged, this,
                [this, i](const QString& text) { options_.*kNumberBoxes[i].text = FromQString(text); });
    }
}

void OptionsPage::ConnectSounds() {
    connect(ui_->checkSoundsEnabled, &QCheckBox::clicked, this, [this](bool checked) {
        options_.checkSoundsEnabled = checked ? 1 : 0;
        EnableControls();
        services_.options.RefreshOptions();
    });
    for (std::size_t i = 0; i < options_.txtSound.size(); ++i) {
        connect(controls_.txtSound[i], &QLineEdit::textChanged, this, [this, i](const QString& text) {
            options_.txtSound[i] = FromQString(text);
            services_.options.RefreshSounds();
        });
        connect(controls_.butSound[i], &QToolButton::clicked, this, [this, i] { BrowseForSound(i); });
        connect(controls_.butPlay[i], &QToolButton::clicked, this,
                [this, i] { services_.sounds.PlayEventSound(options_.txtSound[i]); });
    }
}

void OptionsPage::Refresh() {
    for (std::size_t i = 0; i < controls_.checkGeneral.size(); ++i) {
        controls_.checkGeneral[i]->setChecked(options_.checkGeneral[i] == 1);
    }
    for (std::size_t i = 0; i < kNumberBoxes.size(); ++i) {
        controls_.UpDownOption[i]->TextBox().setText(ToQString(options_.*kNumberBoxes[i].text));
    }
    ui_->checkSoundsEnabled->setChecked(options_.checkSoundsEnabled == 1);
    for (std::size_t i = 0; i < options_.txtSound.size(); ++i) {
        controls_.txtSound[i]->setText(ToQString(options_.txtSound[i]));
    }
    EnableControls();
}

void OptionsPage::EnableControls() {
    for (std::size_t i = 0; i < kNumberBoxes.size(); ++i) {
        controls_.UpDownOption[i]->setEnabled(options_.enabled.*kNumberBoxes[i].enabled);
    }
    const bool sounds = options_.checkSoundsEnabled == 1;
    for (std::size_t i = 0; i < options_.txtSound.size(); ++i) {
        controls_.txtSound[i]->setEnabled(sounds);
        controls_.butSound[i]->setEnabled(sounds);
        controls_.butPlay[i]->setEnabled(sounds);
    }
}

void OptionsPage::Apply() {
    if (!services_.options.WriteOptions()) return;
    services_.ui.Tell("Current option settings written to configuration file", MessageIcon::kInformation);
}

void OptionsPage::BrowseForSound(std::size_t index) {
    const QString kind = index == 0 ? QStringLiteral("'Warning'") : QStringLiteral("'Finished'");
    auto* dialog = new QFileDialog(
        this, QStringLiteral("Please select the WAV file to play for %1 notifications").arg(kind),
        ToQString(services_.files.ProgramFolder()), QStringLiteral("WAV Files (*.wav)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, controls_.txtSound[index], &QLineEdit::setText);
    dialog->open();
}

}  // namespace zorvel
