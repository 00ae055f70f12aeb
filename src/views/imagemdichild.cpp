#include "views/imagemdichild.h"

#include "base/appsettings.h"
#include "base/memorybudget.h"
#include "base/truncate.h"
#include "raster/image.h"
#include "raster/imagefile.h"
#include "ui_imagemdichildform.h"
#include "views/backgroundwork.h"
#include "views/fieldhelp.h"
#include "views/picturelabel.h"
#include "views/waitcursor.h"
#include "views/workspacewindow.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int LargestSnugWidth = 400; // pictures up to this size get a window that fits
constexpr int LargestSnugHeight = 300;
constexpr int ScrollAreaFrame = 2;

WorkspaceWindow *activeWorkspace()
{
    return dynamic_cast<WorkspaceWindow *>(QApplication::activeWindow());
}

int scaledLength(int length, double factor)
{
    return std::min(truncatedPlusHalf(length * factor), QWIDGETSIZE_MAX);
}

QString percent(double factor) { return QString::number(100.0 * factor, 'f', 0); }

QString imageFilter()
{
    return ImageMdiChild::tr("Image File (*.bmp *.jpg *.png *.ppm *.tga *.tif)");
}

} // namespace

ImageMdiChild::ImageMdiChild(QWidget *parent)
    : MdiChild(parent), m_ui(std::make_unique<Ui_ImageMdiChildForm>()),
      m_shading(new BackgroundWork(this))
{
    m_ui->setupUi(this);
    m_imageLabel = new PictureLabel;
    m_imageLabel->setBackgroundRole(QPalette::Base);
    m_imageLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_imageLabel->setScaledContents(true);
    m_scrollArea = new QScrollArea;
    m_scrollArea->setBackgroundRole(QPalette::Dark);
    m_scrollArea->setWidget(m_imageLabel);
    m_scrollArea->setParent(this);
    m_scrollArea->setAccessibleName(tr("Picture"));
    m_scrollArea->setWhatsThis(
        tr("Shows the picture. The status bar tells the magnification, and the position "
           "of the mouse in pixels from the left and from the bottom of the picture."));
    completeHelp(this);
    setFitToWindow(false);
    setMouseTracking(true);
    m_imageLabel->setMouseTracking(true);
    m_scrollArea->setMouseTracking(true);
    setWindowFlags(windowFlags() | Qt::WindowMinimizeButtonHint |
                   Qt::WindowMaximizeButtonHint);
}

ImageMdiChild::~ImageMdiChild() = default;

// Without a layout the form would tell its workspace window no size at all.
QSize ImageMdiChild::sizeHint() const { return {600, 400}; }

// --- Zoom ------------------------------------------------------------------------

bool ImageMdiChild::isMeant() const
{
    const WorkspaceWindow *const workspace = activeWorkspace();
    const MdiChild *const active = workspace ? workspace->activeMdiChild() : nullptr;
    return active && (active == this || active == parent());
}

void ImageMdiChild::slotZoomIn()
{
    if (isMeant())
        scaleImage(1.25);
}

void ImageMdiChild::slotZoomOut()
{
    if (isMeant())
        scaleImage(0.8);
}

void ImageMdiChild::slotNormalSize()
{
    if (isMeant())
        showNormalSize();
}

void ImageMdiChild::slotFitToWindow()
{
    const WorkspaceWindow *const workspace = activeWorkspace();
    if (workspace && (isMeant() || !workspace->activeMdiChild()))
        setFitToWindow(!m_fitToWindow);
}

void ImageMdiChild::showNormalSize()
{
    m_imageLabel->adjustSize();
    m_scaleFactor = 1.0;
}

void ImageMdiChild::setFitToWindow(bool fit)
{
    m_fitToWindow = fit;
    if (const WorkspaceWindow *const workspace = activeWorkspace())
        workspace->getAction_FitToWindow()->setChecked(fit);
    m_scrollArea->setWidgetResizable(fit);
    if (!fit)
        showNormalSize();
    updateActions();
}

void ImageMdiChild::updateActions()
{
    m_ui->action_ZoomIn->setEnabled(!m_fitToWindow);
    m_ui->action_ZoomOut->setEnabled(!m_fitToWindow);
    m_ui->action_NormalSize->setEnabled(!m_fitToWindow);
}

void ImageMdiChild::scaleImage(double factor)
{
    const QSize size = m_imageLabel->pixmap().size();
    if (size.isEmpty())
        return;
    m_scaleFactor *= factor;
    if (WorkspaceWindow *const workspace = activeWorkspace())
        workspace->showMessage(QStringLiteral("%1%").arg(percent(m_scaleFactor)), 0);
    m_imageLabel->resize(scaledLength(size.width(), m_scaleFactor),
                         scaledLength(size.height(), m_scaleFactor));
    adjustScrollBar(m_scrollArea->horizontalScrollBar(), factor);
    adjustScrollBar(m_scrollArea->verticalScrollBar(), factor);
}

// Keeps the middle of the view where it is.
void ImageMdiChild::adjustScrollBar(QScrollBar *scrollBar, double factor)
{
    scrollBar->setValue(truncatedOrNearest(factor * scrollBar->value() +
                                           (factor - 1.0) * scrollBar->pageStep() / 2.0));
}

void ImageMdiChild::setPixmap(const QImage *image, bool adjust)
{
    setPicture(QPixmap::fromImage(*image));
    if (adjust) {
        m_imageLabel->adjustSize();
        scaleImage(1.0);
    }
    m_imageLabel->update();
}

void ImageMdiChild::resizeWhereFeasible()
{
    const QSize size = m_imageLabel->pixmap().size();
    if (!size.isEmpty() && size.width() <= LargestSnugWidth &&
        size.height() <= LargestSnugHeight)
        resize(size.width() + ScrollAreaFrame, size.height() + ScrollAreaFrame);
}

// --- Files -----------------------------------------------------------------------

void ImageMdiChild::newFile()
{
    static int number = 1;
    curFile = QStringLiteral("document%1.png").arg(number++);
    setWindowModified(false);
    MdiChild::newFile();
}

void ImageMdiChild::newFile(const QSize &size)
{
    newFile();
    // The picture itself and what is shown of it.
    const bool fits = claimMemory(
        tr("A picture of %1 x %2 pixels").arg(size.width()).arg(size.height()),
        qint64(size.width()) * size.height() * 7);
    QImage image(fits ? size : QSize(), QImage::Format_RGB888);
    QPixmap pixmap;
    if (!image.isNull()) {
        const WaitCursor wait;
        image.fill(Qt::white);
        pixmap = QPixmap::fromImage(image);
    }
    if (pixmap.isNull()) {
        QMessageBox::critical(this, tr("Error"), tr("Cannot create image."));
        return;
    }
    setPicture(pixmap);
    static int number = 1;
    curFile = QStringLiteral("document%1.png").arg(number++);
    setWindowTitle(curFile + QStringLiteral("[*]"));
    setWindowModified(false);
    showNormalSize();
    scaleImage(1.0);
}

bool ImageMdiChild::loadFile(const QString &fileName)
{
    const auto fail = [this](const QString &text) {
        QMessageBox::critical(this, tr("Error"), text);
        return false;
    };
    if (fileName.isEmpty())
        return fail(tr("Cannot load file:\nThe given filename is empty.\n"));
    QFile file(fileName);
    if (!file.open(QFile::ReadOnly | QFile::Text))
        return fail(
            tr("Cannot load file \"%1\":\n%2.").arg(fileName, file.errorString()));
    file.close();

    QPixmap pixmap;
    const Image image(fileName);
    {
        const WaitCursor wait;
        pixmap = QPixmap::fromImage(image);
    }
    if (pixmap.isNull())
        return fail(tr("Cannot load file \"%1\".").arg(fileName));
    setPicture(pixmap);
    lookForHeights(image, fileName);
    setCurrentFile(fileName);
    setWindowModified(false);
    m_saveFailed = false;
    scaleImage(1.0);
    return true;
}

bool ImageMdiChild::saveAs()
{
    const QString fileName =
        QFileDialog::getSaveFileName(this, tr("Save As"), curFile, imageFilter());
    return !fileName.isEmpty() && saveFile(fileName);
}

bool ImageMdiChild::saveFile(const QString &fileName)
{
    const QImage image = picture().toImage();
    bool saved = false;
    if (!image.isNull()) {
        const WaitCursor wait;
        saved = saveImageFile(image, fileName);
        setCurrentFile(fileName);
        setWindowModified(false);
        m_saveFailed = !saved;
    }
    if (!saved)
        QMessageBox::critical(this, tr("Error"), tr("Cannot save \"%1\".").arg(fileName));
    return saved;
}

// --- Clipboard -------------------------------------------------------------------

bool ImageMdiChild::copy()
{
    const QPixmap pixmap = picture();
    QClipboard *const clipboard = QApplication::clipboard();
    if (pixmap.isNull() || !clipboard)
        return false;
    clipboard->setPixmap(pixmap);
    return true;
}

bool ImageMdiChild::paste()
{
    const QClipboard *const clipboard = QApplication::clipboard();
    const QPixmap pixmap = clipboard ? clipboard->pixmap() : QPixmap();
    if (pixmap.isNull())
        return false;
    setPicture(pixmap);
    m_imageLabel->adjustSize();
    setWindowModified(true);
    return true;
}

bool ImageMdiChild::isModified() const { return isWindowModified() || m_saveFailed; }

// --- Events ----------------------------------------------------------------------

void ImageMdiChild::mouseMoveEvent(QMouseEvent *event)
{
    tellHeight(event->position());
    WorkspaceWindow *const workspace = activeWorkspace();
    const QSize size = m_imageLabel->pixmap().size();
    if (!workspace || size.isEmpty())
        return;
    const QPointF mouse = event->position();
    const int x = truncatedOrNearest(
        (m_scrollArea->horizontalScrollBar()->value() + int(mouse.x())) / m_scaleFactor);
    const int y = truncatedOrNearest(
        (m_scrollArea->verticalScrollBar()->value() + int(mouse.y())) / m_scaleFactor);
    const qint64 fromBottom = qint64(size.height()) - 1 - y;
    workspace->showMessage(
        QStringLiteral("%1% - %2/%3").arg(percent(m_scaleFactor)).arg(x).arg(fromBottom),
        0);
}

void ImageMdiChild::resizeEvent(QResizeEvent *event)
{
    m_scrollArea->resize(event->size());
    MdiChild::resizeEvent(event);
}

void ImageMdiChild::closeEvent(QCloseEvent *event)
{
    const Closing closing = m_mayBeClosed ? askToClose() : Closing::Refused;
    if (closing == Closing::AsItIs)
        AppSettings().setValue(QStringLiteral("ImageMdiChild/Maximized"), isMaximized());
    event->setAccepted(closing != Closing::Refused);
}
