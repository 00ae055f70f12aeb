#pragma once

#include "livedocks/mapview.h"
#include "scene/scenerydocument.h"

#include <QDockWidget>

#include <QDateTime>

class BackgroundWork;
class LiveSession;

/// The dock with the map of the active scenery, on which the camera of the live view
/// stands.
class MapDock : public QDockWidget {
    Q_OBJECT

public:
    /// The session, which outlives the dock, is borrowed.
    explicit MapDock(LiveSession &session, QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;

private:
    void showContent();
    void takeDocument();
    void takeCamera();
    void showGround();
    [[nodiscard]] QSizeF findWorld() const;

    LiveSession &m_session;
    MapView::Content m_content;
    SceneryDocument m_document; // that the content was made from
    QString m_folder;           // of its file
    MapView *m_view;
    BackgroundWork *m_loading;
    QString m_file;   // of the ground that is shown
    QDateTime m_time; // and when it was written
};
