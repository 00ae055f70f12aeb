#pragma once

#include "iso8211/sc_record.h"
#include "iso8211/sio_8211converter.h"
#include "support/isofile.h"

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

/// A transfer of two records, as the tests of the reader take it apart.
namespace smalltransfer {

inline const sio_8211Converter_BI16 converterBI16;
inline const sio_8211ConverterHints Hints = {{"ELEVATION", &converterBI16}};

inline const isofile::Description Cell = {"CELL", "CELL", "MODN!RCID!ROWI", "(A,2I)"};
inline const isofile::Description Values = {"CVLS", "CELL VALUES", "*ELEVATION",
                                            "(B(16))", "26"};

inline isofile::Field cellOf(int row)
{
    return {"CELL", isofile::units({"CEL0", std::to_string(row), std::to_string(row)})};
}

inline isofile::Field valuesOf(const std::vector<int> &values)
{
    isofile::Field field = {"CVLS", ""};
    for (const int value : values)
        field.bytes += isofile::bigEndian(value, 2);
    return field;
}

inline QString described(const sc_Subfield &subfield)
{
    QString text = QString::fromStdString(
        subfield.getName().empty() ? subfield.getMnemonic() : subfield.getName());
    text += '=';
    std::int32_t number = 0;
    double real = 0;
    std::string letters;
    if (subfield.getValue().getLong(number))
        text += QString::number(number);
    else if (subfield.getValue().getDouble(real))
        text += QString::number(real);
    else if (subfield.getA(letters))
        text += QString::fromStdString(letters);
    return text;
}

// "CELL[MODN=CEL0 RCID=1] CVLS[ELEVATION=7]"
inline QString described(const sc_Record &record)
{
    QStringList fields;
    for (const sc_Field &field : record) {
        QStringList subfields;
        for (const sc_Subfield &subfield : field)
            subfields.append(described(subfield));
        fields.append(QString::fromStdString(field.getMnemonic()) + '[' +
                      subfields.join(' ') + ']');
    }
    return fields.join(' ');
}

inline std::string smallTransfer(char leaderIdentifier)
{
    std::string file =
        isofile::ddr({Cell, Values}) +
        isofile::record({cellOf(1), valuesOf({100, -2})}, leaderIdentifier);
    if (leaderIdentifier == 'R')
        return file + isofile::fieldArea({cellOf(2), valuesOf({300, 4})});
    return file + isofile::record({cellOf(2), valuesOf({300, 4})});
}

inline const QString First = "CELL[MODN=CEL0 RCID=1 ROWI=1] "
                             "CVLS[ELEVATION=100] CVLS[ELEVATION=-2]";
inline const QString Second = "CELL[MODN=CEL0 RCID=2 ROWI=2] "
                              "CVLS[ELEVATION=300] CVLS[ELEVATION=4]";

} // namespace smalltransfer
