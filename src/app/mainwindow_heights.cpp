// Pictures of heights: the height under the mouse, and their relief.

#include "app/mainwindow.h"
#include "ui_mainwindow.h"
#include "views/imagemdichild.h"

#include <QLabel>

#include <algorithm>

void MainWindow::addHeights()
{
    labelHeight = new QLabel(statusBar());
    labelHeight->setObjectName(QStringLiteral("labelHeight"));
    labelHeight->setTextFormat(Qt::PlainText);
    labelHeight->setAccessibleName(tr("Height under the mouse"));
    labelHeight->setToolTip(tr("The height that the pixel under the mouse stands for."));
    labelHeight->setWhatsThis(
        tr("The height that the pixel under the mouse stands for: in metres where a file "
           "beside the picture tells what a unit is, else in units of the picture."));
    labelHeight->hide();
    statusBar()->addPermanentWidget(labelHeight);

    actionElevation = new QAction(tr("&Elevation Picture"), this);
    actionElevation->setObjectName(QStringLiteral("action_ElevationPicture"));
    actionElevation->setWhatsThis(
        tr("To take the pixels of the picture for heights: the status bar then tells the "
           "height under the mouse. When a picture is opened, the file beside it or the "
           "look of its pixels tells whether it is one of heights."));
    actionRelief = new QAction(tr("Shaded &Relief"), this);
    actionRelief->setObjectName(QStringLiteral("action_ShadedRelief"));
    actionRelief->setWhatsThis(
        tr("To show a picture of heights as shaded relief, in colours from the lowest to "
           "the highest and lit from the north-west, and not in its raw colours. Only "
           "what is shown changes, not the picture that is saved."));
    ui->menu_View->addSeparator();
    for (QAction *action : {actionElevation, actionRelief}) {
        action->setCheckable(true);
        action->setEnabled(false);
        ui->menu_View->addAction(action);
    }
    connect(actionElevation, &QAction::triggered, this, [this](bool checked) {
        if (auto *const view = qobject_cast<ImageMdiChild *>(activeMdiChild()))
            view->setElevation(checked);
    });
    connect(actionRelief, &QAction::triggered, this, [this](bool checked) {
        if (auto *const view = qobject_cast<ImageMdiChild *>(activeMdiChild()))
            view->setShadedRelief(checked);
        updateHeights();
    });
}

void MainWindow::watchHeights(ImageMdiChild *view)
{
    connect(view, &ImageMdiChild::heightTold, this, &MainWindow::showHeight);
    connect(view, &ImageMdiChild::heightsChanged, this, &MainWindow::updateHeights);
    connect(view, &QObject::destroyed, this, [this] { showHeight({}); });
}

// The field keeps the widest size that it has had: what stands beside it is not to dance
// while the mouse moves.
void MainWindow::showHeight(const QString &text)
{
    labelHeight->setText(text);
    labelHeight->setMinimumWidth(
        text.isEmpty()
            ? 0
            : std::max(labelHeight->minimumWidth(), labelHeight->sizeHint().width()));
    labelHeight->setVisible(!text.isEmpty());
}

void MainWindow::updateHeights()
{
    const auto *const view = qobject_cast<ImageMdiChild *>(activeMdiChild());
    const bool may = view && view->mayBeElevation();
    for (QAction *action : {actionElevation, actionRelief})
        action->setEnabled(may);
    actionElevation->setChecked(may && view->isElevation());
    actionRelief->setChecked(may && view->isShadedRelief());
}
