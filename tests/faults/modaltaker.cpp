#include "faults/modaltaker.h"

#include "faults/faultlib.h"

#include <QDialog>
#include <QMessageBox>

#include <new>

namespace {

bool memoryRanOut = false;

} // namespace

bool GuardedApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc &) {
        memoryRanOut = true;
        return true;
    }
}

ModalTaker::ModalTaker()
{
    memoryRanOut = false;
    QObject::connect(&m_timer, &QTimer::timeout, qApp, [this] {
        faultPause();
        take();
        faultResume();
    });
    m_timer.start(1);
}

QStringList ModalTaker::told() const
{
    return memoryRanOut ? m_told + QStringList(QStringLiteral("Not enough memory."))
                        : m_told;
}

void ModalTaker::take()
{
    auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible())
        return;
    const auto *const box = qobject_cast<QMessageBox *>(dialog);
    if (box && box->icon() != QMessageBox::Information &&
        box->icon() != QMessageBox::NoIcon)
        m_told << box->windowTitle() + QStringLiteral(": ") + box->text();
    dialog->accept();
}
