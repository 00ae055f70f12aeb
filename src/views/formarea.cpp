#include "views/formarea.h"

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
    const QWidget *const form = widget();
    return form ? form->sizeHint().expandedTo(form->minimumSizeHint())
                : QScrollArea::sizeHint();
}

bool FormArea::scrolls() const
{
    return verticalScrollBar()->minimum() != verticalScrollBar()->maximum() ||
           horizontalScrollBar()->minimum() != horizontalScrollBar()->maximum();
}

void FormArea::showEvent(QShowEvent *event)
{
    QScrollArea::showEvent(event);
    updateGeometry(); // only now the fields have their style
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
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry(); // the form needs another size, and so does this
    if (event->type() != QEvent::Wheel || !turns(watched) || !scrolls() ||
        static_cast<QWidget *>(watched)->hasFocus())
        return QScrollArea::eventFilter(watched, event);
    wheelEvent(static_cast<QWheelEvent *>(event));
    return true;
}
