#pragma once

#include "base/notices.h"

#include <QLabel>
#include <QTimer>

/// A line on the right side of a status bar that tells what a message box does not:
/// why something could not be done, or what is under way. It is hidden while there is
/// nothing to tell, takes at most a part of the bar, so that the message on the left can
/// still be read, and is cut short where it does not fit; its tool tip has all of it.
class NoticeLabel : public QLabel {
    Q_OBJECT

public:
    /// `bar` is the status bar to which it is going to be added.
    explicit NoticeLabel(QWidget *bar);

    /// Shows a text in the place of the former one.
    void tell(const QString &text, NoticeStay stay);
    /// Takes the text away: other work begins.
    void dismiss();
    /// How much of the bar's part is taken by what stands beside the text, in pixels.
    void setTaken(int width);
    /// The whole text; empty while nothing is told.
    [[nodiscard]] QString notice() const { return m_notice; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The time of a notice is over; it has been taken away.
    void ended();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void elide();

    QWidget *m_bar;
    int m_taken = 0;
    QString m_notice;
    QTimer m_end{this};
};
