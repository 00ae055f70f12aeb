#pragma once

#include <QString>

class MdiChild;
class QAction;

/// What a document view may ask of the main window, so that views need not know
/// it. Found by `dynamic_cast<WorkspaceWindow *>(QApplication::activeWindow())`.
class WorkspaceWindow {
public:
    virtual ~WorkspaceWindow() = default;

    /// The view of the active sub window, or null.
    [[nodiscard]] virtual MdiChild *activeMdiChild() const = 0;
    /// Shows a text in the status bar; 0 ms means until replaced.
    virtual void showMessage(const QString &text, int timeoutMs) = 0;
    [[nodiscard]] virtual QAction *getAction_FitToWindow() const = 0;
};
