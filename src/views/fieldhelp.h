#pragma once

#include <QList>
#include <QString>

class QWidget;

/// The widgets of a window that take or show a value or do something: neither their own
/// parts, such as the line edit in a spin box, nor the areas that only frame or show
/// other widgets, nor those of windows that belong to this one.
[[nodiscard]] QList<QWidget *> fieldsOf(const QWidget *window);

/// The first sentence of a help text, without markup.
[[nodiscard]] QString firstSentence(const QString &help);

/// Completes what a window tells of its fields; to be called once they all are there.
///
/// A field without a tool tip gets the first sentence of its help, one without an
/// accessible name that of its label or its own text, and a label the tool tip and the
/// help of its field. A dialog gets a "?" in its title.
void completeHelp(QWidget *window);
