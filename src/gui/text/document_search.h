// The find bar's way into a text view of Qt.
#pragma once

#include "gui/text/find_bar.h"

class QTextEdit;

namespace zorvel {

class DocumentSearch final : public FindTarget {
  public:
    explicit DocumentSearch(QTextEdit& view) : view_(view) {}

    FindResult Find(const QString& needle, bool match_case, FindStart start) override;
    std::size_t CountMatches(const QString& needle, bool match_case) const override;
    QString SelectedNeedle() const override;

  private:
    QTextEdit& view_;
};

}  // namespace zorvel
