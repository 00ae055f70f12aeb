#include "document/scenerymdichild.h"

#include "document/scenerydelegate.h"
#include "ui_scenerymdichildform.h"
#include "views/fieldhelp.h"
#include "views/waitcursor.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QMessageBox>

#include <algorithm>
#include <array>

SceneryMdiChild::SceneryMdiChild(QWidget *parent, QAction *zoomIn, QAction *zoomOut,
                                 QAction *normalSize, QAction *fitToWindow)
    : MdiChild(parent), ui(std::make_unique<Ui_SceneryMdiChildForm>()),
      actionZoomIn(zoomIn), actionZoomOut(zoomOut), actionNormalSize(normalSize),
      actionFitToWindow(fitToWindow)
{
    ui->setupUi(this);
    completeHelp(this);
    sceneryDelegate = std::make_unique<SceneryDelegate>(this);
    connectButtons();
    connectEdits();
    outputFileTypeClicked();
    straightOrCurve();
}

void SceneryMdiChild::connectButtons()
{
    SceneryDelegate *const d = sceneryDelegate.get();
    const auto modified = qOverload<>(&SceneryDelegate::setModified);
    const auto clicked = [](QAbstractButton *button, auto *receiver, auto slot) {
        connect(button, &QAbstractButton::clicked, receiver, slot);
    };
    clicked(ui->pushButtonBackgroundColor, d, &SceneryDelegate::selectColor);
    clicked(ui->pushButtonBrowseOutputFiles, d, &SceneryDelegate::browseOutputFiles);
    clicked(ui->pushButtonBrowseElevationFile, d, &SceneryDelegate::browseElevationFile);
    clicked(ui->pushButtonBrowseTextureFile, d, &SceneryDelegate::browseTextureFile);
    clicked(ui->pushButtonSetFlightPath, d, &SceneryDelegate::setFlightPath);
    for (QRadioButton *mode : {ui->radioButtonStraight, ui->radioButtonCurve}) {
        clicked(mode, this, &SceneryMdiChild::straightOrCurve);
        clicked(mode, d, modified);
    }
    for (QCheckBox *type :
         {ui->checkBoxTGA, ui->checkBoxPNG, ui->checkBoxJPG, ui->checkBoxPPM}) {
        clicked(type, d, modified);
        clicked(type, this, &SceneryMdiChild::outputFileTypeClicked);
    }
    clicked(ui->pushButtonFixScale, d, &SceneryDelegate::fixScale);
    clicked(ui->pushButtonFixScale, d, modified);
    clicked(ui->pushButtonFromReposition, d, &SceneryDelegate::repositionSceneryFrom);
    clicked(ui->pushButtonToReposition, d, &SceneryDelegate::repositionSceneryTo);
    for (QAbstractButton *button : std::initializer_list<QAbstractButton *>{
             ui->checkBoxUseTextureFile, ui->radioButtonLQ, ui->radioButtonHQ,
             ui->radioButtonXHQ, ui->checkBoxBackgroundColor, ui->checkBoxRecorder})
        clicked(button, d, modified);
}

void SceneryMdiChild::connectEdits()
{
    SceneryDelegate *const d = sceneryDelegate.get();
    const auto modified = qOverload<>(&SceneryDelegate::setModified);
    for (QLineEdit *edit :
         {ui->lineEditOutputFiles, ui->lineEditTextureFile, ui->lineEditElevationFile})
        connect(edit, &QLineEdit::textEdited, d, modified);
    const auto spinBoxes = findChildren<QSpinBox *>();
    for (QSpinBox *box : spinBoxes)
        connect(box, &QSpinBox::valueChanged, d, modified);
    const auto doubleSpinBoxes = findChildren<QDoubleSpinBox *>();
    for (QDoubleSpinBox *box : doubleSpinBoxes)
        connect(box, &QDoubleSpinBox::valueChanged, d, modified);
}

// --- Form ----------------------------------------------------------------------------

// The last format that is left cannot be cleared.
void SceneryMdiChild::outputFileTypeClicked()
{
    const std::array boxes{ui->checkBoxTGA, ui->checkBoxPNG, ui->checkBoxJPG,
                           ui->checkBoxPPM};
    const auto checked = std::count_if(boxes.begin(), boxes.end(),
                                       [](QCheckBox *box) { return box->isChecked(); });
    for (QCheckBox *box : boxes)
        box->setEnabled(checked != 1 || !box->isChecked());
}

void SceneryMdiChild::straightOrCurve()
{
    ui->pushButtonSetFlightPath->setEnabled(!ui->radioButtonStraight->isChecked());
}

void SceneryMdiChild::copyFirstLast() { sceneryDelegate->copyFirstLast(); }

void SceneryMdiChild::copyLastFirst() { sceneryDelegate->copyLastFirst(); }

// --- Files ---------------------------------------------------------------------------

void SceneryMdiChild::newFile()
{
    static int number = 1;
    curFile = QStringLiteral("document%1.zph").arg(number++);
    MdiChild::newFile();
}

bool SceneryMdiChild::loadFile(const QString &fileName)
{
    bool loaded = false;
    {
        const WaitCursor wait;
        loaded = sceneryDelegate->open(fileName);
    }
    if (loaded)
        emit extrasTold(sceneryDelegate->extrasTold());
    if (!loaded) {
        QMessageBox::critical(this, tr("Error"),
                              tr("Cannot open file \"%1\":\n%2.")
                                  .arg(fileName, sceneryDelegate->errorString()));
        return false;
    }
    setCurrentFile(fileName);
    straightOrCurve();
    outputFileTypeClicked();
    return true;
}

bool SceneryMdiChild::saveAs()
{
    const QString fileName =
        QFileDialog::getSaveFileName(this, tr("Save As"), curFile, tr("Scenery (*.zph)"));
    return !fileName.isEmpty() && saveFile(fileName);
}

bool SceneryMdiChild::saveFile(const QString &fileName)
{
    bool saved = false;
    {
        const WaitCursor wait;
        saved = sceneryDelegate->save(fileName);
    }
    if (!saved) {
        QMessageBox::critical(this, tr("Error"),
                              tr("Cannot save file \"%1\":\n%2.")
                                  .arg(fileName, sceneryDelegate->errorString()));
        return false;
    }
    setCurrentFile(fileName);
    return true;
}

bool SceneryMdiChild::copy() { return false; }

bool SceneryMdiChild::paste() { return false; }

bool SceneryMdiChild::isModified() const { return sceneryDelegate->isModified(); }

void SceneryMdiChild::closeEvent(QCloseEvent *event)
{
    event->setAccepted(!rendering && askToClose() != Closing::Refused);
}
