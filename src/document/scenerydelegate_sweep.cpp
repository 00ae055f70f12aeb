// The frame of a run: the sweep computes it, the window shows it.

#include "document/scenerydelegate.h"
#include "raster/textureimage.h"
#include "render/terrainsweep.h"
#include "views/imagemdichild.h"

#include <QCoreApplication>

void SceneryDelegate::Scan(TextureImage *texture, bool useBackground,
                           unsigned int background, int quality)
{
    // Rows are the grain in which menus, zooming and the stop request stay alive.
    sweep->rowStarts = [this] {
        QCoreApplication::processEvents();
        return isRendering;
    };
    sweep->Scan(texture, useBackground, background, quality);
    if (activeView)
        activeView->setPixmap(sweep->renderTarget, false);
    QCoreApplication::processEvents();
}
