// Frames that were worked out apart from this renderer, where they are at hand: in the
// folder named by ZEPHRANT_GOLDEN.

#include "raster/imagefile.h"
#include "scenery/scenerydata.h"
#include "scenery/scenerydelegate.h"
#include "scenery/scenerymdichild.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class TestGoldenFrames : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QString golden = qEnvironmentVariable("ZEPHRANT_GOLDEN");
        m_folder.setPath(golden + QStringLiteral("/render"));
        if (golden.isEmpty() || !m_folder.exists(QStringLiteral("manifest.json")))
            QSKIP("no expected frames: ZEPHRANT_GOLDEN names no such folder");
    }

    void pixelsAreEqual_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<QStringList>("frames");
        QFile manifest(m_folder.filePath(QStringLiteral("manifest.json")));
        QVERIFY(manifest.open(QIODevice::ReadOnly));
        for (const QJsonValue &entry :
             QJsonDocument::fromJson(manifest.readAll()).array()) {
            QStringList frames;
            for (const QJsonValue &frame : entry[QStringLiteral("frames")].toArray())
                frames.append(frame.toString());
            QTest::newRow(qPrintable(entry[QStringLiteral("scene")].toString()))
                << entry[QStringLiteral("options")].toString() << frames;
        }
    }
    void pixelsAreEqual()
    {
        QFETCH(QString, options);
        QFETCH(QStringList, frames);
        const QString scene = QString::fromLatin1(QTest::currentDataTag());
        storeSettings(options.split(QLatin1Char(' ')));
        SceneryMdiChild view(nullptr, nullptr, nullptr, nullptr, nullptr);
        SceneryDelegate &delegate = view.delegate();
        QVERIFY(delegate.open(m_folder.filePath(scene)));
        const QTemporaryDir output;
        SceneryData &data = delegate.sceneryData();
        data.AusDateiname = output.filePath(QStringLiteral("frame_%d"));
        data.AusgabePPM = true;
        delegate.dataToView();
        const bool done = options.contains(QStringLiteral("--preview"))
                              ? delegate.renderPreview(nullptr)
                              : delegate.renderFinal(nullptr);
        QVERIFY(done);
        for (const QString &name : frames) {
            const QString base = name.section(QLatin1Char('.'), 0, 0);
            const QImage drawn =
                loadImageFile(output.filePath(base + QStringLiteral(".ppm")));
            QImage expected = loadImageFile(m_folder.filePath(
                QStringLiteral("frames/%1/%2").arg(scene.section('.', 0, 0), name)));
            if (data.GenauRechnen == 2) // they are kept in the size that is drawn in
                expected = expected.scaled(expected.width() / 2, expected.height() / 2,
                                           Qt::KeepAspectRatio, Qt::SmoothTransformation);
            QVERIFY2(drawn.convertToFormat(QImage::Format_RGB32) ==
                         expected.convertToFormat(QImage::Format_RGB32),
                     qPrintable(name));
        }
    }

private:
    // The settings that a scene's options name: --quarter N, --antialiasing N.
    static void storeSettings(const QStringList &options)
    {
        QSettings settings(QStringLiteral("Zephrant"), QString());
        settings.clear();
        for (const QString &name :
             {QStringLiteral("Quarter"), QStringLiteral("Antialiasing")}) {
            const qsizetype at = options.indexOf(QStringLiteral("--") + name.toLower());
            if (at >= 0)
                settings.setValue(QStringLiteral("Settings/") + name,
                                  options.value(at + 1).toInt());
        }
    }

    QDir m_folder;
};

QTEST_MAIN(TestGoldenFrames)
#include "test_goldenframes.moc"
