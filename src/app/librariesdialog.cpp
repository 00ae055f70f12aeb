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

QTableWidget *makeTable(QWidget *parent)
{
    auto *const table = new QTableWidget(0, 4, parent);
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
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false); // Tab leads on to the button
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

} // namespace

LibrariesDialog::LibrariesDialog(QWidget *parent)
    : QDialog(parent), m_table(makeTable(this))
{
    setObjectName(QStringLiteral("librariesDialog"));
    setWindowTitle(tr("Libraries"));
    for (const LibraryNote &library : allLibraries())
        add(library);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *const close = buttons->button(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("pushButtonClose"));
    close->setWhatsThis(tr("Closes the dialog."));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(buttons);
    completeHelp(this);
    resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 16);
}

void LibrariesDialog::add(const LibraryNote &library)
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    int column = 0;
    for (const QString &text :
         {library.name, library.version, library.licence, library.use}) {
        auto *const cell = new QTableWidgetItem(text);
        cell->setToolTip(text); // a sentence on what is missing may be wide
        m_table->setItem(row, column++, cell);
    }
    for (int i = 0; i + 1 < m_table->columnCount(); ++i) // the last has what is left
        m_table->resizeColumnToContents(i);
}
