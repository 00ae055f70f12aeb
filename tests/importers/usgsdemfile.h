#pragma once

#include <QByteArray>
#include <QFile>
#include <QVector>

/// Builds small USGS DEM files: a header record and profiles of whole elevations.
struct UsgsDemFile {
    enum Layout { FixedRecords, LineFeeds, WindowsLines, Trimmed };

    QByteArray name = "TILE";
    double east = 1000.0;  // of the first profile
    double north = 2000.0; // of each first sample
    double step = 30.0;
    double stepInHeader = 30.0;
    int sides = 4;
    int unitsCode = 2;
    int columnsInHeader = -1; // as many as there are profiles
    char exponent = 'E';
    Layout layout = FixedRecords;
    QVector<QVector<int>> profiles; // from west to east, each from south to north

    [[nodiscard]] QByteArray real(double value, int width) const
    {
        return QByteArray::number(value, 'E', width == 24 ? 15 : 6)
            .replace('E', exponent)
            .rightJustified(width);
    }
    static QByteArray integer(int value, int width)
    {
        return QByteArray::number(value).rightJustified(width);
    }
    [[nodiscard]] int columns() const
    {
        return columnsInHeader < 0 ? int(profiles.size()) : columnsInHeader;
    }

    [[nodiscard]] QByteArray header() const
    {
        QByteArray h = name.leftJustified(40) + QByteArray("free text").leftJustified(69);
        h += "-1173015.2500  34 730.1234"
             "1"
             " "
             "SEC"
             "ORIG";
        h += integer(1, 6) + integer(0, 6) + integer(1, 6) + integer(11, 6);
        for (int i = 0; i < 15; ++i)
            h += real(i + 0.5, 24);
        h += integer(unitsCode, 6) + integer(2, 6) + integer(sides, 6);
        const double top = north + step * (profiles.value(0).size() - 1);
        const double right = east + step * (columns() - 1);
        for (const double corner : {east, north, east, top, right, top, right, north})
            h += real(corner, 24);
        h += real(10.0, 24) + real(90.5, 24) + real(0.25, 24) + integer(0, 6);
        h += real(stepInHeader, 12) + real(stepInHeader, 12) + real(1.0, 12);
        h += integer(0, 6) + integer(columns(), 6);
        h += "   401"
             "   202"
             " 78719912"
             "3"
             " 1 2 3   4   5 1 2 3 4   1.25";
        return h;
    }

    [[nodiscard]] QByteArray profile(int index) const
    {
        const QVector<int> &samples = profiles[index];
        QByteArray p = integer(1, 6) + integer(index + 1, 6) +
                       integer(int(samples.size()), 6) + integer(1, 6) +
                       real(east + step * index, 24) + real(north, 24) + real(0.0, 24) +
                       real(0.0, 24) + real(99.0, 24);
        for (const int sample : samples)
            p += integer(sample, 6);
        return p;
    }

    [[nodiscard]] QByteArray record(const QByteArray &content) const
    {
        switch (layout) {
        case LineFeeds:
            return content.leftJustified(1024) + '\n';
        case WindowsLines:
            return content.leftJustified(1024) + "\r\n";
        case Trimmed:
            return content + '\n';
        case FixedRecords:
            break;
        }
        return content.leftJustified(1024);
    }

    [[nodiscard]] QByteArray bytes() const
    {
        QByteArray all = record(header());
        for (int i = 0; i < profiles.size(); ++i)
            all += record(profile(i));
        return all;
    }

    void write(const QString &fileName) const
    {
        QFile file(fileName);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes());
    }
};
