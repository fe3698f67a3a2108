// The options tab: the settings of Zorvel.ini as controls.
#pragma once

#include <QWidget>
#include <array>
#include <cstddef>
#include <memory>

#include "shell/services.h"

class QCheckBox;
class QLineEdit;
class QToolButton;

namespace Ui {
class OptionsPage;
}

namespace zorvel {

class UpDown;

// Every change is at once in `services.options.controls`, where a run reads it; the file is written by the
// save button alone.
class OptionsPage final : public QWidget {
    Q_OBJECT

  public:
    explicit OptionsPage(Services& services, QWidget* parent = nullptr);
    ~OptionsPage() override;

    // Shows the options as they stand, for example after they were read.
    void Refresh();

  private:
    // The controls by their indexes.
    struct Controls {
        std::array<QCheckBox*, 9> checkGeneral;
        std::array<UpDown*, kNumberBoxes.size()> UpDownOption;  // the index less 1, as in kNumberBoxes
        std::array<QLineEdit*, 2> txtSound;
        std::array<QToolButton*, 2> butSound;
        std::array<QToolButton*, 2> butPlay;
    };
    void ConnectOptions();
    void ConnectSounds();
    // Enables what the check boxes allow.
    void EnableControls();
    void Apply();
    void BrowseForSound(std::size_t index);

    Services& services_;
    OptionControls& options_;
    std::unique_ptr<Ui::OptionsPage> ui_;
    Controls controls_;
};

}  // namespace zorvel
