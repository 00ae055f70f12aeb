#pragma once

#include <QLabel>

/// A label that its owner paints: the base class's painting is not called.
class Label : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

signals:
    void paintEventSignal(QPaintEvent *event);

protected:
    void paintEvent(QPaintEvent *event) override;
};
