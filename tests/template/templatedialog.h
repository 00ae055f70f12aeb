#pragma once

#include "tooldialogs/tooldialog.h"
#include "ui_filesdialog.h"
#include "views/dialogentry.h"

/// Turns a terrain upside down.
class TemplateDialog : public ToolForm<Ui::FilesDialog> {
    Q_OBJECT

public:
    explicit TemplateDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
};

/// The line of the table of its folder, from which the main window makes the action.
inline constexpr DialogEntry TemplateEntry{
    "action_TemplateDialog", "menu_Math_Functions",
    QT_TRANSLATE_NOOP("DialogEntry", "Turn Upside &Down..."),
    QT_TRANSLATE_NOOP("DialogEntry", "Turn a Terrain Upside Down"),
    makeDialog<TemplateDialog>};
