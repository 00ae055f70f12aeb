#pragma once

#include "document/scenerymdichild.h"
#include "ui_scenerymdichildform.h"

#include <QAction>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A new scenery document with its form, shown.
class SceneryViewFixture {
protected:
    void openView();
    void closeView();
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_dir->filePath(name);
    }
    void click(QAbstractButton *button)
    {
        QTest::mouseClick(button, Qt::LeftButton, {}, {5, button->height() / 2});
    }
    void writePictures(const QSize &texture, const QSize &elevation);
    void prepareRun();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QAction> m_zoom;
    std::unique_ptr<SceneryMdiChild> m_view;
    Ui_SceneryMdiChildForm *m_form = nullptr;
};
