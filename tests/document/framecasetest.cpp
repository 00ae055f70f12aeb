#include "document/framecasetest.h"

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "raster/imagefile.h"
#include "scene/scenerydata.h"

#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(FrameCase)

void addFrameCases(const QDir &folder)
{
    QTest::addColumn<FrameCase>("one");
    const QList<FrameCase> cases = frameCases(folder);
    QVERIFY2(!cases.isEmpty(), qPrintable(folder.path()));
    for (const FrameCase &one : cases)
        QTest::newRow(qPrintable(one.scene)) << one;
}

void compareFrames(const QDir &folder)
{
    QFETCH(FrameCase, one);
    storeSettings(one);
    SceneryMdiChild view(nullptr, nullptr, nullptr, nullptr, nullptr);
    SceneryDelegate &delegate = view.delegate();
    QVERIFY(delegate.open(folder.filePath(one.scene)));
    const QTemporaryDir output;
    SceneryData &data = delegate.sceneryData();
    data.AusDateiname = output.filePath(QStringLiteral("frame_%d"));
    data.AusgabePPM = true;
    delegate.dataToView();
    QVERIFY(one.isPreview() ? delegate.renderPreview(nullptr)
                            : delegate.renderFinal(nullptr));
    QVERIFY(!one.frames.isEmpty());
    for (const QString &name : one.frames) {
        const QString base = name.section('.', 0, 0);
        const QImage drawn = loadImageFile(output.filePath(base + ".ppm"));
        QImage expected = loadImageFile(folder.filePath(one.pathOf(name)));
        // They are kept in the size that is drawn in.
        if (data.GenauRechnen == 2 && !one.isPreview())
            expected = expected.scaled(expected.width() / 2, expected.height() / 2,
                                       Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QVERIFY2(!expected.isNull(), qPrintable(name));
        QVERIFY2(drawn.convertToFormat(QImage::Format_RGB32) ==
                     expected.convertToFormat(QImage::Format_RGB32),
                 qPrintable(name));
    }
}
