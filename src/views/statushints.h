#pragma once

#include "base/notices.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <functional>

class NoticeLabel;
class QPushButton;
class QStatusBar;
class QToolButton;

/// A sentence for the right side of the status bar, and what it offers to do.
struct StatusHint {
    QString text;
    NoticeStay stay = NoticeStay::UntilNextWork;
    QString button = {};     ///< the text of its button; empty: it has none
    QString buttonHelp = {}; ///< what the button does, as a whole sentence
    std::function<void()> act = {};
    /// What the hint is about. A newer one about the same takes its place; an empty
    /// subject is nobody's.
    QString subject = {};
};

/// The one line on the right side of a status bar in which the program tells what no
/// message box tells, with a button for what can be done about it.
///
/// The newest hint is shown. Closing it, or its end after a while, brings back the one
/// before it; when other work begins all of them go. With nothing to tell it takes no
/// room. Hints come on the thread of the window; other threads emit arrived().
class StatusHints : public QWidget {
    Q_OBJECT

public:
    /// Makes it hidden and adds it to the bar.
    explicit StatusHints(QStatusBar *bar);

    void tell(const StatusHint &hint);
    /// Takes all hints away: other work begins.
    void dismiss();
    /// Takes away the hint about a subject: what it told holds no more.
    void withdraw(const QString &subject);
    /// What is shown; without text where nothing is.
    [[nodiscard]] StatusHint current() const;
    /// Gives the keyboard to the hint: its button, or else the one that closes it.
    void takeFocus();

signals:
    void arrived(const QString &text, NoticeStay stay);
    /// Another hint is shown, or none.
    void changed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeButtons();
    void press();
    void closeCurrent();
    void show(const StatusHint &hint);
    void giveFocusBack();

    NoticeLabel *m_label;
    QPushButton *m_button;
    QToolButton *m_close;
    QList<StatusHint> m_hints;  // the newest last
    QPointer<QWidget> m_before; // had the keyboard before takeFocus()
};
