#pragma once

#include "raster/elevationimage.h"
#include "raster/textureimage.h"

#include <QDateTime>
#include <QString>

#include <memory>

/// The two input files of a scenery, read once: again only where another file is named or
/// the file has changed.
///
/// For one thread. A file that cannot be read is tried again when it changes.
class InputCache {
public:
    /// The texture of a file; null where it cannot be read.
    [[nodiscard]] std::shared_ptr<TextureImage> texture(const QString &file);
    /// The elevations of a file; null where it cannot be read.
    [[nodiscard]] std::shared_ptr<ElevationImage> elevation(const QString &file);
    /// Whether these files are others by now than those that were read last.
    [[nodiscard]] bool hasChanged(const QString &texture, const QString &elevation) const;

private:
    // A file as it was when it was read.
    struct Stamp {
        QString file;
        qint64 bytes = -1;
        QDateTime time;

        bool operator==(const Stamp &) const = default;
    };
    template <class Image> struct Held {
        Stamp stamp;
        std::shared_ptr<Image> image;
    };

    static Stamp stampOf(const QString &file);
    template <class Image>
    std::shared_ptr<Image> read(Held<Image> &held, const QString &file);

    Held<TextureImage> m_texture;
    Held<ElevationImage> m_elevation;
};
