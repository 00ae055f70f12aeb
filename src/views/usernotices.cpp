#include "views/usernotices.h"

#include <QMessageBox>

void MessageBoxNotices::information(QWidget *parent, const QString &title,
                                    const QString &text)
{
    QMessageBox::information(parent, title, text, QMessageBox::Ok);
}

void MessageBoxNotices::critical(QWidget *parent, const QString &title,
                                 const QString &text)
{
    QMessageBox::critical(parent, title, text, QMessageBox::Ok);
}
