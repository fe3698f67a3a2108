// A label for a text of any length: what does not fit is replaced by "…", and the tool tip shows it whole.
#pragma once

#include <QLabel>

namespace zorvel {

class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString ShownText() const;
};

}  // namespace zorvel
