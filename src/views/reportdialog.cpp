#include "views/reportdialog.h"

#include "views/fieldhelp.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

QString textOf(const OperationOutcome &outcome)
{
    QStringList lines;
    for (const OperationOutcome::Fact &fact : outcome.facts)
        lines << QStringLiteral("%1: %2").arg(fact.name, fact.value);
    return lines.join('\n');
}

QLabel *thumbnailLabel(const QImage &thumbnail, QWidget *parent)
{
    auto *const label = new QLabel(parent);
    label->setObjectName(QStringLiteral("labelThumbnail"));
    label->setAccessibleName(ReportDialog::tr("Thumbnail"));
    label->setToolTip(ReportDialog::tr("The result, made smaller."));
    label->setWhatsThis(ReportDialog::tr(
        "The result, made smaller. Heights are shown as shaded relief, from the lowest "
        "in green to the highest in white."));
    label->setFrameShape(QFrame::StyledPanel);
    label->setAlignment(Qt::AlignCenter);
    label->setPixmap(QPixmap::fromImage(thumbnail));
    return label;
}

} // namespace

ReportDialog::ReportDialog(const OperationOutcome &outcome, const QImage &thumbnail,
                           QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("reportDialog"));
    setWindowTitle(tr("Report: %1").arg(outcome.title));
    auto *const above = new QHBoxLayout;
    above->addWidget(thumbnailLabel(thumbnail, this));
    above->addWidget(makeFacts(outcome), 1);
    auto *const all = new QVBoxLayout(this);
    all->addLayout(above);
    all->addWidget(makeMessages(outcome), 1);
    all->addWidget(makeButtons());
    completeHelp(this);
}

QWidget *ReportDialog::makeFacts(const OperationOutcome &outcome)
{
    auto *const facts = new QPlainTextEdit(textOf(outcome), this);
    facts->setObjectName(QStringLiteral("plainTextEditFacts"));
    facts->setReadOnly(true);
    facts->setTabChangesFocus(true);
    facts->setAccessibleName(tr("Facts"));
    facts->setToolTip(tr("What is known of the result."));
    facts->setWhatsThis(tr("What is known of the result. Minimum and maximum are the "
                           "numbers that its pixels hold, of which each stands for so "
                           "many metres as its z scale says. The text can be copied."));
    facts->setMinimumWidth(fontMetrics().averageCharWidth() * 44);
    return facts;
}

QWidget *ReportDialog::makeMessages(const OperationOutcome &outcome)
{
    auto *const group = new QGroupBox(tr("&Messages"), this);
    auto *const list = new QListWidget(group);
    list->setObjectName(QStringLiteral("listWidgetMessages"));
    list->setAccessibleName(tr("Messages of the operation"));
    list->setWordWrap(true);
    list->setToolTip(tr("What was told while the operation was on."));
    list->setWhatsThis(tr("The boxes and the rows of the list that the window of the "
                          "operation has shown, in their order."));
    list->addItems(outcome.messages);
    if (outcome.messages.isEmpty()) {
        auto *const none = new QListWidgetItem(tr("There were none."), list);
        none->setFlags(Qt::ItemIsEnabled); // is read, not chosen
    }
    auto *const layout = new QVBoxLayout(group);
    layout->addWidget(list);
    return group;
}

QWidget *ReportDialog::makeButtons()
{
    auto *const box = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *const open =
        box->addButton(tr("&Open Result"), QDialogButtonBox::ActionRole);
    open->setObjectName(QStringLiteral("pushButtonOpenResult"));
    open->setWhatsThis(tr("Opens the file that was written, in a window of its own."));
    m_use = box->addButton(tr("&Use in Scenery"), QDialogButtonBox::ActionRole);
    m_use->setObjectName(QStringLiteral("pushButtonUseInScenery"));
    m_use->setWhatsThis(tr("Makes the file that was written the elevation file of the "
                           "active scenery, or its texture file where it holds colours "
                           "and no heights."));
    QPushButton *const close = box->button(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("pushButtonClose"));
    close->setDefault(true);
    close->setWhatsThis(tr("Closes the report."));
    connect(box, &QDialogButtonBox::rejected, this, &ReportDialog::reject);
    connect(open, &QPushButton::clicked, this, [this] {
        accept();
        emit openResult();
    });
    connect(m_use, &QPushButton::clicked, this, [this] {
        accept();
        emit useInScenery();
    });
    setSceneryIsThere(false);
    return box;
}

void ReportDialog::setSceneryIsThere(bool there)
{
    m_use->setEnabled(there);
    m_use->setToolTip(there ? firstSentence(m_use->whatsThis())
                            : tr("There is no active scenery to use the file in."));
}
