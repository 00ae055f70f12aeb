// The least that a program on the toolkit's pictures starts with: start_measures compares
// the batch program with it. With two names it copies a picture, as the least of a run.
#include <QCoreApplication>
#include <QImage>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 3)
        return QImage(1, 1, QImage::Format_RGB32).isNull() ? 1 : 0;
    const QString from = QString::fromLocal8Bit(argv[1]);
    return QImage(from).save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}
