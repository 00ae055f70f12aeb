#pragma once

#include "patheditors/setflightpathdialog.h"
#include "patheditors/setflightpathprofiledialog.h"
#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QLabel>
#include <QList>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>

#include <memory>
#include <optional>

/// Both editors over a texture of 200 by 150 pixels and a terrain that rises to the
/// east, driven as a user does: by pointer, keys and menus.
class EditorFixture {
public:
    EditorFixture();

    /// Shows the editors of the lists as they stand.
    void open(int width = 200, int height = 150);
    /// The four points of one Bezier segment and their seven waypoints, shown.
    void openSquare();
    /// A level path, 180 long, over terrain that rises from 0 to 90.
    void openLevel();
    /// The same in a window that does not show all heights: the axis follows the extent.
    void openLow();

    /// Pointer over the plan: x and y of the plan, y upward.
    void movePlan(int x, int y);
    void pressPlan(int x, int y, Qt::MouseButton button = Qt::LeftButton);
    void releasePlan(int x, int y, Qt::MouseButton button = Qt::LeftButton);
    void clickPlan(int x, int y, Qt::MouseButton button = Qt::LeftButton);
    /// Presses, leads the pointer over the places and releases at the last.
    void dragPlan(const QList<QPoint> &places);

    /// The same over the profile: station and height. From the press to the release
    /// they stand where they stood at the press.
    void moveProfile(int station, int height);
    void pressProfile(int station, int height);
    void releaseProfile(int station, int height);
    [[nodiscard]] QPoint profilePixel(int station, int height) const;

    /// Opens the context menu at a place of the plan and chooses.
    void choosePlan(int x, int y, const QString &action);
    void chooseProfile(int station, int height, const QString &action);

    [[nodiscard]] QString planText() const;
    [[nodiscard]] QString profileText() const;
    [[nodiscard]] QAction *action(const char *name) const;
    void pressButton(const char *name);
    /// Lets both windows paint.
    void paint();
    /// The picture of the plan, and its colour at a place.
    [[nodiscard]] QImage planPicture() const;
    [[nodiscard]] QColor planColour(int x, int y) const;
    [[nodiscard]] QColor profileColour(int station, int height) const;

    [[nodiscard]] QString texture(int width = 200, int height = 150);
    [[nodiscard]] QString elevation(int width = 200, int height = 150);

    QList<ControlPoint> points;
    QList<Waypoint> ways;
    int level = 0;
    double zScale = 1.0;
    QColor ground{100, 140, 90}; // of the texture
    QImage pattern;              // the texture, where there is one
    std::unique_ptr<SetFlightPathDialog> plan;
    SetFlightPathProfileDialog *profile = nullptr;

private:
    [[nodiscard]] QPoint planPixel(int x, int y) const;
    [[nodiscard]] int baseline() const;
    QTemporaryDir m_folder;
    QLabel *m_picture = nullptr;
    std::optional<int> m_heldBaseline;
};
