// Windows on the screen, and their controls by their names.
#pragma once

#include <QTest>
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

}  // namespace zorvel::test
