#pragma once

#include <QString>
#include <QStringList>

class QTextStream;
struct SceneryExtras;

/// Takes the lines of a scenery file behind its told part into extras, which it borrows
/// and which stand at their defaults.
///
/// What stands ahead of the line `[Extras]` is nothing to this program. Lines that it
/// does not understand, and sections that follow, are kept as they are; of a key that
/// stands there several times the last value counts that is one.
class ExtrasReader {
public:
    explicit ExtrasReader(SceneryExtras &extras) : m_extras(extras) {}

    void readLine(const QString &line);
    /// Whether the section has begun.
    [[nodiscard]] bool hasBegun() const { return m_place != Place::Ahead; }
    /// A sentence for each line that is not understood or was limited; of many the first
    /// ones, and how many more there are.
    [[nodiscard]] QStringList told() const;

private:
    enum class Place { Ahead, Within, OtherSection };

    void readPair(const QString &line);
    void keep(const QString &line);
    void tell(const QString &sentence, const QString &line);

    SceneryExtras &m_extras;
    Place m_place = Place::Ahead;
    QStringList m_told;
    qint64 m_untold = 0;
};

/// Writes the section behind the told part: an empty line, `[Extras]`, each extra that
/// does not stand at its default, and the lines that were kept. Nothing without those.
void writeExtras(QTextStream &stream, const SceneryExtras &extras);
