#pragma once

#include "scene/scenerydocument.h"
#include "terraindialogs/terrainjobdialog.h"
#include "ui_pathfromtrackdialog.h"

/// "Path From Track": turns a track into the path of a curved flight of a scenery.
///
/// The scenery with its path is given by pathFound(); the window closes then.
class PathFromTrackDialog : public TerrainJobDialog, private Ui::PathFromTrackDialog {
    Q_OBJECT

public:
    /// `folder` is that of the scenery's file, in which relative names are looked for;
    /// empty where it has none yet.
    PathFromTrackDialog(SceneryDocument scenery, QString folder, TerrainSourceMaker make,
                        QWidget *parent = nullptr);

    void setTrack(const QString &file);
    void accept() override;

signals:
    /// `told`: sentences on what was found.
    void pathFound(const SceneryDocument &scenery, const QStringList &told);

private:
    void enableFields() override;
    void browse();
    void finish(const Result<std::pair<SceneryDocument, QStringList>> &found);

    SceneryDocument m_scenery;
    QString m_folder;
};
