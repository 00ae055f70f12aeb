#include "app/application.h"

#include <QThread>

#include <new>
#include <stdexcept>

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {}

bool Application::notify(QObject *receiver, QEvent *event)
{
    const QEvent::Type type = event->type(); // the event may be gone afterwards
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc &) {
        tellNoMemory(type);
    } catch (const std::length_error &) { // more than any memory could hold
        tellNoMemory(type);
    }
    return true; // nobody else is to try the same again
}

void Application::tellNoMemory(QEvent::Type during)
{
    if (QThread::currentThread() != thread())
        return; // a thread of the toolkit, which cannot open a box
    const bool comesAgain = during == QEvent::Paint || during == QEvent::UpdateRequest ||
                            during == QEvent::LayoutRequest || during == QEvent::Timer;
    if (comesAgain)
        m_notice.tellNowAndThen();
    else
        m_notice.tell();
}
