#pragma once

#include "terraindialogs/terrainjobdialog.h"
#include "ui_texturefromelevationdialog.h"

/// "Texture From Elevation": makes a texture from an elevation file of the program.
class TextureFromElevationDialog : public TerrainJobDialog,
                                   private Ui::TextureFromElevationDialog {
    Q_OBJECT

public:
    explicit TextureFromElevationDialog(QWidget *parent = nullptr);

    void setElevation(const QString &file);
    void accept() override;

signals:
    void textureWritten(const TerrainReport &report);

private:
    void enableFields() override;
    void browseElevation();
    void browseOut();
    void proposeOut();

    QString m_proposedOut;
};
