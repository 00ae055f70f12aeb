// The frames of a larger collection of cases, where there is one: in the folder render/
// of the one that ZEPHRANT_GOLDEN names.

#include "document/framecasetest.h"
#include "support/goldenfolder.h"

#include <QApplication>
#include <QTest>

class TestGoldenFrames : public QObject {
    Q_OBJECT

private slots:
    void pixelsAreEqual_data() { addFrameCases(goldenFolder("render")); }
    void pixelsAreEqual() { compareFrames(goldenFolder("render")); }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    return runWithGoldenFolder<TestGoldenFrames>("render", argc, argv);
}
#include "test_goldenframes.moc"
