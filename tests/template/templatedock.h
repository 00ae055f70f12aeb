#pragma once

#include <QDockWidget>

class QLabel;

/// Shows a sentence beside the documents.
///
/// A dock is told what to show; it looks at no window and owns nothing but its widgets.
class TemplateDock : public QDockWidget {
    Q_OBJECT

public:
    explicit TemplateDock(QWidget *parent = nullptr);
    void setSentence(const QString &sentence);

private:
    QLabel *labelSentence;
};
