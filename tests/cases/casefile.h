#pragma once

#include "raster/elevationimage.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// A case of the folder: sections of a text file, each with a name and a kind of content.
/// README.md tells the form.
class CaseFile {
public:
    /// False with the reason if the file is none.
    [[nodiscard]] bool read(const QString &fileName, QString *error);

    [[nodiscard]] bool has(const QString &section) const
    {
        return m_sections.contains(section);
    }
    /// The words behind an option's name; none where it is not there.
    [[nodiscard]] QStringList option(const QString &name) const
    {
        return m_options.value(name);
    }
    [[nodiscard]] double number(const QString &name, double byDefault = 0.0) const;
    [[nodiscard]] int integer(const QString &name, int byDefault = 0) const;

    /// The content of a section as its kind has it. Pixels that stand for any are 0.
    [[nodiscard]] QByteArray bytes(const QString &section) const;
    [[nodiscard]] QList<double> numbers(const QString &section) const;
    [[nodiscard]] ElevationImage elevations(const QString &section) const;
    [[nodiscard]] QImage colours(const QString &section) const;

    /// How an image differs from a section; empty if it does not.
    [[nodiscard]] QString differenceOfElevations(const ElevationImage &image) const;
    [[nodiscard]] QString differenceOfColours(const QImage &image) const;

private:
    using Grid = QList<QStringList>;
    [[nodiscard]] Grid gridOf(const QString &section) const;
    template <class TextOf>
    [[nodiscard]] QString difference(const QImage &image, TextOf textOf) const;

    QMap<QString, QStringList> m_options;
    QMap<QString, QStringList> m_sections; // lines
    QMap<QString, QString> m_kinds;
};
