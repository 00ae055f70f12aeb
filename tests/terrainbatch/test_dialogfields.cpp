#include "commands/toldcommands.h"
#include "importdialogs/importdialogs.h"
#include "tooldialogs/tooldialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHash>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSettings>
#include <QSpinBox>
#include <QTest>

#include <algorithm>

namespace {

const QHash<QString, QString> &actions()
{
    static const QHash<QString, QString> all = {
        {"usgs-dem", "action_UsgsDEMConversionDialog"},
        {"binary-dem", "action_BinConversionDialog"},
        {"ascii-regular", "action_AsciiRegularDialog"},
        {"ascii-irregular", "action_AsciiIrregularDialog"},
        {"sdts", "action_SdtsConversionDialog"},
        {"japan-dem", "action_JapanConversionDialog"},
        {"elevation-to-color", "action_ElevationToColorDialog"},
        {"elevation-to-gray", "action_ElevationToGrayDialog"},
        {"gray-to-elevation", "action_GrayToElevationDialog"},
        {"change-blue-0", "action_ChangeBlue0PixelsDialog"},
        {"convolution", "action_ConvolutionDialog"},
        {"mask", "action_MaskDialog"},
        {"resample", "action_ResampleDialog"},
        {"rectify", "action_RectifyDialog"},
        {"merge", "action_MergeDialog"}};
    return all;
}

std::unique_ptr<QDialog> dialogOf(const QString &command)
{
    for (const auto &table : {importDialogs(), toolDialogs()})
        for (const DialogEntry &entry : table)
            if (actions().value(command) == entry.object)
                return entry.make(nullptr);
    return nullptr;
}

// "doubleSpinBoxZScale" is "z-scale", "checkBoxKeepNODATAValues" "keep-nodata-values".
QString optionName(QString object)
{
    static const QRegularExpression kind(
        "^(spinBox|doubleSpinBox|checkBox|radioButton|comboBox|lineEdit)");
    static const QRegularExpression start(
        "(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])");
    object.remove(kind);
    return object.replace(start, "-").toLower();
}

// Fields that only show something.
bool isForShow(const QString &command, const QWidget *field)
{
    const QString name = field->objectName();
    if (command == "sdts" && qobject_cast<const QSpinBox *>(field))
        return true;
    return name.isEmpty() || name.startsWith("qt_") ||
           name.startsWith("spinBoxElevationRange") || field->inherits("QLineEdit");
}

QString rangeOf(const QWidget *field)
{
    if (const auto *box = qobject_cast<const QSpinBox *>(field))
        return QString("%1 to %2").arg(box->minimum()).arg(box->maximum());
    if (const auto *box = qobject_cast<const QDoubleSpinBox *>(field))
        return QString("%1 to %2, %3")
            .arg(box->minimum(), 0, 'f', 0)
            .arg(box->maximum(), 0, 'f', 0)
            .arg(box->decimals());
    if (const auto *box = qobject_cast<const QComboBox *>(field)) {
        QStringList items;
        for (int i = 0; i < box->count(); ++i)
            items << box->itemText(i);
        return items.join('|');
    }
    return "flag";
}

QString rangeOf(const Option &option)
{
    const QString range =
        QString("%1 to %2").arg(option.lowest, 0, 'f', 0).arg(option.highest, 0, 'f', 0);
    switch (option.kind) {
    case OptionKind::Integer:
        return range;
    case OptionKind::Real:
        return range + QString(", %1").arg(option.decimals);
    case OptionKind::Choice:
        return option.choices.join('|');
    default:
        return "flag";
    }
}

QString defaultOf(const QWidget *field)
{
    if (const auto *box = qobject_cast<const QSpinBox *>(field))
        return QString::number(box->value());
    if (const auto *box = qobject_cast<const QDoubleSpinBox *>(field))
        return QString::number(box->value());
    if (const auto *button = qobject_cast<const QAbstractButton *>(field))
        return button->isChecked() ? "on" : "";
    return {};
}

} // namespace

class TestDialogFields : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QSettings("Kolvenar", "Zephrant").clear(); }

    void everyCommandHasItsDialog()
    {
        QCOMPARE(qsizetype(toldCommands().size()), actions().size());
        for (const Command &command : toldCommands())
            QVERIFY2(dialogOf(command.name), qPrintable(command.name));
    }

    void optionsAreTheFieldsOfTheDialog_data()
    {
        QTest::addColumn<QString>("name");
        for (const Command &command : toldCommands())
            QTest::newRow(qPrintable(command.name)) << command.name;
    }
    void optionsAreTheFieldsOfTheDialog()
    {
        QFETCH(QString, name);
        const std::vector<Command> commands = toldCommands();
        const Command &command =
            *std::find_if(commands.begin(), commands.end(),
                          [&](const Command &each) { return each.name == name; });
        const std::unique_ptr<QDialog> dialog = dialogOf(name);
        QStringList fields;
        for (const QWidget *field : dialog->findChildren<QWidget *>()) {
            const bool isField =
                field->inherits("QAbstractSpinBox") || field->inherits("QCheckBox") ||
                field->inherits("QRadioButton") || field->inherits("QComboBox");
            if (!isField || isForShow(name, field))
                continue;
            const QString wanted = optionName(field->objectName());
            const auto option = std::find_if(
                command.options.begin(), command.options.end(),
                [&wanted](const Option &each) { return each.name == wanted; });
            QVERIFY2(option != command.options.end(), qPrintable(wanted));
            QCOMPARE(rangeOf(*option), rangeOf(field));
            if (option->defaultNote.isEmpty())
                QCOMPARE(option->defaultValue, defaultOf(field));
            fields << wanted;
        }
        const QStringList questions{"normalize", "proceed-anyway", "continue-checking"};
        for (const Option &option : command.options) {
            const bool isFile = option.kind == OptionKind::InputFile;
            QVERIFY2(isFile || fields.contains(option.name) ||
                         questions.contains(option.name) ||
                         option.name.startsWith("corner"),
                     qPrintable(option.name));
        }
    }

    void filesThatTheDialogAsksForAreRequired()
    {
        for (const Command &command : toldCommands()) {
            const std::unique_ptr<QDialog> dialog = dialogOf(command.name);
            QStringList wanted;
            static const QRegularExpression other(
                "^lineEdit(Header|Palette|Kernel|Mask)File$");
            for (const QLineEdit *field : dialog->findChildren<QLineEdit *>())
                if (other.match(field->objectName()).hasMatch())
                    wanted << optionName(field->objectName());
            QStringList required;
            for (const Option &option : command.options)
                if (option.required && option.kind == OptionKind::InputFile)
                    required << option.name;
            QCOMPARE(required, wanted);
        }
    }

    void defaultsAreValuesThatMayBeGiven()
    {
        for (const Command &command : toldCommands())
            for (const Option &option : command.options)
                if (!option.defaultValue.isEmpty())
                    QCOMPARE(complaintOf(option, option.defaultValue), QString());
    }
};

QTEST_MAIN(TestDialogFields)
#include "test_dialogfields.moc"
