// Windows on the screen, their controls by their names, and the headers of the usual ones.
#pragma once

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QWidget>
#include <stdexcept>
#include <string>

namespace zorvel::test {

// The control of type T that is called `name`; a test without it fails.
template <typename T>
T& Control(const QWidget& window, const char* name) {
    if (T* control = window.findChild<T*>(name)) return *control;
    throw std::runtime_error(std::string("the window has no control ") + name);
}

// Shows a window and lets it paint and take the keyboard.
inline void ShowActive(QWidget& window) {
    window.show();
    if (!QTest::qWaitForWindowActive(&window)) throw std::runtime_error("the window was not shown");
}

// Waits until a window that opens has the keyboard; false when it never does.
inline bool TakesKeyboard(const QWidget& window) {
    return QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; });
}

// Where the keys of a user go: to an open menu, else to the control with the focus, else to the window in
// front.
inline QWidget* KeyTarget() {
    if (QWidget* menu = QApplication::activePopupWidget()) return menu;
    if (QWidget* control = QApplication::focusWidget()) return control;
    if (QWidget* window = QApplication::activeWindow()) return window;
    throw std::runtime_error("no window has the keyboard");
}
inline void PressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(KeyTarget(), static_cast<Qt::Key>(key), modifiers);
}
inline void TypeText(const QString& text) {
    for (const QChar character : text) {
        const auto key = static_cast<Qt::Key>(character.toUpper().unicode());
        QTest::sendKeyEvent(QTest::Click, KeyTarget(), key, character, Qt::NoModifier);
    }
}

}  // namespace zorvel::test
