#pragma once

#include "shell/mdichild.h"

class QAction;

/// Stands in for the scenery view until there is one.
class SceneryMdiChild : public MdiChild {
    Q_OBJECT

public:
    SceneryMdiChild(QWidget *parent, QAction *, QAction *, QAction *, QAction *)
        : MdiChild(parent)
    {
    }
    bool loadFile(const QString &) override { return false; }
    bool saveAs() override { return false; }
    bool saveFile(const QString &) override { return false; }
    bool copy() override { return false; }
    bool paste() override { return false; }
    [[nodiscard]] bool isModified() const override { return false; }
    [[nodiscard]] bool isRendering() const { return false; }
    [[nodiscard]] bool hasChildren() const { return false; }
    void copyFirstLast() {}
    void copyLastFirst() {}
    void renderFinal() {}
    void renderPreview() {}
    bool stopRendering() { return true; }
};
