#pragma once

#include "patheditors/heldkey.h"
#include "patheditors/patheditor.h"
#include "patheditors/pathpainter.h"

#include <QBitmap>
#include <QImage>
#include <QPixmap>

#include <memory>

class ElevationImage;
class Label;
class QScrollArea;
class SetFlightPathProfileDialog;
class Ui_SetFlightPathDialog;

/// The plan editor of a curved flight: shows the texture from above, where the user
/// lays out the control net and the viewing directions.
///
/// It works on lists that its owner lends, together with the profile editor, which
/// it makes and destroys. Painting is what keeps the waypoints on the curve.
class SetFlightPathDialog : public PathEditor {
    Q_OBJECT

public:
    SetFlightPathDialog(QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                        int &waypointLevel, double zScaleA, double zScaleE,
                        const QString &textureFile, const QString &elevationFile,
                        double elevationScaleX, double elevationScaleY);
    ~SetFlightPathDialog() override;

    /// A file could not be read; the user has been told.
    [[nodiscard]] bool error() const { return failed; }
    /// The second editor; null once this one has been left.
    [[nodiscard]] SetFlightPathProfileDialog *profile() const
    {
        return profileDialog.get();
    }

    /// Shows the lists after their owner has changed them, in both editors.
    void showLists();

signals:
    /// The user pressed OK: the lists are what he wants.
    void pathAccepted();

private slots:
    void paintEventSlot(QPaintEvent *event);
    void pushButtonOKClicked();
    void pushButtonCancelClicked();
    void addWaypoints();
    void removeWaypoints();
    void eyesFront();
    void focus();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

    [[nodiscard]] QPoint placeAt(const QPoint &pixel) const override;
    [[nodiscard]] bool isInside(const QPoint &plan) const override;
    [[nodiscard]] int checkForControlPoint(int x, int y) const override;
    [[nodiscard]] int checkForDirectionPoint(int x, int y) const override;
    void movePoint(ControlPoint &point, const QPoint &plan) override;
    bool turnHandle(Waypoint &waypoint, const QPoint &plan) override;
    void dropPoint(const QPoint &plan) override;
    void click(const QPoint &plan) override;
    void released() override;
    [[nodiscard]] int toldHeight(const QPoint &plan) const override;
    [[nodiscard]] double handleAngle(const Waypoint &waypoint) const override;
    [[nodiscard]] QCursor pointCursor() const override;
    [[nodiscard]] QCursor handleCursor() const override;
    void updatePicture() override;

private:
    void harmonizeAngles();

    bool loadFiles(const QString &textureFile, const QString &elevationFile,
                   double elevationScaleX, double elevationScaleY);
    void makeImageWidget();
    void loadCursors();
    void connectSignals();
    void makeProfileDialog(double zScaleA, double zScaleE);
    void writeSettings() const;
    /// Ends the two editors' work: settings kept, the profile gone.
    void leave();

    /// "+" has come up: the cursor of a drag or of the point under it, or the arrow.
    void endPlus();
    /// The keys' releases go elsewhere from now on.
    void letKeysGo();
    void updateActionsAndWaypoints();
    /// Does to the lists what the next repaint would.
    void followCurve();

    void paintTexture(QPainter &painter, const QRect &part);
    void paintControlPointNumbers(PathPainter &paint) const;
    void paintCurve(PathPainter &paint, const QList<QPoint> &curve) const;
    void paintWaypoints(PathPainter &paint) const;
    void paintDirections(PathPainter &paint) const;

    std::unique_ptr<Ui_SetFlightPathDialog> ui;
    QImage textureImage;
    std::unique_ptr<ElevationImage> elevationImage;
    QPixmap texturePixmap;
    QScrollArea *scrollArea = nullptr;
    double scaleFactor = 1.0; // the picture is always shown as it is
    Label *imageWidget = nullptr;
    HeldKey plusPressed{Qt::Key_Plus};
    HeldKey minusPressed{Qt::Key_Minus};
    QCursor plusCursor;
    QBitmap plusBitmap, plusMask;
    int focusX = 0; // last pointer position in the plan
    int focusY = 0;
    QCursor directionCursor;
    QBitmap directionBitmap, directionMask;
    std::unique_ptr<SetFlightPathProfileDialog> profileDialog;
    bool failed = false;
    PathIcons icons;
    struct {
        QRect part;      // painted last
        QPixmap picture; // of it, once it has been painted twice in succession
    } shownTexture;
};
