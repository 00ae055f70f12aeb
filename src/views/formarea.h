#pragma once

#include <QScrollArea>

/// Scrolls a form that has less room than it needs; with enough room nothing shows of it.
///
/// Its size hint is the form's, as if the form stood in the window by itself. While it
/// can scroll, the wheel turns the form and not a number that happens to pass under the
/// pointer; the field that has the focus is turned as ever.
class FormArea : public QScrollArea {
    Q_OBJECT

public:
    explicit FormArea(QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    /// Whether the form is larger than what is seen of it.
    [[nodiscard]] bool scrolls() const;
};
