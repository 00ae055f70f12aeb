// Files that are no sceneries, whatever their names say.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "scene/scenerydata.h"
#include "support/modalanswer.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int MostCharacters = 1048576; // of a line
constexpr qint64 MostBytes = qint64(64) << 20;

QByteArray nameLine(int characters)
{
    return QByteArray("TDateiname=").leftJustified(characters, 't') + '\n';
}

} // namespace

class TestSceneryLimits : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_view = std::make_unique<SceneryMdiChild>(nullptr, nullptr, nullptr, nullptr,
                                                   nullptr);
        m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    void cleanup()
    {
        m_view.reset();
        m_dir.reset();
    }

    void longestLineIsRead()
    {
        write(nameLine(MostCharacters) + "BeobYA=7\n");
        QVERIFY(delegate().open(path()));
        QCOMPARE(data().TDateiname.size(), qsizetype(MostCharacters - 11));
        QCOMPARE(data().BeobYA, 7.0);
    }

    void longerLineEndsTheReading()
    {
        write("[Param]\nBeobXA=5\n" + nameLine(MostCharacters + 1) + "BeobYA=7\n");
        QVERIFY(!delegate().open(path()));
        QCOMPARE(delegate().errorString(),
                 "Line too long: " + QString("TDateiname=").leftJustified(200, 't'));
        QCOMPARE(data().BeobYA, 0.0);
        QVERIFY(!delegate().isOpen());
    }

    void deviceWithoutLineEndsIsToldInTheUsualBox()
    {
        const QString zero = m_dir->filePath("zero.zph");
        QVERIFY(QFile::link("/dev/zero", zero));
        ModalAnswers answers;
        answers.pressButton("Error",
                            QString("Cannot open file \"%1\":\nLine too long: %2.")
                                .arg(zero, QString(200, QChar::ReplacementCharacter)),
                            QMessageBox::Ok);
        QVERIFY(!m_view->loadFile(zero));
        QCOMPARE(answers.complaints(), QStringList());
    }

    void largestFileIsRead()
    {
        write("[Param]\nBeobXA=5\n\n");
        QCOMPARE(::truncate(QFile::encodeName(path()).constData(), MostBytes), 0);
        QVERIFY(delegate().open(path()));
        QCOMPARE(data().BeobXA, 5.0);
    }

    void largerFileIsRefusedAndChangesNothing()
    {
        write("[Param]\nBeobXA=5\n\n");
        QCOMPARE(::truncate(QFile::encodeName(path()).constData(), MostBytes + 1), 0);
        data().BeobXA = 3;
        QVERIFY(!delegate().open(path()));
        QCOMPARE(delegate().errorString(), QString("The file has more than 64 MB"));
        QCOMPARE(data().BeobXA, 3.0);
        QVERIFY(!delegate().isOpen());
    }

    // Its size cannot be asked for.
    void deviceWithoutAnEndIsRefused()
    {
        const QByteArray pipe = QFile::encodeName(m_dir->filePath("pipe"));
        QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
        std::signal(SIGPIPE, SIG_IGN);
        std::thread writer([&pipe] {
            const int out = ::open(pipe.constData(), O_WRONLY | O_CLOEXEC);
            const QByteArray line = nameLine(100000);
            while (::write(out, line.constData(), size_t(line.size())) > 0) {
            }
            ::close(out);
        });
        const bool opened = delegate().open(QString::fromLocal8Bit(pipe));
        writer.join();
        QVERIFY(!opened);
        QCOMPARE(delegate().errorString(), QString("The file has more than 64 MB"));
    }

private:
    [[nodiscard]] QString path() const { return m_dir->filePath("s.zph"); }
    [[nodiscard]] SceneryDelegate &delegate() const { return m_view->delegate(); }
    [[nodiscard]] SceneryData &data() const { return delegate().sceneryData(); }
    void write(const QByteArray &text) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<SceneryMdiChild> m_view;
};

QTEST_MAIN(TestSceneryLimits)
#include "test_scenerylimits.moc"
