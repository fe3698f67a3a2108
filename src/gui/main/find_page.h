// The Find tab: the box in which a search is typed or chosen, and its results.
#pragma once

#include <QWidget>
#include <memory>
#include <string_view>

#include "find/find_box.h"
#include "find/find_display.h"
#include "platform/files.h"
#include "platform/user_interface.h"

class QKeyEvent;
namespace Ui {
class FindPage;
}

namespace zorvel {

class FindPage final : public QWidget, public FindDisplay {
    Q_OBJECT

  public:
    FindPage(const Files& files, UserInterface& user, QWidget* parent);
    ~FindPage() override;

    // What a search that is started now looks for; nothing when there is nothing to find yet, and then the
    // box waits to be filled in.
    std::optional<std::string> PatternToFind();

    // FindDisplay
    void HideLabInfo() override;
    void LoadResults(std::string_view path) override;
    void ShowLabInfo(std::string_view text) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    // Enter was pressed in the box: the search is to be started.
    void SearchWanted();

  private:
    // The box takes the focus: its text is selected, by a click when the button is let go.
    void Enter(Qt::FocusReason reason);
    void SelectText();
    // A key was pressed in the box. True when there is nothing more to be done with it.
    bool PressKey(const QKeyEvent& event);
    void ShowDetail();
    void ShowInfo();
    void SendToClipboard();

    const Files& files_;
    UserInterface& user_;
    std::unique_ptr<Ui::FindPage> ui_;
    FindBox box_;
    bool clicked_into_ = false;  // by a button that is still pressed
};

}  // namespace zorvel
