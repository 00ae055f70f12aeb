#pragma once

#include "ui_filesdialog.h"
#include "views/converterdialog.h"
#include "views/dialogentry.h"

/// Imports a file of the template's format.
class TemplateImportDialog : public FormDialog<Ui::FilesDialog> {
    Q_OBJECT

public:
    explicit TemplateImportDialog(QWidget *parent = nullptr);

    /// Stays open when the input file cannot be read or the output not be written.
    void accept() override;
};

/// The line of the table of its folder, from which the main window makes the action.
inline constexpr DialogEntry TemplateImportEntry{
    "action_TemplateImportDialog", "menu_Import_Filters",
    QT_TRANSLATE_NOOP("DialogEntry", "&Template..."),
    QT_TRANSLATE_NOOP("DialogEntry", "Convert Template File Into Elevation File"),
    makeDialog<TemplateImportDialog>};
