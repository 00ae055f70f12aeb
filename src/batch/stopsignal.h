#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

/// Turns SIGINT and SIGTERM into a Qt signal, emitted when events are pumped.
/// One object at a time; the former handlers come back when it goes.
class StopSignal : public QObject {
    Q_OBJECT

public:
    StopSignal();
    ~StopSignal() override;
    /// Whether one of the two has come.
    [[nodiscard]] bool raised() const;

signals:
    void stopRequested();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
