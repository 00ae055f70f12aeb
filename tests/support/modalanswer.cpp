#include "support/modalanswer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTimer>

#include <deque>

namespace {

// Gives no complaint, or one.
using Act = std::function<QString(QWidget *modal)>;

constexpr int PollMilliseconds = 10;

void closeDialog(QWidget *modal)
{
    if (auto *dialog = qobject_cast<QDialog *>(modal))
        dialog->reject();
    else
        modal->close();
}

QString describe(QWidget *modal)
{
    QString text = QStringLiteral("%1 \"%2\"")
                       .arg(QString::fromLatin1(modal->metaObject()->className()),
                            modal->windowTitle());
    if (const auto *box = qobject_cast<QMessageBox *>(modal))
        text += QStringLiteral(" saying \"%1\"").arg(box->text());
    return text;
}

QString answerBox(QWidget *modal, const QString &title, const QString &text,
                  QMessageBox::StandardButton button)
{
    auto *box = qobject_cast<QMessageBox *>(modal);
    QAbstractButton *const pressed = box ? box->button(button) : nullptr;
    if (!pressed || box->windowTitle() != title || box->text() != text) {
        const QString found = describe(modal);
        closeDialog(modal);
        return QStringLiteral("expected box \"%1\" saying \"%2\", found %3")
            .arg(title, text, found);
    }
    pressed->click();
    return {};
}

QString typedName(const QStringList &paths)
{
    if (paths.size() == 1)
        return paths.front();
    QStringList quoted;
    for (const QString &path : paths)
        quoted << QStringLiteral("\"%1\"").arg(QFileInfo(path).fileName());
    return quoted.join(QLatin1Char(' '));
}

QString answerFile(QWidget *modal, const QString &caption, const QStringList &paths,
                   const QString &nameFilter)
{
    auto *dialog = qobject_cast<QFileDialog *>(modal);
    auto *edit =
        dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
    if (!edit || dialog->windowTitle() != caption) {
        const QString found = describe(modal);
        closeDialog(modal);
        return QStringLiteral("expected file dialog \"%1\", found %2")
            .arg(caption, found);
    }
    if (!nameFilter.isEmpty())
        dialog->selectNameFilter(nameFilter);
    if (paths.isEmpty()) {
        dialog->reject();
        return {};
    }
    if (paths.size() > 1)
        dialog->setDirectory(QFileInfo(paths.front()).absolutePath());
    edit->setText(typedName(paths));
    // accept() is protected there; the base class's slot is not.
    QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection);
    if (dialog->isVisible()) {
        dialog->reject();
        return QStringLiteral("file dialog \"%1\" did not take %2")
            .arg(caption, paths.join(QLatin1Char(' ')));
    }
    return {};
}

} // namespace

class ModalAnswers::Watcher : public QObject {
public:
    explicit Watcher(const QWidget *known) : m_known(known)
    {
        m_timer.setInterval(PollMilliseconds);
        connect(&m_timer, &QTimer::timeout, this, &Watcher::look);
        m_timer.start();
    }

    void expect(const QString &what, Act act)
    {
        m_expected.push_back({what, std::move(act)});
    }

    [[nodiscard]] QStringList complaints() const
    {
        QStringList all = m_complaints;
        for (const Expected &e : m_expected)
            all << QStringLiteral("never opened: ") + e.what;
        return all;
    }

private:
    struct Expected {
        QString what;
        Act act;
    };

    void look()
    {
        QWidget *const modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible() || modal == m_busy || modal == m_known)
            return;
        if (m_expected.empty()) {
            m_complaints << QStringLiteral("unexpected ") + describe(modal);
            closeDialog(modal);
            return;
        }
        // An answer may open the next modal window within itself, a file dialog its
        // question whether to replace, so the timer runs on meanwhile.
        QWidget *const outer = m_busy;
        m_busy = modal;
        const Expected next = m_expected.front();
        m_expected.pop_front();
        const QString complaint = next.act(modal);
        if (!complaint.isEmpty())
            m_complaints << complaint;
        m_busy = outer;
    }

    QTimer m_timer;
    const QWidget *m_known;
    QWidget *m_busy = nullptr;
    std::deque<Expected> m_expected;
    QStringList m_complaints;
};

ModalAnswers::ModalAnswers(const QWidget *known)
    : m_watcher(std::make_unique<Watcher>(known))
{
    // The toolkit's own dialogs have widgets that a test can reach.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

ModalAnswers::~ModalAnswers() = default;

void ModalAnswers::pressButton(const QString &title, const QString &text,
                               QMessageBox::StandardButton button)
{
    m_watcher->expect(
        QStringLiteral("box \"%1\" saying \"%2\"").arg(title, text),
        [=](QWidget *modal) { return answerBox(modal, title, text, button); });
}

void ModalAnswers::chooseFile(const QString &caption, const QString &path,
                              const QString &nameFilter)
{
    m_watcher->expect(
        QStringLiteral("file dialog \"%1\"").arg(caption),
        [=](QWidget *modal) { return answerFile(modal, caption, {path}, nameFilter); });
}

void ModalAnswers::chooseFiles(const QString &caption, const QStringList &paths)
{
    m_watcher->expect(
        QStringLiteral("file dialog \"%1\"").arg(caption),
        [=](QWidget *modal) { return answerFile(modal, caption, paths, {}); });
}

void ModalAnswers::cancelFile(const QString &caption)
{
    m_watcher->expect(QStringLiteral("file dialog \"%1\"").arg(caption),
                      [=](QWidget *modal) { return answerFile(modal, caption, {}, {}); });
}

void ModalAnswers::withDialog(const std::function<void(QDialog *)> &act)
{
    m_watcher->expect(QStringLiteral("a dialog"), [=](QWidget *modal) {
        auto *dialog = qobject_cast<QDialog *>(modal);
        if (!dialog)
            return QStringLiteral("expected a dialog, found %1").arg(describe(modal));
        act(dialog);
        return QString();
    });
}

QStringList ModalAnswers::complaints() const { return m_watcher->complaints(); }
