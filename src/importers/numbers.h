#pragma once

#include <QByteArrayView>
#include <QString>

/// The number that a text begins with, blanks before it passed over; 0 if there is
/// none. What follows the number is ignored, so "1.5D+03" gives 1.5. Always reads a
/// decimal point, whatever the locale.
[[nodiscard]] double leadingNumber(QByteArrayView text);

/// The whole part in decimal digits, however large.
[[nodiscard]] QString wholeNumberText(double value);
