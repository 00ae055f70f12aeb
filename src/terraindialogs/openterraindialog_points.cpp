// How files of points are read.

#include "terraindialogs/openterraindialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpression>

#include <optional>

namespace {

// In the order of the choices.
constexpr QLatin1String Separators(",;\t ");
constexpr QLatin1String DecimalPoints(".,");

/// The columns that a text names; nothing where it is neither empty nor three of them.
std::optional<QList<int>> columnsIn(const QString &text)
{
    if (text.trimmed().isEmpty())
        return QList<int>();
    static const QRegularExpression three(QStringLiteral(
        "^\\s*(\\d{1,4})\\s*[,; ]\\s*(\\d{1,4})\\s*[,; ]\\s*(\\d{1,4})\\s*$"));
    const QRegularExpressionMatch match = three.match(text);
    if (!match.hasMatch())
        return {};
    const QList<int> columns{match.captured(1).toInt(), match.captured(2).toInt(),
                             match.captured(3).toInt()};
    const bool isOnce =
        columns[0] != columns[1] && columns[1] != columns[2] && columns[0] != columns[2];
    return isOnce && !columns.contains(0) ? std::optional(columns) : std::nullopt;
}

/// Puts what was found behind the first entry of a choice of signs; nothing where no sign
/// is known.
void setFound(QComboBox *choice, const QLatin1String &signs, std::optional<char> sign)
{
    QString text = OpenTerrainDialog::tr("Automatic");
    if (sign) {
        const auto entry = signs.indexOf(QLatin1Char(*sign));
        text = OpenTerrainDialog::tr("Automatic: %1")
                   .arg(entry < 0 ? QString(QLatin1Char(*sign))
                                  : choice->itemText(int(entry) + 1));
    }
    choice->setItemText(0, text);
}

} // namespace

void OpenTerrainDialog::connectPoints()
{
    for (QComboBox *const field : {comboBoxPoints, comboBoxSeparator, comboBoxDecimal})
        connect(field, &QComboBox::currentIndexChanged, this,
                &OpenTerrainDialog::reopenIfAskedElse);
    connect(lineEditColumns, &QLineEdit::editingFinished, this,
            &OpenTerrainDialog::reopenIfAskedElse);
    connect(spinBoxSkip, &QSpinBox::valueChanged, this,
            &OpenTerrainDialog::reopenIfAskedElse);
    connect(doubleSpinBoxMaxEdge, &QDoubleSpinBox::valueChanged, this,
            &OpenTerrainDialog::reopenIfAskedElse);
    connect(tableWidgetPoints, &PointTable::columnsChosen, this,
            [this](const QList<int> &columns) {
                lineEditColumns->setText(QStringLiteral("%1,%2,%3")
                                             .arg(columns.at(0))
                                             .arg(columns.at(1))
                                             .arg(columns.at(2)));
                reopenIfAskedElse();
            });
    connect(&jobs(), &TerrainJobs::pointsFound, this, &OpenTerrainDialog::showPoints);
}

// A field that is only passed by leaves the part that is selected.
void OpenTerrainDialog::reopenIfAskedElse()
{
    if (!(pointOptions() == m_openedAs) || columnsFault() != m_failure)
        reopen();
}

QString OpenTerrainDialog::columnsFault() const
{
    return columnsIn(lineEditColumns->text()) ? QString()
                                              : tr("The columns of x, y and the height "
                                                   "are three different numbers from "
                                                   "1, such as 1,2,3.");
}

PointOptions OpenTerrainDialog::pointOptions() const
{
    PointOptions options;
    options.surface = PointSurface(comboBoxPoints->currentIndex());
    options.columns = columnsIn(lineEditColumns->text()).value_or(QList<int>());
    if (const int index = comboBoxSeparator->currentIndex(); index > 0)
        options.separator = Separators.at(index - 1);
    if (const int index = comboBoxDecimal->currentIndex(); index > 0)
        options.decimalPoint = DecimalPoints.at(index - 1);
    if (spinBoxSkip->value() >= 0)
        options.skippedLines = spinBoxSkip->value();
    if (doubleSpinBoxMaxEdge->value() > 0.0)
        options.longestEdge = doubleSpinBoxMaxEdge->value();
    return options;
}

void OpenTerrainDialog::showPoints(const PointFileHead &head)
{
    m_points = head;
    const PointPreview &preview = head.preview;
    const PointFormat &format = preview.format;
    tableWidgetPoints->setPreview(preview);
    const auto plain = [](QString text) {
        return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
    };
    const QString name = plain(QFileInfo(head.file).fileName());
    const QString lines =
        listWidgetFiles->count() > 1
            ? tr("Fir&st lines of \"%1\"; other files are read as the same choices "
                 "make of them:")
            : tr("Fir&st lines of \"%1\":");
    labelPointHead->setText(preview.fault.isEmpty() ? lines.arg(name)
                                                    : plain(preview.fault));
    // What has been chosen is no find.
    if (comboBoxSeparator->currentIndex() == 0)
        setFound(comboBoxSeparator, Separators, format.separator);
    if (comboBoxDecimal->currentIndex() == 0)
        setFound(comboBoxDecimal, DecimalPoints, format.decimalPoint);
    if (spinBoxSkip->value() < 0)
        spinBoxSkip->setSpecialValueText(tr("Automatic: %1").arg(format.skippedLines));
    lineEditColumns->setPlaceholderText(preview.fault.isEmpty()
                                            ? tr("%1,%2,%3, found in the file")
                                                  .arg(format.columns[0] + 1)
                                                  .arg(format.columns[1] + 1)
                                                  .arg(format.columns[2] + 1)
                                            : tr("found in the file"));
    enableFields();
}

void OpenTerrainDialog::forgetPoints()
{
    m_points.reset();
    setFound(comboBoxSeparator, Separators, {});
    setFound(comboBoxDecimal, DecimalPoints, {});
    spinBoxSkip->setSpecialValueText(tr("Automatic"));
    lineEditColumns->setPlaceholderText(tr("found in the file"));
}

void OpenTerrainDialog::enablePoints()
{
    const bool hasText = m_points.has_value();
    const bool hasPoints = hasText || (m_facts && m_facts->pointsRead > 0);
    tabWidget->setTabVisible(tabWidget->indexOf(tabPoints), hasPoints);
    for (QWidget *const field : QList<QWidget *>{
             comboBoxPoints, lineEditColumns, comboBoxSeparator, comboBoxDecimal,
             spinBoxSkip, labelPointHead, tableWidgetPoints})
        field->setEnabled(hasText);
}
