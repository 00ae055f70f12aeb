#pragma once

#include <QApplication>
#include <QStringList>
#include <QTimer>

/// The application of the operations: as in the program, memory that runs out in an event
/// is told and does not end it.
class GuardedApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject *receiver, QEvent *event) override;
};

/// Answers every modal window, and keeps what the message boxes say of failures.
class ModalTaker {
public:
    ModalTaker();
    [[nodiscard]] QStringList told() const;

private:
    void take();

    QTimer m_timer;
    QStringList m_told;
};
