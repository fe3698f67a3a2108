// The bar below a text that searches it: Ctrl+F opens it, F3 and Enter go on, ESC closes it.
#pragma once

#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <memory>

namespace Ui {
class SearchBar;
}

namespace zorvel {

// Where a search begins.
enum class SearchStart {
    kSelection,  // with the selected text itself, as when the needle is being typed
    kBehind,     // behind the selection
    kAhead,      // ahead of it, backwards
};

enum class SearchResult { kNothing, kFound, kWrapped };

// A view whose text can be searched.
class SearchTarget {
  public:
    virtual ~SearchTarget() = default;
    // Selects the next match and brings it into sight; goes on at the other end of the text.
    virtual SearchResult Search(const QString& needle, bool match_case, SearchStart start) = 0;
    virtual std::size_t CountMatches(const QString& needle, bool match_case) const = 0;
    // What is selected, if it lies in one line and is short enough to be looked for; else nothing.
    virtual QString SelectedNeedle() const = 0;
};

class SearchBar final : public QWidget {
    Q_OBJECT

  public:
    explicit SearchBar(QWidget* parent = nullptr);
    ~SearchBar() override;

    // Searches `target`, which shows itself as `view`, and takes its keys wherever in `owner` the keyboard
    // is. To be called once.
    void Serve(SearchTarget& target, QWidget& view, QWidget& owner);

    // Shows the bar, ready to type in what is looked for.
    void Open();

    // The text has changed; what is said about matches no longer holds.
    void ForgetMatches();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Close();
    void Changed();
    void Search(SearchStart start);
    void ShowCount();
    // Shows how many matches there are and how the one that is selected was come by; each may be empty.
    void Say(const QString& matches, const QString& place);

    std::unique_ptr<Ui::SearchBar> ui_;
    SearchTarget* target_ = nullptr;
    QWidget* view_ = nullptr;
    QString matches_;
    QString place_;
    QTimer count_;  // runs out when nothing was typed for a moment
};

}  // namespace zorvel
