#pragma once

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>

/// What an importer or a tool has come to, for the report on it.
struct OperationOutcome {
    /// Something that the operation knows, such as "Points used": "12 of 14".
    struct Fact {
        QString name;
        QString value;
        bool operator==(const Fact &) const = default;
    };

    /// What the file that was written holds. Unknown: that is seen by looking at it.
    enum class Holds { Unknown, Heights, Colours };

    QString title;  ///< of its window
    QString file;   ///< what was written; empty where nothing was
    QImage picture; ///< the same; shares its pixels with the operation's. Null:
                    ///< the file is read
    Holds holds = Holds::Unknown;
    QList<Fact> facts;    ///< in the order in which they are to be read
    QStringList messages; ///< boxes and rows of lists that went with the window
    QStringList refused;  ///< files to be read, of an operation that wrote nothing and
                          ///< told of a failure
};
