#pragma once

#include <QString>
#include <QStringView>

struct SceneryDocument;

/// Highest index of a waypoint or control point that a file may name. A line that
/// names a higher one is an unknown key, or one line could take all memory.
constexpr int MaxListIndex = 65535;

/// Takes single lines of a scenery file into a document, which it borrows.
class SceneryReader {
public:
    enum class LineResult {
        Rejected,
        Accepted,
        ObsoleteFormatOff, // accepted: the obsolete output format, not selected
        ObsoleteFormatOn,  // accepted: it was selected; PNG stands in for it
    };

    explicit SceneryReader(SceneryDocument &document) : m_document(document) {}

    /// Accepts one compacted line. `error` gets the complaint if it is rejected.
    [[nodiscard]] LineResult readLine(QStringView line, QString *error);
    [[nodiscard]] bool headSeen() const { return m_headSeen; }

private:
    [[nodiscard]] bool readScalar(QStringView key, QStringView value, QString *error,
                                  bool *known);
    [[nodiscard]] bool readWaypoint(QStringView line, QString *error, bool *known);
    [[nodiscard]] bool readControlPoint(QStringView line, QString *error, bool *known);

    SceneryDocument &m_document;
    bool m_headSeen = false;
};
