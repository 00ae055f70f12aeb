#pragma once

#include <QDoubleSpinBox>

/// The field of a decimal number.
///
/// The single point or comma of a text is its decimal sign in every locale, so that
/// numbers read elsewhere can be typed and pasted as they stand. Nothing separates
/// groups of digits: a second sign, and a blank or an apostrophe between two digits, are
/// refused as they come. The field shows the sign of its locale.
class DecimalSpinBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    explicit DecimalSpinBox(QWidget *parent = nullptr);

    /// Also writes the sign of the locale into the text, and takes blanks off its ends.
    QValidator::State validate(QString &text, int &position) const override;
    [[nodiscard]] double valueFromText(const QString &text) const override;
    /// There is nothing to mend: what is no number leaves the value as it was.
    void fixup(QString &text) const override;

private:
    /// Brings a text into the form that the base class reads; false if it is refused.
    bool toOwnLocale(QString &text, int &position) const;
};
