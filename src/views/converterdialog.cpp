#include "views/converterdialog.h"

#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "views/fieldhelp.h"
#include "views/waitcursor.h"

#include <QChildEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

namespace {

const QLatin1String DirectoryKey("MRUDirectory");

// A field of several files shows each between quotes.
QStringList namesIn(const QString &text)
{
    static const QRegularExpression between(QStringLiteral("\"\\s+\""));
    if (text.size() < 2 || !text.startsWith('"') || !text.endsWith('"'))
        return {text};
    return text.mid(1, text.size() - 2).split(between, Qt::SkipEmptyParts);
}

QString rememberedDirectory() { return AppSettings().value(DirectoryKey).toString(); }

} // namespace

ConverterDialog::ConverterDialog(const QString &messageTitle, QWidget *parent)
    : QDialog(parent), m_messageTitle(messageTitle)
{
}

void ConverterDialog::setUpForm()
{
    m_ok = findChild<QPushButton *>(QStringLiteral("pushButtonOK"));
    m_toFile = findChild<QLineEdit *>(QStringLiteral("lineEditToFile"));
    m_files << m_toFile;
    connect(browseButtonOf(m_toFile), &QPushButton::clicked, this,
            [this] { browseToSave(); });
    m_ok->setEnabled(false);
    completeHelp(this);
}

void ConverterDialog::describe(const QString &title, const QString &whatsThis)
{
    setObjectName(QString::fromLatin1(metaObject()->className()));
    setWindowTitle(title);
    setWhatsThis(whatsThis);
}

QPushButton *ConverterDialog::browseButtonOf(const QLineEdit *field) const
{
    QString name = field->objectName();
    name.replace(QLatin1String("lineEdit"), QLatin1String("pushButtonBrowse"));
    return findChild<QPushButton *>(name);
}

void ConverterDialog::addInput(QLineEdit *field, const Browsing &browsing)
{
    requireFiles({field});
    connect(browseButtonOf(field), &QPushButton::clicked, this,
            [this, field, browsing] { browseToOpen(field, browsing); });
}

void ConverterDialog::addInput(QLineEdit *field) { addInput(field, Browsing()); }

void ConverterDialog::validateOKButton()
{
    // A file once named cannot be removed, so there is nothing to disable.
    if (allFilesNamed())
        m_ok->setEnabled(true);
}

bool ConverterDialog::allFilesNamed() const
{
    return std::none_of(m_files.begin(), m_files.end(),
                        [](const QLineEdit *field) { return field->text().isEmpty(); });
}

QString ConverterDialog::outputFile() const { return m_toFile->text(); }

void ConverterDialog::browseToOpen(QLineEdit *field, const Browsing &browsing)
{
    const QString name = QFileDialog::getOpenFileName(
        this, browsing.caption, rememberedDirectory(), browsing.filter);
    if (name.isEmpty() || (browsing.mayTake && !browsing.mayTake(name)))
        return;
    takeFile(field, name);
    if (browsing.taken)
        browsing.taken(name);
    validateOKButton();
}

void ConverterDialog::browseToSave()
{
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Save File"), rememberedDirectory(), m_outputFilter);
    if (name.isEmpty())
        return;
    takeFile(m_toFile, name);
    validateOKButton();
}

QStringList ConverterDialog::askToOpenSeveral(const QString &filter,
                                              const QString &caption)
{
    return QFileDialog::getOpenFileNames(this, caption, rememberedDirectory(), filter);
}

void ConverterDialog::takeFile(QLineEdit *field, const QString &fileName)
{
    rememberDirectoryOf(fileName);
    field->setText(fileName);
}

void ConverterDialog::rememberDirectoryOf(const QString &fileName)
{
    AppSettings().setValue(DirectoryKey, QFileInfo(fileName).absolutePath());
}

void ConverterDialog::showError(const QString &text)
{
    QMessageBox::critical(this, m_messageTitle, text);
}

void ConverterDialog::showCouldNotOpen(const QString &fileName)
{
    showError(tr("Could not open file \"%1\".").arg(fileName));
}

void ConverterDialog::showCouldNotSave(const QString &fileName)
{
    showError(tr("Could not save file \"%1\".").arg(fileName));
}

bool ConverterDialog::saveOutput(const QImage &image)
{
    bool saved = false;
    {
        const WaitCursor wait;
        saved = saveImageFile(image, m_toFile->text());
    }
    if (saved)
        noteOutput(image);
    else
        showCouldNotSave(m_toFile->text());
    return saved;
}

// --- Report ----------------------------------------------------------------------

void ConverterDialog::noteOutput(const QImage &image)
{
    m_outcome.file = m_toFile->text();
    m_outcome.picture = image;
}

void ConverterDialog::noteFact(const QString &name, const QString &value)
{
    const auto before = std::find_if(
        m_outcome.facts.begin(), m_outcome.facts.end(),
        [&name](const OperationOutcome::Fact &fact) { return fact.name == name; });
    if (before == m_outcome.facts.end())
        m_outcome.facts << OperationOutcome::Fact{name, value};
    else
        before->value = value;
}

void ConverterDialog::noteVoids(qint64 voids)
{
    noteFact(tr("Voids"), QString::number(voids));
}

void ConverterDialog::noteCut(qint64 cut)
{
    const QString name = tr("Values cut");
    if (cut > 0)
        return noteFact(name, QString::number(cut));
    m_outcome.facts.removeIf(
        [&name](const OperationOutcome::Fact &fact) { return fact.name == name; });
}

void ConverterDialog::notePoints(qint64 used, qint64 read)
{
    noteFact(tr("Points used"), tr("%1 of %2").arg(used).arg(read));
}

// A box is complete when it is about to be shown for the first time.
void ConverterDialog::childEvent(QChildEvent *event)
{
    QDialog::childEvent(event);
    if (!event->polished())
        return;
    if (const auto *const box = qobject_cast<QMessageBox *>(event->child())) {
        m_outcome.messages << box->text().simplified();
        m_failureTold |= box->icon() == QMessageBox::Critical;
    }
}

OperationOutcome ConverterDialog::outcome() const
{
    OperationOutcome outcome = m_outcome;
    outcome.title = windowTitle();
    for (const auto *const list : findChildren<QListWidget *>())
        for (int row = 0; row < list->count(); ++row)
            outcome.messages << list->item(row)->text();
    if (outcome.file.isEmpty() && m_failureTold)
        for (const QLineEdit *field : m_files)
            if (field != m_toFile)
                outcome.refused << namesIn(field->text());
    return outcome;
}

QString ConverterDialog::imageFileFilter()
{
    return tr("Image Files (*.bmp *.png *.ppm *.tga *.tif);;All Files (*.*)");
}
