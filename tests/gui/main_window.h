// The whole program in a folder of its own, without a display, and a user who answers its questions.
#pragma once

#include <QListView>
#include <QTabWidget>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include "directory/open_directory.h"
#include "gui/controls.h"
#include "gui/main/frm_zorvel.h"
#include "platform/clock.h"
#include "support/databases.h"

namespace zorvel::test {

// The system's clock; a test can act when it is read.
class WatchedClock final : public Clock {
  public:
    std::function<void()> on_timer;

    DateTime Now() const override { return clock_.Now(); }
    double Timer() const override {
        if (on_timer) on_timer();
        return clock_.Timer();
    }
    void Sleep(double seconds) override { clock_.Sleep(seconds); }

  private:
    SystemClock clock_;
};

class MainWindowTest : public testing::Test {
  protected:
    // Two trees: T1 with applications in three of its containers, and T2 with one.
    MainWindowTest() {
        FillWholeProgramFolder(folder_, kFirstTree());
        folder_.Write("Directory.toml",
                      "preferred = \"T1\"\n"
                      "[[tree]]\nname = \"T1\"\nldif = \"Trees/T1.ldif\"\n"
                      "[[tree]]\nname = \"T2\"\nldif = \"Trees/T2.ldif\"\n");
        folder_.Write("Trees/T2.ldif", LdifOrganization("ZETA") + LdifApplication("Zip", "o=ZETA"));
        folder_.Write("TempData/welcome.nal", "suppressed\r\n");
        settings_.tree_read_countdown = 0;
        settings_.pace = {0, 0};
        WatchDialogs();
    }

    static std::string kFirstTree() {
        return LdifOrganization("SITE") + LdifUnit("APPS", "o=SITE") + LdifUnit("EMPTY", "o=SITE") +
               LdifUnit("DEEP", "ou=EMPTY,o=SITE") + LdifUnit("BARE", "o=SITE") + LdifOrganization("ACME") +
               LdifApplication("Word", "ou=APPS,o=SITE") + LdifApplication("Excel", "ou=APPS,o=SITE") +
               LdifApplication("Paint", "ou=APPS,o=SITE") +
               LdifApplication("Deep One", "ou=DEEP,ou=EMPTY,o=SITE") + LdifApplication("Tool", "o=ACME");
    }

    // Starts the program; false when it would end at once.
    bool Start() {
        files_ = std::make_unique<Files>(folder_.path());
        window_ = std::make_unique<frmZorvel>(*files_, clock_, OpenDirectory, settings_);
        if (!window_->StartUp("")) return false;
        window_->activateWindow();  // as a window manager does when the window of the reading closes
        return TakesKeyboard(*window_);
    }

    // What the user does with the next dialogs, in their order; a message box that finds none is answered
    // with its default button.
    void OnDialog(std::function<void(QDialog&)> action) { actions_.push_back(std::move(action)); }
    // Drops what was to be done with dialogs that went before they were seen.
    void ForgetActions() { actions_.clear(); }
    void Answer(QMessageBox::StandardButton button) {
        OnDialog([button](QDialog& dialog) {
            QTest::mouseClick(static_cast<QMessageBox&>(dialog).button(button), Qt::LeftButton);
        });
    }

    // A control of the window itself; its dialogs have some of the same name.
    template <typename Widget>
    Widget& Get(const char* name) {
        auto* control = window_->centralWidget()->findChild<Widget*>(name);
        return control != nullptr ? *control : Control<Widget>(*window_, name);
    }
    QAction& Menu(const char* name) { return *window_->findChild<QAction*>(name); }
    void Click(const char* button) {
        QTest::mouseClick(&Get<QAbstractButton>(button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QTreeView& tree() { return Get<QTreeView>("TreeView1"); }
    QListView& list() { return Get<QListView>("ListView1"); }
    QTabWidget& tabs() { return Get<QTabWidget>("SSTab1"); }
    QString Text(const char* label) { return Get<QLabel>(label).text(); }
    QString Status() { return Text("barStatus_2"); }

    // The nodes that are shown, depth first, each indented by its level; "*" stands before a bold one.
    std::vector<std::string> Nodes() { return NodesBelow({}, 0); }
    QModelIndex Node(const QString& text) {
        const auto found = tree().model()->match(tree().model()->index(0, 0), Qt::DisplayRole, text, 1,
                                                 Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? QModelIndex() : found.front();
    }
    void ClickNode(const QString& text) {
        const QModelIndex index = Node(text);
        ASSERT_TRUE(index.isValid()) << text.toStdString();
        tree().scrollTo(index);
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualRect(index).center());
        QCoreApplication::processEvents();
    }
    void ClickItem(int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, keys,
                          list().visualRect(list().model()->index(row, 0)).center());
    }
    // The lines of the list, "+" before a selected one.
    std::vector<std::string> Items() {
        std::vector<std::string> items;
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            const QModelIndex index = list().model()->index(row, 0);
            items.push_back((list().selectionModel()->isSelected(index) ? "+" : "") +
                            index.data().toString().toStdString());
        }
        return items;
    }
    // What the log holds; only after the window is gone, as the log is written when it ends.
    std::string LogText() {
        window_.reset();
        return folder_.Read("Zorvel.log");
    }

    TempFolder folder_;
    ControllerSettings settings_;
    WatchedClock clock_;
    std::vector<std::string> boxes_;  // the texts of the message boxes so far
    std::unique_ptr<frmZorvel> window_;

  private:
    std::vector<std::string> NodesBelow(const QModelIndex& parent, std::size_t level) {
        std::vector<std::string> nodes;
        for (int row = 0; row < tree().model()->rowCount(parent); ++row) {
            const QModelIndex index = tree().model()->index(row, 0, parent);
            const bool bold = index.data(Qt::FontRole).value<QFont>().bold();
            nodes.push_back(std::string(level, ' ') + (bold ? "*" : "") +
                            index.data().toString().toStdString());
            for (std::string& node : NodesBelow(index, level + 1))
                nodes.push_back(std::move(node));
        }
        return nodes;
    }
    // A timer a look: one dialog can open another while it is being answered.
    void WatchDialogs() {
        QTimer::singleShot(1, &watch_, [this] {
            WatchDialogs();
            AnswerDialog();
        });
    }
    void AnswerDialog() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || answered_.contains(dialog) || QApplication::activeWindow() != dialog) return;
        answered_.insert(dialog);
        QObject::connect(dialog, &QObject::destroyed, &watch_, [this, dialog] { answered_.erase(dialog); });
        auto* box = qobject_cast<QMessageBox*>(dialog);
        if (box != nullptr) boxes_.push_back(box->text().toStdString());
        if (!actions_.empty()) {
            const auto action = std::move(actions_.front());
            actions_.erase(actions_.begin());
            action(*dialog);
        } else if (box != nullptr) {
            PressKey(Qt::Key_Return);
        } else {
            ADD_FAILURE() << "an unexpected dialog: " << dialog->objectName().toStdString();
            dialog->reject();
        }
    }

    std::unique_ptr<Files> files_;
    QObject watch_;
    std::set<QObject*> answered_;
    std::vector<std::function<void(QDialog&)>> actions_;
};

}  // namespace zorvel::test
