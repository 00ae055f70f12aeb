#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class QIODevice;

// What the imports of regular and of irregular text meshes share.

/// The translation context of their messages.
class AsciiMesh {
    Q_DECLARE_TR_FUNCTIONS(AsciiMesh)
};

/// The extent of the points seen so far. It only ever widens.
struct MeshBoundaries {
    double minX = 2147483647.0;
    double maxX = -2147483647.0;
    double maxY = -2147483647.0;
    double minY = 2147483647.0;

    void widen(double x, double y);
    bool operator==(const MeshBoundaries &) const = default;
};

/// What a scan of a text mesh counted.
struct MeshScan {
    qint64 lineCounter = 0; ///< lines skipped, found or not, and lines read
    qint64 zeroTriples = 0; ///< all-zero triples and short lines at the beginning
};

/// Reads a text mesh and widens the boundaries by its points; a short line counts
/// as the point (0, 0). Steps by bytes whenever the line counter has come to a multiple
/// of 1000.
Result<MeshScan> scanTextMesh(QIODevice &in, int skip, MeshBoundaries &boundaries,
                              Progress &progress);

/// The rows that warn of all-zero triples; none if there are none.
[[nodiscard]] QStringList zeroTripleWarnings(const MeshScan &scan, int skip);

/// Steps by the bytes of a device, once in so many lines.
class LineProgress {
public:
    static constexpr qint64 LinesPerStep = 1000;

    /// Both are borrowed.
    LineProgress(const QIODevice &in, Progress &progress);
    /// A line was read; false if the work is to end.
    [[nodiscard]] bool nextLine();

private:
    const QIODevice &m_in;
    Progress &m_progress;
    const qint64 m_size; // 0 where nobody knows it
    qint64 m_lines = 0;
};

/// Numbers the data lines and collects the complaints of a conversion, at most
/// 100 and a last one which says so.
class MeshMessages {
public:
    explicit MeshMessages(int skippedLines) : m_firstLine(skippedLines) {}

    /// Complains of a line that has 0, 1 or 2 items.
    void addShortLine(int items);
    /// Adds a row as long as there are fewer than 100.
    void addLimited(const QString &row);
    /// Adds a row, limit or not.
    void add(const QString &row) { m_rows << row; }
    /// Says so once when there are 100 rows.
    void closeIfFull();
    /// The same after a line, and counts it.
    void endLine();

    [[nodiscard]] const QStringList &rows() const { return m_rows; }

private:
    static constexpr int Limit = 100;

    QStringList m_rows;
    qint64 m_firstLine;
    qint64 m_dataLine = 0;
};
