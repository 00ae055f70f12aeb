#pragma once

#include "base/result.h"

#include <QStringView>

struct SceneryDocument;

/// Highest index of a waypoint or control point that a file may name. A line that
/// names a higher one is an unknown key, or one line could take all memory.
constexpr int MaxListIndex = 65535;

/// Takes single lines of a scenery file into a document, which it borrows.
class SceneryReader {
public:
    /// What a line that was accepted is.
    enum class Line {
        Plain,
        ObsoleteFormatOff, // the obsolete output format, not selected
        ObsoleteFormatOn,  // it was selected; PNG stands in for it
    };

    explicit SceneryReader(SceneryDocument &document) : m_document(document) {}

    /// Takes one compacted line, or fails with a complaint about it.
    [[nodiscard]] Result<Line> readLine(QStringView line);
    [[nodiscard]] bool headSeen() const { return m_headSeen; }

private:
    // Whether the line is of this kind; fails where it is and has no good value.
    [[nodiscard]] Result<bool> readScalar(QStringView line);
    [[nodiscard]] Result<bool> readWaypoint(QStringView line);
    [[nodiscard]] Result<bool> readControlPoint(QStringView line);

    SceneryDocument &m_document;
    bool m_headSeen = false;
};
