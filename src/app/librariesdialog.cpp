#include "app/librariesdialog.h"

#include "views/fieldhelp.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <tl/expected.hpp>

namespace {

QList<LibraryNote> allLibraries()
{
    const QString expected = QStringLiteral("%1.%2.%3")
                                 .arg(TL_EXPECTED_VERSION_MAJOR)
                                 .arg(TL_EXPECTED_VERSION_MINOR)
                                 .arg(TL_EXPECTED_VERSION_PATCH);
    QList<LibraryNote> libraries{
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion()), QStringLiteral("LGPL 3"),
         LibrariesDialog::tr("Windows, pictures, texts and files.")},
        {QStringLiteral("tl::expected"), expected, QStringLiteral("CC0 1.0"),
         LibrariesDialog::tr("Results of work that can fail.")}};
    return libraries + pictureLibraries();
}

QTableWidget *makeTable(const QList<LibraryNote> &libraries, QWidget *parent)
{
    auto *const table = new QTableWidget(static_cast<int>(libraries.size()), 4, parent);
    table->setObjectName(QStringLiteral("tableWidgetLibraries"));
    table->setAccessibleName(LibrariesDialog::tr("Libraries"));
    table->setToolTip(LibrariesDialog::tr("The libraries that the program uses."));
    table->setWhatsThis(
        LibrariesDialog::tr("The libraries that the program uses, the versions that are "
                            "in use just now, and the licences under which they may be "
                            "passed on. Their texts are on Debian in "
                            "/usr/share/doc/PACKAGE/copyright."));
    table->setHorizontalHeaderLabels(
        {LibrariesDialog::tr("Library"), LibrariesDialog::tr("Version"),
         LibrariesDialog::tr("Licence"), LibrariesDialog::tr("Used for")});
    int row = 0;
    for (const LibraryNote &library : libraries) {
        int column = 0;
        for (const QString &text :
             {library.name, library.version, library.licence, library.use})
            table->setItem(row, column++, new QTableWidgetItem(text));
        ++row;
    }
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false); // Tab leads on to the button
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->resizeColumnsToContents();
    return table;
}

} // namespace

LibrariesDialog::LibrariesDialog(QWidget *parent) : LibrariesDialog({}, parent) {}

LibrariesDialog::LibrariesDialog(const QList<LibraryNote> &more, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("librariesDialog"));
    setWindowTitle(tr("Libraries"));
    QTableWidget *const table = makeTable(allLibraries() + more, this);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *const close = buttons->button(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("pushButtonClose"));
    close->setWhatsThis(tr("Closes the dialog."));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(buttons);
    completeHelp(this);
    resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 16);
}
