#include "shell/formarea.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

// Whether the wheel changes the value of a widget.
bool turns(const QObject *widget)
{
    return qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const QComboBox *>(widget);
}

} // namespace

FormArea::FormArea(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus); // the fields are the stops of the Tab key
}

QSize FormArea::sizeHint() const
{
    return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
}

bool FormArea::scrolls() const
{
    return verticalScrollBar()->minimum() != verticalScrollBar()->maximum() ||
           horizontalScrollBar()->minimum() != horizontalScrollBar()->maximum();
}

void FormArea::showEvent(QShowEvent *event)
{
    QScrollArea::showEvent(event);
    const auto fields = findChildren<QWidget *>();
    for (QWidget *field : fields) {
        if (!turns(field))
            continue;
        field->setFocusPolicy(Qt::StrongFocus); // the wheel does not take the focus along
        field->installEventFilter(this);
    }
}

bool FormArea::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel || !turns(watched) || !scrolls() ||
        static_cast<QWidget *>(watched)->hasFocus())
        return QScrollArea::eventFilter(watched, event);
    wheelEvent(static_cast<QWheelEvent *>(event));
    return true;
}
