#pragma once

#include "terraindialogs/terrainjobdialog.h"
#include "ui_openterraindialog.h"

#include <memory>
#include <optional>

/// "Open Terrain": shows what elevation files hold and makes a scenery of it.
///
/// The scenery is told by sceneryWritten(); the window closes then.
class OpenTerrainDialog : public TerrainJobDialog, private Ui::OpenTerrainDialog {
    Q_OBJECT

public:
    explicit OpenTerrainDialog(TerrainSourceMaker make, QWidget *parent = nullptr);

    /// Takes files in place of those that it has, and looks at them.
    void setFiles(const QStringList &files);
    /// All that the window has been told.
    [[nodiscard]] TerrainRequest request() const;

    /// Why the files could not be opened; empty while they can.
    [[nodiscard]] QString failure() const { return m_failure; }

    void accept() override;

signals:
    void sceneryWritten(const TerrainReport &report);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void connectFiles();
    void connectPart();
    void connectTexture();
    void connectPoints();
    void connectJobs();

    void addFiles(const QStringList &files);
    void reopen();
    void reopenIfAskedElse();
    void showPoints(const PointFileHead &head);
    void forgetPoints();
    void enablePoints();
    void showFacts();
    void showScan(const TerrainScan &scan);
    void showMap(const QImage &map, const std::shared_ptr<const Heights> &overview);
    void showGrid(const OutputGrid &grid);
    void showUnderMouse(const std::optional<QPointF> &cell);
    void showFailure(const QString &reason);
    void showCells(const std::optional<QRect> &cells);
    void cellsTyped();
    void rectTyped();
    void askForGrid();
    void enableFields() override;
    void proposeOut();
    void browseOut();

    [[nodiscard]] QStringList listed(const QListWidget *list) const;
    [[nodiscard]] GridRequest gridRequest() const;
    [[nodiscard]] PointOptions pointOptions() const;
    /// What is wrong with the columns that were typed; empty: nothing.
    [[nodiscard]] QString columnsFault() const;
    [[nodiscard]] static QString emptyText();
    [[nodiscard]] TextureRequest textureRequest() const;

    std::optional<TerrainFacts> m_facts;
    std::optional<TerrainScan> m_scan;
    std::optional<OutputGrid> m_grid;
    std::optional<PointFileHead> m_points; // of the present files
    PointOptions m_openedAs;
    std::shared_ptr<const Heights> m_overview; // when the map is whole
    bool m_takesRect = false; // the fields of the rectangle, not cells, tell the part
    QString m_proposedOut;
    QString m_failure;
};
