#pragma once

#include "views/operationoutcome.h"

#include <QDialog>

class QPushButton;

/// Shows what an importer or a tool has come to: a thumbnail of the picture, what is
/// known of it, and the messages that went with the window of the operation.
class ReportDialog : public QDialog {
    Q_OBJECT

public:
    ReportDialog(const OperationOutcome &outcome, const QImage &thumbnail,
                 QWidget *parent = nullptr);

    /// "Use in Scenery" is off where there is none.
    void setSceneryIsThere(bool there);

signals:
    /// The result is to be opened as a picture.
    void openResult();
    /// The result is to become a file of the active scenery.
    void useInScenery();

private:
    QWidget *makeFacts(const OperationOutcome &outcome);
    QWidget *makeMessages(const OperationOutcome &outcome);
    QWidget *makeButtons();

    QPushButton *m_use = nullptr;
};
