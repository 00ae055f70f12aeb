#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

class ModalAnswers;
class QDialog;

/// A run of an importer or a tool over the files of TerrainFixture: in its window, and as
/// a command.
struct ToldRun {
    QString action;        ///< that opens the window
    QStringList files;     ///< caption|button|names, names between +
    QStringList before;    ///< fields that are set before the files, as name=value
    QStringList after;     ///< and after them; a button alone is clicked
    QString boxes;         ///< y or n for each box that opens
    QStringList arguments; ///< of the command, without TO

    /// Rows of a table, several for each of the fifteen.
    static void addRows();
    /// The row in hand.
    [[nodiscard]] static ToldRun fetched();

    /// Announces what the window is going to ask for, in its order.
    void announce(ModalAnswers &answers, const QDir &folder, const QString &to) const;
    /// Fills the window, presses OK, and waits until it has closed.
    void drive(const QDialog &dialog) const;
};
