#pragma once

#include "terraindialogs/terrainjobs.h"

#include <QDialog>

class QProgressBar;

/// What the windows have in common whose OK starts work of some time.
///
/// The form has progressBarTerrain, pushButtonOK and pushButtonCancel. While OK's work
/// goes on, all fields are off, and Cancel, Escape and the close button end the work
/// only.
class TerrainJobDialog : public QDialog {
    Q_OBJECT

public:
    void reject() override;

protected:
    explicit TerrainJobDialog(TerrainSourceMaker make, QWidget *parent);
    /// To be called once the form is there.
    void setUpForm();

    [[nodiscard]] TerrainJobs &jobs() { return m_jobs; }
    [[nodiscard]] bool isWorking() const { return m_isWorking; }
    /// OK's work begins.
    void startWork();
    /// It has ended; `reason` is shown in a box unless it is empty.
    void endWork(const QString &reason = {});
    void showBusy(bool busy);
    /// Sets what may be touched: anything has changed.
    virtual void enableFields() = 0;

private:
    void showProgress(qint64 done, qint64 of);

    TerrainJobs m_jobs;
    QProgressBar *m_progress = nullptr;
    bool m_isWorking = false;
};
