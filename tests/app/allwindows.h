#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

/// A window of the program, and how it is made for a test.
struct WindowCase {
    const char *name;
    std::function<std::shared_ptr<QWidget>()> make;
};

/// Every window that the program opens, boxes and the toolkit's own dialogs left out. A
/// new window is a new line there, and is then looked at by all tests that go through
/// the windows.
[[nodiscard]] const std::vector<WindowCase> &allWindows();
