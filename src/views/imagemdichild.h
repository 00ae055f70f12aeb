#pragma once

#include "views/mdichild.h"

#include <QSize>

#include <memory>

class QLabel;
class QScrollArea;
class QScrollBar;
class Ui_ImageMdiChildForm;

/// Shows one raster picture: a document of the workspace, or the growing frame
/// of a render run.
class ImageMdiChild : public MdiChild {
    Q_OBJECT

public:
    explicit ImageMdiChild(QWidget *parent = nullptr);
    ~ImageMdiChild() override;

    void newFile() override;
    /// A new white picture.
    virtual void newFile(const QSize &size);
    bool loadFile(const QString &fileName) override;
    bool saveAs() override;
    bool saveFile(const QString &fileName) override;
    bool copy() override;
    bool paste() override;
    /// Whether the picture would be lost: it was changed, or the last save failed.
    [[nodiscard]] bool isModified() const override;

    [[nodiscard]] bool isFitToWindow() const { return fitToWindow; }
    /// False while a run draws into the view.
    void setMayBeClosed(bool may) { mayBeClosed = may; }
    /// Shows a frame; `adjust` also brings label and zoom to its size.
    void setPixmap(const QImage *image, bool adjust);
    /// Makes the window of a small picture fit it.
    void resizeWhereFeasible();
    void updateActions();
    [[nodiscard]] QSize sizeHint() const override;

public slots:
    void slotZoomIn();
    void slotZoomOut();
    void slotNormalSize();
    void slotFitToWindow();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    /// Whether a zoom action of the main window is meant for this view.
    [[nodiscard]] bool isMeant() const;
    void showNormalSize();
    /// Brings the view into fit or normal mode, whichever it was in.
    void setFitToWindow(bool fit);
    void scaleImage(double factor);
    static void adjustScrollBar(QScrollBar *scrollBar, double factor);

    std::unique_ptr<Ui_ImageMdiChildForm> ui;
    QLabel *imageLabel;
    QScrollArea *scrollArea;
    double scaleFactor = 1.0;
    bool mayBeClosed = true;
    bool fitToWindow = false;
    bool saveFailed = false; // the title does not tell
};
