#include "views/fieldhelp.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QTextDocumentFragment>

namespace {

QString withoutMarkup(const QString &text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText()
                                     : text;
}

// A caption as it is read: without its markup, mark of the accelerator and colon.
QString spoken(const QString &caption)
{
    QString text = withoutMarkup(caption);
    QString name;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && i + 1 < text.size())
            ++i; // the character behind the mark, which may be an ampersand
        name += text[i];
    }
    name = name.trimmed();
    if (name.endsWith(QLatin1Char(':')))
        name.chop(1);
    return name;
}

// Frames around other widgets; what the keyboard does there is to scroll.
bool isArea(const QWidget *widget)
{
    return qobject_cast<const QScrollArea *>(widget) ||
           qobject_cast<const QMdiArea *>(widget) ||
           qobject_cast<const QMdiSubWindow *>(widget) ||
           qobject_cast<const QDialog *>(widget);
}

// What shows or takes a value, also where the keyboard passes it over.
bool isInput(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QAbstractSlider *>(widget);
}

bool isMadeOfParts(const QWidget *widget)
{
    return qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const QComboBox *>(widget) ||
           qobject_cast<const QAbstractItemView *>(widget);
}

void collectFields(const QWidget *parent, QList<QWidget *> &fields)
{
    const auto children =
        parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        // The bars of a scroll area stand in containers of these names; the tabs of a tab
        // widget are its own.
        const bool isPart =
            (child->objectName().startsWith(QLatin1String("qt_scrollarea_")) &&
             child->objectName().endsWith(QLatin1String("container"))) ||
            child->objectName() == QLatin1String("qt_tabwidget_tabbar");
        if (child->isWindow() || isPart)
            continue;
        if (isInput(child) || (child->focusPolicy() != Qt::NoFocus && !isArea(child)))
            fields << child;
        if (!isMadeOfParts(child))
            collectFields(child, fields);
    }
}

void nameFromCaption(QWidget *field, const QList<QLabel *> &labels)
{
    if (!field->accessibleName().isEmpty())
        return;
    if (const auto *const button = qobject_cast<QAbstractButton *>(field))
        field->setAccessibleName(spoken(button->text()));
    for (const QLabel *label : labels)
        if (label->buddy() == field)
            field->setAccessibleName(spoken(label->text()));
}

} // namespace

QList<QWidget *> fieldsOf(const QWidget *window)
{
    QList<QWidget *> fields;
    collectFields(window, fields);
    return fields;
}

QString firstSentence(const QString &help)
{
    const QString text = withoutMarkup(help).trimmed();
    qsizetype end = 0;
    for (; end < text.size(); ++end) {
        const QChar c = text[end];
        if (c == QLatin1Char('\n'))
            return text.left(end).trimmed();
        if (c != QLatin1Char('.') && c != QLatin1Char('!') && c != QLatin1Char('?'))
            continue;
        // An abbreviation goes on in small letters.
        const bool blankFollows = end + 1 < text.size() && text[end + 1].isSpace();
        const bool goesOn = end + 2 < text.size() && text[end + 2].isLower();
        if (end + 1 == text.size() || (blankFollows && !goesOn))
            return text.left(end + 1);
    }
    return text;
}

void completeHelp(QWidget *window)
{
    const auto labels = window->findChildren<QLabel *>();
    for (QWidget *field : fieldsOf(window)) {
        nameFromCaption(field, labels);
        if (field->toolTip().isEmpty())
            field->setToolTip(firstSentence(field->whatsThis()));
    }
    for (QLabel *label : labels) {
        const QWidget *const field = label->buddy();
        if (field && label->toolTip().isEmpty())
            label->setToolTip(field->toolTip());
        if (field && label->whatsThis().isEmpty())
            label->setWhatsThis(field->whatsThis());
    }
    if (qobject_cast<QDialog *>(window))
        window->setWindowFlag(Qt::WindowContextHelpButtonHint);
}
