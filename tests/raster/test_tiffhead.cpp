#include "raster/tiffhead.h"

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

struct Entry {
    quint16 tag;
    QList<quint16> values; // short numbers
};

// A TIFF of nothing but its first directory.
class Bytes {
public:
    Bytes(bool big, bool littleEndian) : m_big(big), m_little(littleEndian) {}

    QByteArray of(const QList<Entry> &entries)
    {
        m_bytes = m_little ? "II" : "MM";
        add(2, m_big ? 43 : 42);
        if (m_big) {
            add(2, 8);
            add(2, 0);
        }
        add(wide(), m_big ? 16 : 8);
        add(m_big ? 8 : 2, quint64(entries.size()));
        const qsizetype end = m_bytes.size() + entries.size() * (4 + 2 * wide()) + wide();
        QByteArray behind;
        for (const Entry &entry : entries)
            addEntry(entry, end, behind);
        add(wide(), 0);
        return m_bytes + behind;
    }

private:
    [[nodiscard]] int wide() const { return m_big ? 8 : 4; }
    void add(int bytes, quint64 value) { append(m_bytes, bytes, value); }
    void append(QByteArray &to, int bytes, quint64 value) const
    {
        for (int i = 0; i < bytes; ++i) {
            const int shift = 8 * (m_little ? i : bytes - 1 - i);
            to.append(static_cast<char>(value >> shift & 0xFF));
        }
    }
    void addEntry(const Entry &entry, qsizetype end, QByteArray &behind)
    {
        add(2, entry.tag);
        add(2, 3);
        add(wide(), quint64(entry.values.size()));
        QByteArray values;
        for (const quint16 value : entry.values)
            append(values, 2, value);
        if (values.size() > wide()) {
            add(wide(), quint64(end + behind.size()));
            behind += values;
        } else {
            m_bytes += values.leftJustified(wide(), '\0');
        }
    }

    bool m_big;
    bool m_little;
    QByteArray m_bytes;
};

std::optional<TiffHead> headOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return readTiffHead(buffer);
}

} // namespace

class TestTiffHead : public QObject {
    Q_OBJECT

private slots:
    void samplesAndPlaceAreRead_data()
    {
        QTest::addColumn<QList<Entry>>("entries");
        QTest::addColumn<TiffHead>("head");
        QTest::newRow("black and white") << QList<Entry>{{256, {5}}} << TiffHead{1};
        QTest::newRow("grey") << QList<Entry>{{258, {8}}} << TiffHead{8};
        QTest::newRow("colours") << QList<Entry>{{258, {8, 8, 8}}} << TiffHead{8};
        QTest::newRow("one wider")
            << QList<Entry>{{258, {8, 8, 8, 8, 16}}} << TiffHead{16};
        QTest::newRow("16 bits") << QList<Entry>{{258, {16}}, {339, {2}}} << TiffHead{16};
        QTest::newRow("floating")
            << QList<Entry>{{258, {32}}, {339, {3}}} << TiffHead{32, true};
        for (const quint16 tag : {33550, 33922, 34264, 34735})
            QTest::addRow("tag %d", tag)
                << QList<Entry>{{258, {8}}, {tag, {1, 2, 3}}} << TiffHead{8, false, true};
        QTest::newRow("another tag")
            << QList<Entry>{{258, {8}}, {34736, {1}}} << TiffHead{8};
    }
    void samplesAndPlaceAreRead()
    {
        QFETCH(QList<Entry>, entries);
        QFETCH(TiffHead, head);
        for (const bool big : {false, true})
            for (const bool little : {false, true}) {
                const auto read = headOf(Bytes(big, little).of(entries));
                QVERIFY(read);
                QCOMPARE(*read, head);
            }
    }

    void whatIsCutOrNoTiffHasNoHead()
    {
        const QByteArray whole =
            Bytes(false, true).of({{256, {5}}, {258, {8, 8, 8, 16}}, {33550, {1, 2, 3}}});
        for (qsizetype length = 0; length < 8 + 2 + 36 - 4; ++length)
            QVERIFY2(!headOf(whole.left(length)), qPrintable(QString::number(length)));
        QVERIFY(!headOf(QByteArray(100, 'x')));
        QVERIFY(!headOf("II" + QByteArray("\x2A\0\xFF\xFF\xFF\xFF", 6)));
        // More entries than there may be.
        QVERIFY(!headOf(QByteArray("II\x2B\0\x08\0\0\0\x10\0\0\0\0\0\0\0", 16) +
                        QByteArray(8, '\x7F') + QByteArray(1000, '\0')));
    }

    void filesOfTheToolkitAreRead()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath("a.tif");
        QVERIFY(QImage(3, 2, QImage::Format_RGB32).save(name));
        QCOMPARE(readTiffHead(name)->bits, 8);
        QVERIFY(!readTiffHead(name)->georeferenced);
        QVERIFY(QImage(3, 2, QImage::Format_Grayscale16).save(name));
        QCOMPARE(readTiffHead(name)->bits, 16);
        QVERIFY(!readTiffHead(folder.path()));
        QVERIFY(!readTiffHead(folder.filePath("none.tif")));
    }
};

QTEST_MAIN(TestTiffHead)
#include "test_tiffhead.moc"
