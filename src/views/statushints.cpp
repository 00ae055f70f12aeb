#include "views/statushints.h"

#include "views/fieldhelp.h"
#include "views/noticelabel.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr qsizetype MostHints = 8; // nobody goes back further

} // namespace

StatusHints::StatusHints(QStatusBar *bar)
    : QWidget(bar), m_label(new NoticeLabel(bar)), m_button(new QPushButton(this)),
      m_close(new QToolButton(this))
{
    setObjectName(QStringLiteral("statusHints"));
    makeButtons();
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_label, 1);
    row->addWidget(m_button);
    row->addWidget(m_close);
    connect(this, &StatusHints::arrived, this,
            [this](const QString &text, NoticeStay stay) {
                tell({text, stay});
            });
    connect(m_label, &NoticeLabel::ended, this, &StatusHints::closeCurrent);
    connect(m_button, &QPushButton::clicked, this, &StatusHints::press);
    connect(m_close, &QToolButton::clicked, this, &StatusHints::closeCurrent);
    hide();
    bar->addPermanentWidget(this);
}

void StatusHints::makeButtons()
{
    m_button->setObjectName(QStringLiteral("pushButtonHint"));
    m_button->setAccessibleName(tr("Act on the message"));
    m_button->setWhatsThis(tr("Does what the message beside it offers."));
    m_button->setFlat(true);
    m_button->setAutoDefault(false);
    m_close->setObjectName(QStringLiteral("toolButtonCloseHint"));
    m_close->setAccessibleName(tr("Close the message"));
    m_close->setWhatsThis(tr("Takes the message away. The one before it comes back."));
    m_close->setAutoRaise(true);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    completeHelp(this);
    // The bar is as high as ever.
    const int height = fontMetrics().height() + 2;
    m_close->setIconSize(QSize(height, height) * 3 / 4);
    m_close->setFixedHeight(height);
    m_button->setFixedHeight(height);
}

void StatusHints::tell(const StatusHint &hint)
{
    if (hint.text.isEmpty())
        return;
    m_hints.removeIf([&hint](const StatusHint &other) {
        return !hint.subject.isEmpty() && other.subject == hint.subject;
    });
    m_hints << hint;
    if (m_hints.size() > MostHints)
        m_hints.removeFirst();
    show(hint);
}

void StatusHints::dismiss()
{
    m_hints.clear();
    show({});
}

void StatusHints::withdraw(const QString &subject)
{
    const auto removed = m_hints.removeIf(
        [&subject](const StatusHint &hint) { return hint.subject == subject; });
    if (removed > 0)
        show(current());
}

StatusHint StatusHints::current() const
{
    return m_hints.isEmpty() ? StatusHint() : m_hints.last();
}

void StatusHints::closeCurrent()
{
    if (!m_hints.isEmpty())
        m_hints.removeLast();
    show(current());
}

void StatusHints::show(const StatusHint &hint)
{
    const bool told = !hint.text.isEmpty();
    if (!told)
        giveFocusBack();
    const bool hadButton = m_button->hasFocus();
    m_button->setText(hint.button);
    m_button->setToolTip(hint.buttonHelp.isEmpty() ? firstSentence(m_button->whatsThis())
                                                   : hint.buttonHelp);
    m_button->setAccessibleDescription(hint.text);
    m_button->setVisible(!hint.button.isEmpty());
    if (hadButton && hint.button.isEmpty())
        m_close->setFocus();
    m_label->setTaken(told ? layout()->sizeHint().width() - m_label->sizeHint().width()
                           : 0);
    m_label->tell(hint.text, hint.stay);
    setVisible(told);
    emit changed();
}

// The work may tell hints of its own, or end the window.
void StatusHints::press()
{
    const StatusHint hint = current();
    if (hint.act)
        hint.act();
}

void StatusHints::takeFocus()
{
    if (m_hints.isEmpty())
        return;
    if (QWidget *const focus = QApplication::focusWidget(); !isAncestorOf(focus))
        m_before = focus;
    if (m_button->isVisibleTo(this))
        m_button->setFocus(Qt::ShortcutFocusReason);
    else
        m_close->setFocus(Qt::ShortcutFocusReason);
}

void StatusHints::giveFocusBack()
{
    if (isAncestorOf(QApplication::focusWidget()) && m_before)
        m_before->setFocus(Qt::OtherFocusReason);
    m_before.clear();
}

void StatusHints::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        giveFocusBack();
    else
        QWidget::keyPressEvent(event);
}
