#include "terraindialogs/texturefromelevationdialog.h"

#include "terrain/maketexture.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

/// It reads nothing but the program's own files.
Result<std::unique_ptr<TerrainSource>> noSource() { return failed(QString()); }

} // namespace

TextureFromElevationDialog::TextureFromElevationDialog(QWidget *parent)
    : TerrainJobDialog(noSource, parent)
{
    setupUi(this);
    // By itself a texture is a map to look at.
    texturePanel->setLight(BakedLight::Sun);
    for (QLineEdit *const field : {lineEditElevation, lineEditOut})
        connect(field, &QLineEdit::textChanged, this,
                &TextureFromElevationDialog::enableFields);
    connect(lineEditElevation, &QLineEdit::textChanged, this,
            &TextureFromElevationDialog::proposeOut);
    connect(pushButtonBrowseElevation, &QPushButton::clicked, this,
            &TextureFromElevationDialog::browseElevation);
    connect(pushButtonBrowseOut, &QPushButton::clicked, this,
            &TextureFromElevationDialog::browseOut);
    setUpForm();
    alignLabels(this);
    enableFields();
}

void TextureFromElevationDialog::setElevation(const QString &file)
{
    lineEditElevation->setText(QDir::toNativeSeparators(file));
}

void TextureFromElevationDialog::proposeOut()
{
    const QString named = lineEditElevation->text().trimmed();
    if (named.isEmpty() ||
        (!lineEditOut->text().isEmpty() && lineEditOut->text() != m_proposedOut))
        return;
    const QFileInfo file(QDir::fromNativeSeparators(named));
    QString base = file.completeBaseName();
    if (base.endsWith(QStringLiteral("_elevation")))
        base.chop(int(qstrlen("_elevation")));
    m_proposedOut = QDir::toNativeSeparators(file.absolutePath() + QLatin1Char('/') +
                                             base + QStringLiteral("_texture.png"));
    lineEditOut->setText(m_proposedOut);
}

void TextureFromElevationDialog::browseElevation()
{
    const QString name = QFileDialog::getOpenFileName(
        this, tr("Open File"), lineEditElevation->text(),
        tr("Pictures (*.png *.tif *.tiff *.bmp *.tga *.ppm);;All Files (*)"));
    if (!name.isEmpty())
        setElevation(name);
}

void TextureFromElevationDialog::browseOut()
{
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Save File"), lineEditOut->text(),
        tr("Pictures (*.png *.tif *.tiff *.bmp *.tga *.ppm *.jpg);;All Files (*)"));
    if (!name.isEmpty())
        lineEditOut->setText(QDir::toNativeSeparators(name));
}

void TextureFromElevationDialog::enableFields()
{
    for (QWidget *const field :
         QList<QWidget *>{lineEditElevation, pushButtonBrowseElevation, lineEditOut,
                          pushButtonBrowseOut, doubleSpinBoxUnit, doubleSpinBoxCellX,
                          doubleSpinBoxCellY, texturePanel})
        field->setEnabled(!isWorking());
    pushButtonOK->setEnabled(!isWorking() &&
                             !lineEditElevation->text().trimmed().isEmpty() &&
                             !lineEditOut->text().trimmed().isEmpty());
}

void TextureFromElevationDialog::accept()
{
    if (!pushButtonOK->isEnabled())
        return;
    if (const QString missing = texturePanel->missing(); !missing.isEmpty())
        return endWork(missing);
    TextureFromElevation job;
    job.elevation = QDir::fromNativeSeparators(lineEditElevation->text().trimmed());
    job.out = QDir::fromNativeSeparators(lineEditOut->text().trimmed());
    if (doubleSpinBoxUnit->value() > 0.0)
        job.unit = doubleSpinBoxUnit->value();
    if (doubleSpinBoxCellX->value() > 0.0 && doubleSpinBoxCellY->value() > 0.0)
        job.cell = QSizeF(doubleSpinBoxCellX->value(), doubleSpinBoxCellY->value());
    job.texture = texturePanel->request();
    startWork();
    jobs().runAlone([this, job](Progress &progress) {
        const Result<TerrainReport> report = makeTexture(job, progress);
        QMetaObject::invokeMethod(this, [this, report] {
            if (!report)
                return endWork(report.error().text);
            endWork();
            emit textureWritten(*report);
            QDialog::accept();
        });
    });
}
