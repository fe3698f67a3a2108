// A read-only view of any number of lines, of which it lays out those in sight.
#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPoint>
#include <QRectF>
#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

#include "gui/text/search_bar.h"
#include "viewers/rich_lines.h"

class QMimeData;

namespace zorvel {

class LineView final : public QAbstractScrollArea, public SearchTarget {
    Q_OBJECT

  public:
    explicit LineView(QWidget* parent = nullptr);
    ~LineView() override;

    // Shows the rich text file `path` from its top. Raises error 53, 70, 75 or 76, and then shows what it
    // did.
    void ReadFile(const Files& files, std::string_view path);
    // Shows rich text, given as bytes of Windows-1252, from its top.
    void SetRichText(std::string_view rtf);
    void Clear();

    const RichLines& lines() const { return *lines_; }
    // All of the text for the clipboard: plain, HTML and RTF. The caller, mostly the clipboard, owns it.
    QMimeData* MakeMimeData() const;

    // The selection, [begin, end) of lines().text().
    std::size_t selection_begin() const { return std::min(anchor_, cursor_); }
    std::size_t selection_end() const { return std::max(anchor_, cursor_); }
    void Select(std::size_t anchor, std::size_t cursor);
    void Copy() const;
    void SelectAll();

    // SearchTarget
    SearchResult Search(const QString& needle, bool match_case, SearchStart start) override;
    std::size_t CountMatches(const QString& needle, bool match_case) const override;
    QString SelectedNeedle() const override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Where the character at an offset is painted; outside the viewport when it is not in sight.
    QRectF CharacterRect(std::size_t offset) const;
    // The line where the cursor stands, from 0.
    std::size_t CursorLine() const { return lines_->LineAt(cursor_); }

  Q_SIGNALS:
    void CursorMoved();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    // What a font's characters take.
    struct Cell {
        double width = 1;
        double height = 1;
        double ascent = 1;
    };

    void SetLines(std::shared_ptr<const RichLines> lines);
    void Measure();
    void UpdateScrollBars();
    // Whole lines and columns in sight, at least 1.
    std::size_t Rows() const;
    std::size_t Columns() const;
    std::size_t FirstLine() const;
    std::size_t FirstColumn() const;

    std::size_t OffsetAt(QPoint point) const;
    void MoveCursor(std::size_t offset, bool extend);
    bool MoveBy(const QKeyEvent& key);
    void MoveLines(std::ptrdiff_t lines, bool extend);
    void EnsureVisible(std::size_t offset);
    void DragTo(QPoint point);
    QMimeData* MakeSelectionData() const;

    std::shared_ptr<const RichLines> lines_;
    Cell cell_;
    std::size_t anchor_ = 0;
    std::size_t cursor_ = 0;
    std::size_t wanted_column_ = 0;  // of the cursor, when it comes to a line that is long enough
    // While the mouse selects: the word that the double click chose, or an empty range.
    bool dragging_ = false;
    std::size_t word_begin_ = 0;
    std::size_t word_end_ = 0;
    QBasicTimer drag_timer_;  // scrolls while the mouse is held outside
};

}  // namespace zorvel
