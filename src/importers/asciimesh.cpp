#include "importers/asciimesh.h"

#include "importers/xyzreader.h"

#include <QIODevice>

void MeshBoundaries::widen(double x, double y)
{
    if (x < minX)
        minX = x;
    if (x > maxX)
        maxX = x;
    if (y > maxY)
        maxY = y;
    if (y < minY)
        minY = y;
}

Result<MeshScan> scanTextMesh(QIODevice &in, int skip, MeshBoundaries &boundaries,
                              Progress &progress)
{
    MeshScan scan;
    XyzReader reader(in);
    for (; scan.lineCounter < skip; ++scan.lineCounter)
        reader.skipLine();
    const qint64 size = in.isSequential() ? 0 : in.size();
    bool atBeginning = true;
    while (!reader.atEnd()) {
        const XyzReader::Line line = reader.readLine();
        const bool complete = line.items >= 3;
        const double x = complete ? line.x : 0.0;
        const double y = complete ? line.y : 0.0;
        if (complete && !(x == 0.0 && y == 0.0 && line.z == 0.0))
            atBeginning = false;
        else if (atBeginning)
            ++scan.zeroTriples;
        boundaries.widen(x, y);
        if (++scan.lineCounter % LineProgress::LinesPerStep == 0 &&
            !progress.step(in.pos(), size))
            return stopped();
    }
    return scan;
}

QStringList zeroTripleWarnings(const MeshScan &scan, int skip)
{
    if (scan.zeroTriples < 1)
        return {};
    return {
        scan.zeroTriples == 1
            ? AsciiMesh::tr("All-zero triple detected at the beginning of the file.")
            : AsciiMesh::tr("There were %1 all-zero triples detected at the beginning of "
                            "the file.")
                  .arg(scan.zeroTriples),
        AsciiMesh::tr("  Check the number of lines to skip, you specified:"),
        AsciiMesh::tr("  \"Skip First %1 Line(s)\".").arg(skip)};
}

LineProgress::LineProgress(const QIODevice &in, Progress &progress)
    : m_in(in), m_progress(progress), m_size(in.isSequential() ? 0 : in.size())
{
}

bool LineProgress::nextLine()
{
    return ++m_lines % LinesPerStep != 0 || m_progress.step(m_in.pos(), m_size);
}

void MeshMessages::addShortLine(int items)
{
    const QString text = items == 1   ? AsciiMesh::tr("Line %1: only one item found.")
                         : items == 2 ? AsciiMesh::tr("Line %1: only two items found.")
                                      : AsciiMesh::tr("Line %1: no item found.");
    addLimited(text.arg(m_firstLine + m_dataLine));
}

void MeshMessages::addLimited(const QString &row)
{
    if (m_rows.size() < Limit)
        m_rows << row;
}

void MeshMessages::closeIfFull()
{
    if (m_rows.size() == Limit)
        m_rows << AsciiMesh::tr("Number of error messages exceeded.");
}

void MeshMessages::endLine()
{
    closeIfFull();
    ++m_dataLine;
}
