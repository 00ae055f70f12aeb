// The right side of the status bar.

#include "app/mainwindow.h"
#include "base/notices.h"
#include "ui_mainwindow.h"
#include "views/statushints.h"

#include <QPointer>

void MainWindow::addHints()
{
    hints = new StatusHints(statusBar());
    // A notice may come from a thread that writes a file.
    setNoticeSink([target = QPointer(hints)](const QString &text, NoticeStay stay) {
        if (target)
            emit target->arrived(text, stay);
    });
    // The sub windows keep the Tab key to themselves.
    auto *const go = new QAction(tr("&Message in the Status Bar"), this);
    go->setObjectName(QStringLiteral("action_StatusMessage"));
    go->setWhatsThis(tr("To go to the message on the right side of the status bar with "
                        "the keyboard, and to what it offers. Escape leads back."));
    go->setEnabled(false);
    ui->menu_View->addSeparator();
    ui->menu_View->addAction(go);
    connect(go, &QAction::triggered, hints, &StatusHints::takeFocus);
    connect(hints, &StatusHints::changed, go,
            [this, go] { go->setEnabled(!hints->current().text.isEmpty()); });
}

void MainWindow::tellHint(const StatusHint &hint) { hints->tell(hint); }
