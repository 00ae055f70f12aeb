// Imports through their dialogs.

#include "faults/operations.h"
#include "faults/testfiles.h"
#include "importdialogs/asciiirregulardialog.h"
#include "importdialogs/asciiregulardialog.h"
#include "importdialogs/binconversiondialog.h"
#include "importdialogs/japanconversiondialog.h"
#include "importdialogs/sdtsconversiondialog.h"
#include "importdialogs/usgsdemconversiondialog.h"
#include "importers/usgsdemfile.h"
#include "support/modalanswer.h"
#include "support/sdtstransfer.h"

#include <QPushButton>

#include <cstdlib>

namespace {

using Inputs = std::map<QString, QByteArray>; // files and their bytes

// What is chosen in a dialog before OK: a button of it, the caption of the file dialog,
// and the file.
struct Choice {
    const char *button;
    const char *caption;
    QString file;
};

struct Import {
    Inputs inputs;
    std::vector<Choice> choices;
    std::function<std::unique_ptr<QDialog>()> dialog;
};

const QString Output = QStringLiteral("out.png");

class ImportOperation : public WindowOperation {
public:
    explicit ImportOperation(Import import) : m_import(std::move(import)) {}
    void prepare(const QString &folder) override
    {
        for (const auto &[name, bytes] : m_import.inputs)
            writeText(folder + '/' + name, bytes);
        std::srand(1);
        m_dialog = m_import.dialog();
        m_dialog->show();
        for (const Choice &choice : m_import.choices)
            choose(folder, choice);
        // Only now, or the file dialog asks whether to replace it.
        writeText(folder + '/' + Output, "earlier elevations");
        m_ok = m_dialog->findChild<QPushButton *>("pushButtonOK");
        if (!m_ok->isEnabled())
            qFatal("not all files are chosen");
    }
    [[nodiscard]] QStringList targets() const override { return {Output}; }

protected:
    void perform() override { m_ok->click(); }

private:
    void choose(const QString &folder, const Choice &choice) const
    {
        ModalAnswers answers;
        answers.chooseFile(choice.caption, folder + '/' + choice.file);
        m_dialog->findChild<QPushButton *>(choice.button)->click();
        if (!answers.complaints().isEmpty())
            qFatal("%s", qPrintable(answers.complaints().join(' ')));
    }

    Import m_import;
    std::unique_ptr<QDialog> m_dialog;
    QPushButton *m_ok = nullptr;
};

const Choice ToOutput{"pushButtonBrowseToFile", "Save File", Output};

Choice from(const QString &file, const char *caption = "Open File")
{
    return {"pushButtonBrowseFromFile", caption, file};
}

template <class Dialog> std::unique_ptr<QDialog> make()
{
    return std::make_unique<Dialog>();
}

Import usgsDem()
{
    UsgsDemFile tile;
    tile.profiles = {{1, 2, 0}, {3, 4, 0}, {5, 6, 0}};
    return {{{"a.dem", tile.bytes()}},
            {from("a.dem", "Select one or more files to open"), ToOutput},
            make<UsgsDemConversionDialog>};
}

Import binaryDem()
{
    return {
        {{"a.bil", "abcdefghi"},
         {"a.hdr", "nrows 3\nncols 3\nnbits 8\nulxmap 1\nulymap 2\nxdim 0.5\nydim 0.5\n"
                   "map_units km\nnodata 0\n"}},
        {from("a.bil"), ToOutput, {"pushButtonBrowseHeaderFile", "Open File", "a.hdr"}},
        make<BinConversionDialog>};
}

QByteArray points()
{
    QByteArray text;
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 15; ++x)
            text += QByteArray::number(x + 5) + '\t' + QByteArray::number(y) + '\t' +
                    QByteArray::number(10 * x + y) + '\n';
    return text;
}

Import asciiRegular()
{
    return {{{"a.xyz", points()}}, {from("a.xyz"), ToOutput}, make<AsciiRegularDialog>};
}

Import asciiIrregular()
{
    return {{{"a.xyz", points()}}, {from("a.xyz"), ToOutput}, make<AsciiIrregularDialog>};
}

Import sdtsTransfer()
{
    Inputs inputs;
    const auto modules =
        sdts::transfer(6, 5, [](int column, int row) { return 100 * row + column; });
    for (const auto &[name, bytes] : modules)
        inputs[QString::fromStdString(name)] = QByteArray::fromStdString(bytes);
    return {inputs,
            {{"pushButtonBrowseFromCATDFile", "Open File", "TR01CATD.DDF"}, ToOutput},
            make<SdtsConversionDialog>};
}

Import japanDem()
{
    return {{{"a.mem", "12345678901234567890123  2  1\n123456789  -12-9999\n"}},
            {from("a.mem"), ToOutput},
            make<JapanConversionDialog>};
}

} // namespace

std::vector<OperationEntry> importOperations()
{
    const std::pair<const char *, Import (*)()> all[] = {
        {"usgs-dem", usgsDem},           {"binary-dem", binaryDem},
        {"ascii-regular", asciiRegular}, {"ascii-irregular", asciiIrregular},
        {"sdts", sdtsTransfer},          {"japan-dem", japanDem}};
    std::vector<OperationEntry> entries;
    for (const auto &[name, import] : all)
        entries.push_back({QStringLiteral("import-") + name, [make = import] {
                               return std::make_unique<ImportOperation>(make());
                           }});
    return entries;
}
