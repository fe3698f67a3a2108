// The search bar's way into a text view of Qt.
#pragma once

#include "gui/text/search_bar.h"

class QTextEdit;

namespace zorvel {

class DocumentSearch final : public SearchTarget {
  public:
    explicit DocumentSearch(QTextEdit& view) : view_(view) {}

    SearchResult Search(const QString& needle, bool match_case, SearchStart start) override;
    std::size_t CountMatches(const QString& needle, bool match_case) const override;
    QString SelectedNeedle() const override;

  private:
    QTextEdit& view_;
};

}  // namespace zorvel
