#pragma once

#include "terrain/terrainrequest.h"
#include "ui_texturepanel.h"

#include <QWidget>

/// Makes the labels of a window's fields equally wide, across its forms.
void alignLabels(const QWidget *window);

/// How a texture is made from heights: colours and light.
class TexturePanel : public QWidget, private Ui::TexturePanel {
    Q_OBJECT

public:
    explicit TexturePanel(QWidget *parent = nullptr);

    /// What the fields say; photographs and size are not theirs.
    [[nodiscard]] TextureRequest request() const;
    void setLight(BakedLight light);
    /// Whether the colours come from the palette.
    void setPaletteUsed(bool used);
    /// A sentence where something is missing; empty where all is there.
    [[nodiscard]] QString missing() const;

private:
    void enableFields();

    bool m_usesPalette = true;
};
