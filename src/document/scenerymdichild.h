#pragma once

#include "views/mdichild.h"

#include <QPointer>

#include <memory>

class ImageMdiChild;
class QAction;
class QTimer;
class SceneryDelegate;
class Ui_SceneryMdiChildForm;

/// The form of one scenery document, and the window to which its runs belong.
class SceneryMdiChild : public MdiChild {
    Q_OBJECT

public:
    /// The actions are the main window's, for the picture of a run; they may be null
    /// where no picture is shown.
    SceneryMdiChild(QWidget *parent, QAction *zoomIn, QAction *zoomOut,
                    QAction *normalSize, QAction *fitToWindow);
    ~SceneryMdiChild() override;

    void newFile() override;
    bool loadFile(const QString &fileName) override;
    bool saveAs() override;
    bool saveFile(const QString &fileName) override;
    bool copy() override;
    bool paste() override;
    [[nodiscard]] bool isModified() const override;

    /// Whether a run is on.
    [[nodiscard]] bool isRendering() const { return rendering; }
    /// Whether the view has the picture of a run.
    [[nodiscard]] bool hasChildren() const;
    [[nodiscard]] SceneryDelegate &delegate() const { return *sceneryDelegate; }
    [[nodiscard]] Ui_SceneryMdiChildForm &form() const { return *ui; }

public slots:
    void straightOrCurve();
    void outputFileTypeClicked();
    void copyFirstLast();
    void copyLastFirst();
    void imageMdiChildClosed();
    void refreshTimerTick();
    bool stopRendering();
    void renderFinal();
    void renderPreview();

signals:
    /// A picture window was made that will show the runs.
    void pictureMade(ImageMdiChild *picture);
    /// A file was read: a sentence for each line of its extras that is not understood or
    /// was limited, none where all is well. To be shown beside the told messages.
    void extrasTold(const QStringList &sentences);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void connectButtons();
    void connectEdits();
    [[nodiscard]] ImageMdiChild *findImage() const;
    ImageMdiChild *imageOfRun();
    void startRefreshTimer(int milliseconds);
    /// One run, with everything around it.
    void render(bool (SceneryDelegate::*run)(ImageMdiChild *), int refreshCycle);

    std::unique_ptr<Ui_SceneryMdiChildForm> ui;
    std::unique_ptr<SceneryDelegate> sceneryDelegate;
    QPointer<QAction> actionZoomIn;
    QPointer<QAction> actionZoomOut;
    QPointer<QAction> actionNormalSize;
    QPointer<QAction> actionFitToWindow;
    /// Tells of files of the run that could not be written.
    void tellUnsaved(const QStringList &complaints);

    int unsavedFiles = 0; // of the run
    bool rendering = false;
    QTimer *refreshTimer = nullptr; // lives during a run
};
