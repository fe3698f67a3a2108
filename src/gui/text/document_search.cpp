#include "gui/text/document_search.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

namespace zorvel {
namespace {

QTextDocument::FindFlags Flags(bool match_case, bool backwards) {
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindCaseSensitively, match_case);
    flags.setFlag(QTextDocument::FindBackward, backwards);
    return flags;
}

}  // namespace

SearchResult DocumentSearch::Search(const QString& needle, bool match_case, SearchStart start) {
    const QTextDocument& document = *view_.document();
    const bool backwards = start == SearchStart::kAhead;
    const QTextDocument::FindFlags flags = Flags(match_case, backwards);
    QTextCursor from = view_.textCursor();
    if (start == SearchStart::kSelection) from.setPosition(from.selectionStart());
    SearchResult result = SearchResult::kFound;
    QTextCursor match = document.find(needle, from, flags);
    if (match.isNull()) {
        result = SearchResult::kWrapped;
        from.movePosition(backwards ? QTextCursor::End : QTextCursor::Start);
        match = document.find(needle, from, flags);
    }
    if (match.isNull()) return SearchResult::kNothing;
    view_.setTextCursor(match);
    return result;
}

std::size_t DocumentSearch::CountMatches(const QString& needle, bool match_case) const {
    std::size_t count = 0;
    const QTextDocument& document = *view_.document();
    for (QTextCursor match = document.find(needle, 0, Flags(match_case, false)); !match.isNull();
         match = document.find(needle, match, Flags(match_case, false)))
        ++count;
    return count;
}

QString DocumentSearch::SelectedNeedle() const {
    const QString selected = view_.textCursor().selectedText();
    return selected.contains(QChar::ParagraphSeparator) ? QString() : selected;
}

}  // namespace zorvel
