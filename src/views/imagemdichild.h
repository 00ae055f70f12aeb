#pragma once

#include "views/mdichild.h"

#include <QImage>
#include <QPixmap>
#include <QSize>

#include <memory>

class BackgroundWork;
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

    [[nodiscard]] bool isFitToWindow() const { return m_fitToWindow; }
    /// False while a run draws into the view.
    void setMayBeClosed(bool may) { m_mayBeClosed = may; }
    /// Shows a frame; `adjust` also brings label and zoom to its size.
    void setPixmap(const QImage *image, bool adjust);
    /// Makes the window of a small picture fit it.
    void resizeWhereFeasible();
    void updateActions();
    [[nodiscard]] QSize sizeHint() const override;

    /// Whether the pixels are taken for heights. When a file is loaded, its sidecar or
    /// the look of its pixels tells; the user may know better.
    [[nodiscard]] bool isElevation() const { return m_elevation; }
    void setElevation(bool elevation);
    /// Whether the pixels can hold heights at all.
    [[nodiscard]] bool mayBeElevation() const;
    /// Shows heights as shaded relief in the place of their raw colours, once it is
    /// drawn. What is saved and copied are the raw colours always.
    void setShadedRelief(bool shaded);
    [[nodiscard]] bool isShadedRelief() const { return m_relief; }

signals:
    /// The height under the mouse for the user to read; empty where there is none.
    void heightTold(const QString &text);
    /// isElevation() or isShadedRelief() is another.
    void heightsChanged();

public slots:
    void slotZoomIn();
    void slotZoomOut();
    void slotNormalSize();
    void slotFitToWindow();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
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
    /// The picture itself, whatever is shown of it.
    [[nodiscard]] QPixmap picture() const;
    /// Takes another picture, with nothing known of its heights.
    void setPicture(const QPixmap &pixmap);
    /// Finds out whether the picture of a file holds heights.
    void lookForHeights(const QImage &image, const QString &fileName);
    void tellHeight(const QPointF &mouse);
    void drawRelief();
    void showRelief(const QImage &relief);

    std::unique_ptr<Ui_ImageMdiChildForm> m_ui;
    QLabel *m_imageLabel;
    QScrollArea *m_scrollArea;
    double m_scaleFactor = 1.0;
    bool m_mayBeClosed = true;
    bool m_fitToWindow = false;
    bool m_saveFailed = false; // the title does not tell
    bool m_elevation = false;
    bool m_relief = false;      // is wanted; shown as soon as it is drawn
    double m_metresPerUnit = 0; // of heights; 0: not known
    QPixmap m_raw;              // while the label shows the relief
    QImage m_heights;           // shares the pixels of the picture; null until needed
    BackgroundWork *m_shading;
};
