// The welcome window, shown at every start until the user has had enough of it.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmWelcome;
}

namespace zorvel {

class frmWelcome final : public QDialog {
    Q_OBJECT

  public:
    explicit frmWelcome(QWidget* parent = nullptr);
    ~frmWelcome() override;

    // Whether the user wants it suppressed from now on; to be asked when it was closed, however that was
    // done.
    bool suppress() const;

  private:
    std::unique_ptr<Ui::frmWelcome> ui_;
};

}  // namespace zorvel
