#pragma once

#include <QImage>
#include <QTest>

#include <algorithm>
#include <initializer_list>

/// Images built in code for the tests of the tools.
namespace images {

/// One colour.
inline QImage plain(int width, int height, QRgb colour,
                    QImage::Format format = QImage::Format_ARGB32)
{
    QImage image(width, height, format);
    image.fill(QColor::fromRgba(colour));
    return image;
}

/// One row of pixel values.
inline QImage row(std::initializer_list<QRgb> colours)
{
    QImage image(static_cast<int>(colours.size()), 1, QImage::Format_ARGB32);
    std::copy(colours.begin(), colours.end(), reinterpret_cast<QRgb *>(image.bits()));
    return image;
}

/// Pixels without a pattern, the same for the same seed.
inline QImage noise(int width, int height, quint32 seed = 1)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            seed = seed * 1664525u + 1013904223u;
            image.setPixel(x, y, 0xFF000000u | seed >> 8);
        }
    }
    return image;
}

/// One test row for each format that files come in; column "format", an int.
inline void addFormatRows()
{
    QTest::addColumn<int>("format");
    QTest::newRow("32 bit") << int(QImage::Format_RGB32);
    QTest::newRow("alpha") << int(QImage::Format_ARGB32);
    QTest::newRow("premultiplied") << int(QImage::Format_ARGB32_Premultiplied);
    QTest::newRow("24 bit") << int(QImage::Format_RGB888);
    QTest::newRow("gray") << int(QImage::Format_Grayscale8);
    QTest::newRow("16 bit gray") << int(QImage::Format_Grayscale16);
    QTest::newRow("16 bit colour") << int(QImage::Format_RGBX64);
    QTest::newRow("16 bit alpha") << int(QImage::Format_RGBA64);
    QTest::newRow("indexed") << int(QImage::Format_Indexed8);
    QTest::newRow("black and white") << int(QImage::Format_Mono);
}

} // namespace images
