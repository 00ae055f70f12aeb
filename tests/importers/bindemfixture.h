#pragma once

#include "importers/bindemconversion.h"
#include "raster/elevationimage.h"

#include <QTemporaryFile>
#include <QTest>
#include <QtEndian>

#include <algorithm>

/// Answers as set, and counts.
class Questions : public BinDemQuestions {
public:
    bool proceedWithoutKeyword() override
    {
        ++asked;
        return proceed;
    }
    int asked = 0;
    bool proceed = true;
};

/// A raster of a unit grid whose upper left pixel is at (0, rows - 1).
inline BinDemHeader headerOf(int columns, int rows, int bits)
{
    BinDemHeader h;
    h.numberOfColumns = columns;
    h.numberOfRows = rows;
    h.bitsPerPixel = bits;
    h.upperLeftX = 0.0;
    h.upperLeftY = rows - 1.0;
    h.pixelWidth = h.pixelHeight = 1.0;
    return h;
}

/// All of that raster.
inline BinDemOptions wholeOf(const BinDemHeader &header)
{
    BinDemOptions options;
    options.upperLeftX = header.upperLeftX;
    options.upperLeftY = header.upperLeftY;
    options.extentX = header.numberOfColumns;
    options.extentY = header.numberOfRows;
    options.zScale = 1.0;
    return options;
}

/// Numbers as bytes, low byte first.
template <typename Word> QByteArray little(const QVector<Word> &words)
{
    QByteArray bytes;
    for (const Word word : words) {
        const Word swapped = qToLittleEndian(word);
        bytes.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
    }
    return bytes;
}

/// The same, high byte first.
template <typename Word> QByteArray big(const QVector<Word> &words)
{
    QByteArray bytes = little(words);
    for (qsizetype i = 0; i < bytes.size(); i += qsizetype(sizeof(Word)))
        std::reverse(bytes.begin() + i, bytes.begin() + i + qsizetype(sizeof(Word)));
    return bytes;
}

/// Converts rasters that are made in code.
class BinDemFixture {
protected:
    Questions m_questions;
    ElevationImage m_image;
    StoredRange m_range;

    bool convert(QIODevice &file, const BinDemHeader &header,
                 const BinDemOptions &options)
    {
        NoProgress unwatched;
        const Result<BinDem> dem =
            convertBinDem(file, header, options, m_questions, unwatched);
        if (dem) {
            m_image = dem->image;
            m_range = dem->range;
        }
        return dem.has_value();
    }
    bool convert(const QByteArray &bytes, const BinDemHeader &header,
                 const BinDemOptions &options)
    {
        QTemporaryFile file;
        if (!file.open())
            return false;
        file.write(bytes);
        file.close();
        file.open();
        return convert(file, header, options);
    }

    QVector<int> pixels() const
    {
        QVector<int> all;
        for (int row = 0; row < m_image.height(); ++row)
            for (int column = 0; column < m_image.width(); ++column)
                all << ElevationImage::stepsOf(m_image.pixel(column, row));
        return all;
    }

    void reset()
    {
        m_questions = {};
        m_image = {};
        m_range = {};
    }
};
