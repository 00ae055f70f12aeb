#pragma once

#include "app/memorynotice.h"

#include <QApplication>

/// The application object of the window's program.
///
/// Memory that runs out while an event is handled ends that event only: what it had
/// begun is undone on the way here, the user is told, and the program goes on.
class Application : public QApplication {
    Q_OBJECT

public:
    Application(int &argc, char **argv);
    bool notify(QObject *receiver, QEvent *event) override;

private:
    void tellNoMemory(QEvent::Type during);

    MemoryNotice m_notice;
};
