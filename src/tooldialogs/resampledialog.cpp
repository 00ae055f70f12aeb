#include "tooldialogs/resampledialog.h"

#include "raster/imagefile.h"
#include "tools/toolfiles.h"
#include "views/waitcursor.h"

#include <QSignalBlocker>

namespace {

// A field that tells of a value set for it would set the one it follows, rounded,
// and so on without an end.
template <class Box, class Value> void setSilently(Box *box, Value value)
{
    const QSignalBlocker blocker(box);
    box->setValue(value);
}

} // namespace

ResampleDialog::ResampleDialog(QWidget *parent)
    : FormDialog(parent),
      m_connectedIcon(QStringLiteral(":/ResampleDialog/connected.png")),
      m_disconnectedIcon(QStringLiteral(":/ResampleDialog/disconnected.png"))
{
    setHolds(OperationOutcome::Holds::Heights);
    pushButtonConnected->setIcon(m_connectedIcon);
    addInput(lineEditFromFile,
             {.mayTake = [this](const QString &name) { return showSizeOf(name); }});
    connect(doubleSpinBoxPercentX, &QDoubleSpinBox::valueChanged, this,
            &ResampleDialog::doubleSpinBoxPercentXValueChanged);
    connect(doubleSpinBoxPercentY, &QDoubleSpinBox::valueChanged, this,
            &ResampleDialog::doubleSpinBoxPercentYValueChanged);
    connect(spinBoxPixelX, &QSpinBox::valueChanged, this,
            &ResampleDialog::spinBoxPixelXValueChanged);
    connect(spinBoxPixelY, &QSpinBox::valueChanged, this,
            &ResampleDialog::spinBoxPixelYValueChanged);
    connect(pushButtonConnected, &QPushButton::clicked, this,
            &ResampleDialog::pushButtonConnectedClicked);
}

bool ResampleDialog::showSizeOf(const QString &fileName)
{
    QSize size;
    {
        const WaitCursor wait;
        size = loadImageFile(fileName).size();
    }
    if (size.isEmpty())
        showError(couldNotLoadText(fileName));
    else
        setSource(size);
    return !size.isEmpty();
}

void ResampleDialog::setSource(const QSize &size)
{
    for (QWidget *field :
         {static_cast<QWidget *>(doubleSpinBoxPercentX),
          static_cast<QWidget *>(doubleSpinBoxPercentY),
          static_cast<QWidget *>(spinBoxPixelX), static_cast<QWidget *>(spinBoxPixelY),
          static_cast<QWidget *>(pushButtonConnected),
          static_cast<QWidget *>(doubleSpinBoxZScale)})
        field->setEnabled(true);
    m_sourceWidth = size.width();
    m_sourceHeight = size.height();
    setPixelX(m_sourceWidth);
    setPixelY(m_sourceHeight);
    // The pixel fields may hold less than a large source has.
    setPercentX(percentOfPixels(m_sourceWidth, spinBoxPixelX->value()));
    setPercentY(percentOfPixels(m_sourceHeight, spinBoxPixelY->value()));
}

void ResampleDialog::setPercentX(double percent)
{
    setSilently(doubleSpinBoxPercentX, percent);
}

void ResampleDialog::setPercentY(double percent)
{
    setSilently(doubleSpinBoxPercentY, percent);
}

void ResampleDialog::setPixelX(int pixels) { setSilently(spinBoxPixelX, pixels); }

void ResampleDialog::setPixelY(int pixels) { setSilently(spinBoxPixelY, pixels); }

void ResampleDialog::doubleSpinBoxPercentXValueChanged(double percent)
{
    setPixelX(pixelsOfPercent(m_sourceWidth, percent));
    if (m_connected) {
        setPercentY(percent);
        setPixelY(pixelsOfPercent(m_sourceHeight, percent));
    }
}

void ResampleDialog::doubleSpinBoxPercentYValueChanged(double percent)
{
    setPixelY(pixelsOfPercent(m_sourceHeight, percent));
    if (m_connected) {
        setPercentX(percent);
        setPixelX(pixelsOfPercent(m_sourceWidth, percent));
    }
}

void ResampleDialog::spinBoxPixelXValueChanged(int pixels)
{
    const double percent = percentOfPixels(m_sourceWidth, pixels);
    setPercentX(percent);
    if (m_connected) {
        setPercentY(percent);
        setPixelY(pixelsOfPercent(m_sourceHeight, percent));
    }
}

void ResampleDialog::spinBoxPixelYValueChanged(int pixels)
{
    const double percent = percentOfPixels(m_sourceHeight, pixels);
    setPercentY(percent);
    if (m_connected) {
        setPercentX(percent);
        setPixelX(pixelsOfPercent(m_sourceWidth, percent));
    }
}

void ResampleDialog::pushButtonConnectedClicked()
{
    m_connected = !m_connected;
    pushButtonConnected->setIcon(m_connected ? m_connectedIcon : m_disconnectedIcon);
}

Result<QImage> ResampleDialog::work(Progress &progress)
{
    if (m_sourceWidth < 0 || m_sourceHeight < 0)
        return failed(couldNotLoadText(lineEditFromFile->text()));
    qint64 cut = 0;
    Result<ElevationImage> image =
        resampleFile(lineEditFromFile->text(),
                     {.pixelX = spinBoxPixelX->value(), .pixelY = spinBoxPixelY->value()},
                     doubleSpinBoxZScale->value(), progress, &cut);
    noteCut(cut);
    return image;
}
