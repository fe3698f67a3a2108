// A number box whose spinner keeps a range that typing does not.
#pragma once

#include <QAbstractSpinBox>
#include <QLineEdit>

#include "shell/options.h"

namespace zorvel {

// A text box that takes any text, with the buttons, keys and wheel of a spin box. Only they keep the range;
// what is typed stays as it is.
class UpDown final : public QAbstractSpinBox {
    Q_OBJECT

  public:
    explicit UpDown(QWidget* parent = nullptr);

    void SetRange(const SpinnerRange& range) { range_ = range; }
    // The text box, with its own object name.
    QLineEdit& TextBox() const { return *lineEdit(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    void stepBy(int steps) override;

  protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    // A box that is only passed over while scrolling keeps its value.
    void wheelEvent(QWheelEvent* event) override;

  private:
    SpinnerRange range_;
};

}  // namespace zorvel
