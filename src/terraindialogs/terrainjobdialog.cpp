#include "terraindialogs/terrainjobdialog.h"

#include "views/fieldhelp.h"

#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>

TerrainJobDialog::TerrainJobDialog(TerrainSourceMaker make, QWidget *parent)
    : QDialog(parent), m_jobs(std::move(make))
{
}

void TerrainJobDialog::setUpForm()
{
    m_progress = findChild<QProgressBar *>(QStringLiteral("progressBarTerrain"));
    m_progress->hide();
    connect(findChild<QPushButton *>(QStringLiteral("pushButtonOK")),
            &QPushButton::clicked, this, &QDialog::accept);
    connect(findChild<QPushButton *>(QStringLiteral("pushButtonCancel")),
            &QPushButton::clicked, this, &QDialog::reject);
    connect(&m_jobs, &TerrainJobs::progressed, this, &TerrainJobDialog::showProgress);
    connect(&m_jobs, &TerrainJobs::idle, this, [this] { showBusy(false); });
    completeHelp(this);
}

void TerrainJobDialog::startWork()
{
    m_isWorking = true;
    showBusy(true);
    enableFields();
}

void TerrainJobDialog::endWork(const QString &reason)
{
    m_isWorking = false;
    enableFields();
    if (!reason.isEmpty())
        QMessageBox::critical(this, tr("Error"), reason);
}

void TerrainJobDialog::showBusy(bool busy)
{
    m_progress->setVisible(busy);
    if (busy)
        m_progress->setRange(0, 0);
    else
        m_progress->reset();
}

void TerrainJobDialog::showProgress(qint64 done, qint64 of)
{
    m_progress->setRange(0, of > 0 ? 1000 : 0);
    if (of > 0)
        m_progress->setValue(int(1000.0 * double(done) / double(of)));
}

void TerrainJobDialog::reject()
{
    m_jobs.stop();
    if (!m_isWorking)
        QDialog::reject();
}
