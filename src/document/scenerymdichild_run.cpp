// The view around a render run: picture, refresh and messages.

#include "base/appsettings.h"
#include "base/notices.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "ui_scenerymdichildform.h"
#include "views/imagemdichild.h"

#include <QAction>
#include <QMessageBox>
#include <QScopeGuard>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int StandardCycle = 4000; // ms

} // namespace

SceneryMdiChild::~SceneryMdiChild()
{
    // While this is still a scenery view: going, the picture calls back.
    delete findImage();
}

ImageMdiChild *SceneryMdiChild::findImage() const
{
    return findChild<ImageMdiChild *>(QString(), Qt::FindDirectChildrenOnly);
}

bool SceneryMdiChild::hasChildren() const { return findImage() != nullptr; }

ImageMdiChild *SceneryMdiChild::imageOfRun()
{
    if (ImageMdiChild *const image = findImage())
        return image;
    auto *const image = new ImageMdiChild(this);
    const auto zoom = [image](QAction *action, void (ImageMdiChild::*slot)()) {
        if (action)
            connect(action, &QAction::triggered, image, slot);
    };
    zoom(actionZoomIn, &ImageMdiChild::slotZoomIn);
    zoom(actionZoomOut, &ImageMdiChild::slotZoomOut);
    zoom(actionNormalSize, &ImageMdiChild::slotNormalSize);
    zoom(actionFitToWindow, &ImageMdiChild::slotFitToWindow);
    connect(image, &QObject::destroyed, this, &SceneryMdiChild::imageMdiChildClosed);
    emit pictureMade(image);
    return image;
}

void SceneryMdiChild::imageMdiChildClosed()
{
    for (const QPointer<QAction> &action :
         {actionZoomIn, actionZoomOut, actionNormalSize, actionFitToWindow})
        if (action)
            action->setEnabled(false);
}

void SceneryMdiChild::startRefreshTimer(int milliseconds)
{
    refreshTimer = new QTimer(this);
    connect(refreshTimer, &QTimer::timeout, this, &SceneryMdiChild::refreshTimerTick);
    refreshTimer->start(std::max(milliseconds, 0));
}

void SceneryMdiChild::refreshTimerTick() { sceneryDelegate->refresh(); }

bool SceneryMdiChild::stopRendering()
{
    sceneryDelegate->stopRendering();
    return true;
}

// No box: a run goes on over night, and over files that cannot be written.
void SceneryMdiChild::tellUnsaved(const QStringList &complaints)
{
    if (complaints.isEmpty())
        return;
    unsavedFiles += static_cast<int>(complaints.size());
    const QString &last = complaints.constLast();
    tellNotice(unsavedFiles == 1
                   ? last
                   : tr("%1 files could not be saved. %2").arg(unsavedFiles).arg(last),
               NoticeStay::UntilNextWork);
}

void SceneryMdiChild::renderFinal()
{
    const int stored = AppSettings().value(QStringLiteral("refreshCycle"), 0).toInt();
    render(&SceneryDelegate::renderFinal, stored == 0 ? StandardCycle : stored);
}

void SceneryMdiChild::renderPreview()
{
    render(&SceneryDelegate::renderPreview,
           AppSettings().value(QStringLiteral("refreshCycle"), StandardCycle).toInt());
}

void SceneryMdiChild::render(bool (SceneryDelegate::*run)(ImageMdiChild *),
                             int refreshCycle)
{
    if (rendering)
        return; // a run pumps events, so a command may come in the midst of it
    rendering = true;
    const auto end = qScopeGuard([this] { // also where memory runs out
        delete refreshTimer;
        refreshTimer = nullptr;
        rendering = false;
    });
    if (AppSettings().value(QStringLiteral("periodicalRefresh"), false).toBool())
        startRefreshTimer(refreshCycle);
    const QPointer<ImageMdiChild> image = imageOfRun();
    if (AppSettings().value(QStringLiteral("ImageMdiChild/Maximized"), false).toBool())
        image->showMaximized();
    unsavedFiles = 0;
    const auto told =
        connect(sceneryDelegate.get(), &SceneryDelegate::frameSaved, this,
                [this](int, const QStringList &complaints) { tellUnsaved(complaints); });
    const bool done = (sceneryDelegate.get()->*run)(image);
    disconnect(told);
    if (!done) {
        if (image)
            image->hide();
        if (!sceneryDelegate->toldFailure())
            QMessageBox::critical(this, tr("Error"), sceneryDelegate->errorString());
    }
}
