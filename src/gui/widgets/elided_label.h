// A label for a text of any length on one line.
#pragma once

#include <QLabel>

namespace zorvel {

// Shows the text elided in the middle where it does not fit, and the whole of it in its tool tip. text() is
// always the whole.
class ElidedLabel final : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QWidget* parent = nullptr) : QLabel(parent) {}

    // What is shown of the text.
    QString ShownText() const;

    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zorvel
