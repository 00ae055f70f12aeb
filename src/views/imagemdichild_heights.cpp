// Pictures whose pixels are heights.

#include "base/memorybudget.h"
#include "base/notices.h"
#include "raster/elevationimage.h"
#include "raster/heightkinds.h"
#include "raster/heightunit.h"
#include "raster/shadedrelief.h"
#include "views/backgroundwork.h"
#include "views/imagemdichild.h"

#include <QFileInfo>
#include <QLabel>

#include <cmath>
#include <memory>

namespace {

QString heightText(int steps, double metresPerUnit)
{
    if (metresPerUnit <= 0)
        return ImageMdiChild::tr("Height %1").arg(steps);
    const int decimals = metresPerUnit >= 1 ? 0 : metresPerUnit >= 0.1 ? 1 : 2;
    return ImageMdiChild::tr("Height %1 m")
        .arg(QString::number(steps * metresPerUnit, 'f', decimals));
}

} // namespace

QPixmap ImageMdiChild::picture() const
{
    return m_raw.isNull() ? m_imageLabel->pixmap() : m_raw;
}

void ImageMdiChild::setPicture(const QPixmap &pixmap)
{
    m_shading->stop();
    m_raw = QPixmap();
    m_heights = QImage();
    m_imageLabel->setPixmap(pixmap);
    if (!m_elevation && !m_relief)
        return;
    m_elevation = m_relief = false;
    emit heightTold(QString());
    emit heightsChanged();
}

void ImageMdiChild::lookForHeights(const QImage &image, const QString &fileName)
{
    const auto unit = metresPerHeightUnit(fileName);
    m_metresPerUnit = unit.value_or(0.0);
    m_elevation = mayBeElevation() && (unit || looksLikeElevations(image));
    if (m_elevation)
        emit heightsChanged();
}

bool ImageMdiChild::mayBeElevation() const
{
    const QPixmap pixmap = picture();
    return !pixmap.isNull() && !pixmap.hasAlpha();
}

void ImageMdiChild::setElevation(bool elevation)
{
    if (elevation == m_elevation || (elevation && !mayBeElevation()))
        return;
    m_elevation = elevation;
    if (!elevation) {
        setShadedRelief(false);
        emit heightTold(QString());
    }
    emit heightsChanged();
}

// The whole pixel under the mouse, whatever the magnification.
void ImageMdiChild::tellHeight(const QPointF &mouse)
{
    if (!m_elevation)
        return;
    if (m_heights.isNull())
        m_heights = picture().toImage();
    const QPointF inside = m_imageLabel->mapFrom(this, mouse);
    const double x = inside.x() * m_heights.width() / m_imageLabel->width();
    const double y = inside.y() * m_heights.height() / m_imageLabel->height();
    const QPoint pixel(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
    emit heightTold(
        m_heights.valid(pixel)
            ? heightText(ElevationImage::stepsOf(m_heights.pixel(pixel)), m_metresPerUnit)
            : QString());
}

void ImageMdiChild::leaveEvent(QEvent *event)
{
    emit heightTold(QString());
    MdiChild::leaveEvent(event);
}

// --- Shaded relief ---------------------------------------------------------------

void ImageMdiChild::setShadedRelief(bool shaded)
{
    if (shaded == m_relief || (shaded && !mayBeElevation()))
        return;
    m_relief = shaded;
    if (shaded) {
        setElevation(true);
        drawRelief();
    } else {
        m_shading->stop();
        if (!m_raw.isNull())
            m_imageLabel->setPixmap(m_raw);
        m_raw = QPixmap();
    }
    emit heightsChanged();
}

void ImageMdiChild::drawRelief()
{
    const QImage heights = picture().toImage();
    const qint64 pixels = qint64(heights.width()) * heights.height();
    if (!claimMemory(tr("The shaded relief of \"%1\"").arg(userFriendlyCurrentFile()),
                     pixels * 4)) {
        m_relief = false;
        return;
    }
    const auto relief = std::make_shared<Result<QImage>>();
    m_shading->begin(
        [heights, relief](Progress &progress) {
            *relief = shadedRelief(heights, progress);
        },
        [this, relief] {
            if (*relief && !(*relief)->isNull())
                return showRelief(**relief);
            if (!*relief)
                tellNotice((*relief).error().text);
            setShadedRelief(false);
        });
}

void ImageMdiChild::showRelief(const QImage &relief)
{
    m_raw = m_imageLabel->pixmap();
    m_imageLabel->setPixmap(QPixmap::fromImage(relief));
}
