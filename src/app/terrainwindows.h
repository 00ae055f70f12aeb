#pragma once

#include "app/terrainopener.h"
#include "terraindialogs/terrainjobs.h"

#include <QObject>
#include <QPointer>

class MainWindow;
class OpenTerrainDialog;
class QAction;
class SceneryMdiChild;
struct SceneryDocument;
struct TerrainReport;

/// The windows around terrain: makes them, gives them what the main window knows, and
/// puts their results into it.
///
/// What reads terrain is loaded when a window first needs it, on a thread of its own.
class TerrainWindows : public QObject, public TerrainOpener {
    Q_OBJECT

public:
    /// Adds its commands to the menus of the window.
    explicit TerrainWindows(MainWindow *window);
    ~TerrainWindows() override;

    void openTerrain(const QStringList &files) override;
    void openTrack(const QString &file) override;
    void askWhetherRead(const QString &file,
                        std::function<void(bool reads)> answer) override;
    void askLibrary(std::function<void(const Result<QStringList> &)> answer) override;

public slots:
    void openTerrainWindow();
    void textureFromElevation();
    void pathFromTrack();
    void savePathAs();

private:
    void addCommands();
    void enableCommands();
    [[nodiscard]] SceneryMdiChild *scenery() const;
    [[nodiscard]] TerrainJobs &jobs();
    [[nodiscard]] QString elevationOfActive() const;
    void takePath(SceneryMdiChild &child, const SceneryDocument &flown,
                  const QStringList &told);
    void writePath(const QString &file);
    void tell(const QString &text);
    void report(const TerrainReport &report, const QString &title, const QString &file);

    MainWindow *m_window;
    QPointer<OpenTerrainDialog> m_open;
    std::unique_ptr<TerrainJobs> m_jobs; // for work without a window
    QAction *m_pathFromTrack = nullptr;
    QAction *m_savePathAs = nullptr;
};
