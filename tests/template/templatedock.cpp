#include "template/templatedock.h"

#include <QLabel>

TemplateDock::TemplateDock(QWidget *parent)
    : QDockWidget(tr("Template"), parent), labelSentence(new QLabel(this))
{
    // The window keeps the dock's place under this name.
    setObjectName(QStringLiteral("templateDock"));
    labelSentence->setObjectName(QStringLiteral("labelSentence"));
    labelSentence->setAccessibleName(tr("Sentence"));
    labelSentence->setToolTip(tr("What the active document has to say"));
    labelSentence->setWhatsThis(tr("A sentence about the active document."));
    // A name of a file is no rich text.
    labelSentence->setTextFormat(Qt::PlainText);
    labelSentence->setTextInteractionFlags(Qt::TextSelectableByKeyboard |
                                           Qt::TextSelectableByMouse);
    setWidget(labelSentence);
    hide(); // until somebody asks for it
}

void TemplateDock::setSentence(const QString &sentence)
{
    labelSentence->setText(sentence);
}
