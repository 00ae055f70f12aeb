// Documents that are saved, and the settings.

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "document/scenerymdichild.h"
#include "faults/operations.h"
#include "faults/testfiles.h"
#include "raster/imagefile.h"
#include "ui_scenerymdichildform.h"
#include "views/imagemdichild.h"
#include "views/noticelabel.h"

#include <QAction>
#include <QFile>

namespace {

class SaveScenery : public WindowOperation {
public:
    void prepare(const QString &folder) override
    {
        writeScenery(folder, QStringLiteral("s.zph"));
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->open(folder + QStringLiteral("/s.zph"));
        auto *const view = qobject_cast<SceneryMdiChild *>(m_window->activeMdiChild());
        if (!view)
            qFatal("no scenery is open");
        view->form().doubleSpinBoxCameraFromX->setValue(17);
    }
    [[nodiscard]] QStringList targets() const override { return {"s.zph"}; }

protected:
    void perform() override
    {
        m_window->findChild<QAction *>("action_Save", Qt::FindDirectChildrenOnly)
            ->trigger();
    }

private:
    std::unique_ptr<MainWindow> m_window;
};

// A picture of an image view in one of the formats.
class SavePicture : public WindowOperation {
public:
    SavePicture(const QString &format, QImage::Format pixels)
        : m_file("picture." + format), m_pixels(pixels)
    {
    }
    void prepare(const QString &folder) override
    {
        const QString source = folder + QStringLiteral("/source.png");
        if (!saveImageFile(testPicture({120, 80}).convertToFormat(m_pixels), source))
            qFatal("no source");
        writeText(folder + '/' + m_file, "an earlier picture");
        m_target = folder + '/' + m_file;
        m_view = std::make_unique<ImageMdiChild>();
        m_view->setAttribute(Qt::WA_DeleteOnClose, false);
        if (!m_view->loadFile(source))
            qFatal("no picture is open");
        m_view->show();
    }
    [[nodiscard]] QStringList targets() const override { return {m_file}; }

protected:
    void perform() override { m_view->saveFile(m_target); }

private:
    QString m_file;
    QImage::Format m_pixels;
    QString m_target;
    std::unique_ptr<ImageMdiChild> m_view;
};

class StoreSettings : public WindowOperation {
public:
    void prepare(const QString &folder) override
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
        AppSettings().setValue("mostRecentFile1", QString(300, 'a'));
        m_window = std::make_unique<MainWindow>();
    }
    [[nodiscard]] QStringList targets() const override
    {
        return {"Kolvenar/Zephrant.conf"};
    }

protected:
    void perform() override
    {
        AppSettings().setValue("mostRecentFile1", QString(300, 'b'));
    }
    [[nodiscard]] QString notice() const override
    {
        return m_window->findChild<NoticeLabel *>()->notice();
    }

private:
    std::unique_ptr<MainWindow> m_window;
};

} // namespace

std::vector<OperationEntry> documentOperations()
{
    std::vector<OperationEntry> all{
        {"scenery", [] { return std::make_unique<SaveScenery>(); }},
        {"settings", [] { return std::make_unique<StoreSettings>(); }}};
    for (const char *format : {"bmp", "jpg", "png", "ppm", "tga", "tif"}) {
        all.push_back({QStringLiteral("picture-") + format, [format] {
                           return std::make_unique<SavePicture>(format,
                                                                QImage::Format_RGB32);
                       }});
        // Transparent ones are converted on their way.
        all.push_back({QStringLiteral("picture-alpha-") + format, [format] {
                           return std::make_unique<SavePicture>(format,
                                                                QImage::Format_ARGB32);
                       }});
    }
    return all;
}
