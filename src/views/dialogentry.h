#pragma once

#include <QDialog>

#include <memory>

/// A menu entry that opens a dialog. A folder of dialogs exports a table of them, and
/// the main window makes the entries, so that a new dialog is a new line of its table.
struct DialogEntry {
    const char *object; ///< the name of the action
    const char *menu;   ///< the name of the menu that the entry is appended to
    const char *text;   ///< to be translated in the context "DialogEntry"
    const char *title;  ///< of the dialog, for the help of the entry; translated alike
    std::unique_ptr<QDialog> (*make)(QWidget *parent);
};

/// The usual way to make a dialog of a table.
template <class Dialog> std::unique_ptr<QDialog> makeDialog(QWidget *parent)
{
    return std::make_unique<Dialog>(parent);
}
