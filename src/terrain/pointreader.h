#pragma once

#include "base/result.h"
#include "terrain/pointtext.h"
#include "terrain/textlines.h"

#include <QString>

#include <vector>

/// A point of a terrain; z is NaN where its height is not known.
struct GroundPoint {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0; ///< metres

    bool operator==(const GroundPoint &) const = default;
};

/// Reads a text of points, some thousand at a time. Lines that hold no point are passed
/// over and counted.
class PointReader {
public:
    static constexpr std::size_t BatchSize = 4096;

    /// Borrows the device, which is open for reading. `name` begins the sentences.
    PointReader(QIODevice &device, QString name, const PointFormat &format);

    /// The next points, at most BatchSize; none at the end. Fails where most lines hold
    /// none.
    [[nodiscard]] Result<void> next(std::vector<GroundPoint> &batch);

    [[nodiscard]] qint64 pointsRead() const { return m_points; }
    [[nodiscard]] qint64 badLines() const { return m_badLines; }
    /// A sentence on the lines that hold no point; empty where all do.
    [[nodiscard]] QString complaint() const;
    [[nodiscard]] qint64 bytesRead() const { return m_lines.bytesRead(); }

private:
    [[nodiscard]] bool read(std::string_view line, GroundPoint &point);
    void complain(std::string_view line, int column);
    [[nodiscard]] bool isMostlyJunk() const;

    TextLines m_lines;
    QString m_name;
    PointFormat m_format;
    int m_columnsNeeded;
    PointFields m_fields;
    qint64 m_points = 0;
    qint64 m_badLines = 0;
    QString m_firstFault; // a clause on the first bad line
};
