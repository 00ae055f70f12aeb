// Windows around terrain, reports and libraries from the keyboard: each field has a way
// to it, in the order in which it is read.

#include "app/allwindows.h"
#include "base/appsettings.h"
#include "views/fieldhelp.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

int qInitResources_Zephrant();

Q_DECLARE_METATYPE(WindowCase)

namespace {

/// The windows whose texts are this program's own choice.
const QStringList Walked{"open terrain", "texture from elevation", "path from track",
                         "libraries", "report"};

QChar keyOf(const QString &text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&')
            continue;
        if (text[i + 1] != u'&')
            return text[i + 1].toLower();
        ++i;
    }
    return {};
}

/// The keys of what is shown, each with what it belongs to.
QList<std::pair<QChar, QString>> keysOf(const QWidget &window)
{
    QList<std::pair<QChar, QString>> keys;
    const auto add = [&keys](const QString &text) {
        if (!keyOf(text).isNull())
            keys.append({keyOf(text), text});
    };
    for (const auto *label : window.findChildren<QLabel *>())
        if (label->buddy() && label->isVisible())
            add(label->text());
    for (const auto *button : window.findChildren<QAbstractButton *>())
        if (button->isVisible())
            add(button->text());
    for (const auto *group : window.findChildren<QGroupBox *>())
        add(group->title());
    for (const auto *bar : window.findChildren<QTabBar *>())
        for (int tab = 0; tab < bar->count(); ++tab)
            if (bar->isTabVisible(tab))
                add(bar->tabText(tab));
    return keys;
}

/// OK, Cancel and Close are reached by Return and Escape.
bool isEnd(const QWidget *field)
{
    const QString name = field->objectName();
    return name == "pushButtonOK" || name == "pushButtonCancel" ||
           name == "pushButtonClose";
}

/// Whether a label or the field's own text has a key for it.
bool hasKey(const QWidget &window, const QWidget *field)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(field))
        if (!keyOf(button->text()).isNull())
            return true;
    for (const auto *label : window.findChildren<QLabel *>())
        if (label->buddy() == field && !keyOf(label->text()).isNull())
            return true;
    // The key of a group leads to the first field in it.
    const auto *group = qobject_cast<const QGroupBox *>(field->parentWidget());
    return group && !keyOf(group->title()).isNull();
}

QRect placeOf(const QWidget *field, const QWidget &window)
{
    return {field->mapTo(&window, QPoint()), field->size()};
}

/// What the Tab key comes to, from the first field on.
QList<QWidget *> tabOrder(const QWidget &window)
{
    const QList<QWidget *> fields = fieldsOf(&window);
    QList<QWidget *> order;
    QWidget *at = window.nextInFocusChain();
    for (; at != &window; at = at->nextInFocusChain())
        if (fields.contains(at) && at->isVisible() &&
            (at->focusPolicy() & Qt::TabFocus) != 0)
            order << at;
    return order;
}

} // namespace

class TestKeyboard : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qInitResources_Zephrant();
        AppSettings().clear();
    }
    void init()
    {
        QFETCH(WindowCase, window);
        m_window = window.make();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void noKeyIsGivenTwice_data() { windows(); }
    void noKeyIsGivenTwice()
    {
        onEachPage([this] {
            QStringList faults;
            const auto keys = keysOf(*m_window);
            for (qsizetype i = 0; i < keys.size(); ++i)
                for (qsizetype k = 0; k < i; ++k)
                    if (keys[i].first == keys[k].first)
                        faults << keys[k].second + " and " + keys[i].second;
            return faults;
        });
    }

    void eachFieldHasAKeyOrStandsBesideOneThatHas_data() { windows(); }
    void eachFieldHasAKeyOrStandsBesideOneThatHas()
    {
        onEachPage([this] {
            QStringList faults;
            QRect row; // of the last field with a key
            for (const QWidget *field : tabOrder(*m_window)) {
                const QRect place = placeOf(field, *m_window);
                const bool isBeside = row.isValid() && place.center().y() >= row.top() &&
                                      place.center().y() <= row.bottom() + row.height();
                const bool isFirst = field == tabOrder(*m_window).constFirst();
                if (hasKey(*m_window, field))
                    row = place;
                else if (!isBeside && !isFirst && !isEnd(field) &&
                         !qobject_cast<const QLabel *>(field) &&
                         !qobject_cast<const QTabBar *>(field) &&
                         !qobject_cast<const QTabWidget *>(field))
                    faults << field->objectName();
            }
            return faults;
        });
    }

    void theTabKeyGoesAsOneReads_data() { windows(); }
    void theTabKeyGoesAsOneReads()
    {
        onEachPage([this] {
            QStringList faults;
            const QList<QWidget *> order = tabOrder(*m_window);
            for (qsizetype i = 1; i < order.size(); ++i) {
                const QRect from = placeOf(order[i - 1], *m_window);
                const QRect to = placeOf(order[i], *m_window);
                const bool goesUp = to.bottom() <= from.top() && to.left() < from.right();
                const bool goesBack =
                    to.right() <= from.left() && to.top() < from.bottom();
                if (goesUp || goesBack)
                    faults << order[i - 1]->objectName() + " to " +
                                  order[i]->objectName();
            }
            if (order.isEmpty())
                faults << "nothing can be reached";
            return faults;
        });
    }

    void everyFieldIsReached_data() { windows(); }
    void everyFieldIsReached()
    {
        onEachPage([this] {
            QStringList faults;
            const QList<QWidget *> order = tabOrder(*m_window);
            for (QWidget *field : fieldsOf(m_window.get()))
                if (field->isVisible() && !order.contains(field))
                    faults << field->objectName();
            return faults;
        });
    }

private:
    static void windows()
    {
        QTest::addColumn<WindowCase>("window");
        for (const WindowCase &window : allWindows())
            if (Walked.contains(QLatin1String(window.name)))
                QTest::newRow(window.name) << window;
    }
    /// Turns the pages of a tab widget, also those that come later by themselves.
    template <class Look> void onEachPage(const Look &look)
    {
        auto *const tabs = m_window->findChild<QTabWidget *>();
        for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
            if (tabs) {
                tabs->setTabVisible(page, true);
                tabs->setCurrentIndex(page);
            }
            const QString name = tabs ? tabs->currentWidget()->objectName() : QString();
            QCOMPARE(name + ": " + look().join("; "), name + ": ");
        }
    }

    std::shared_ptr<QWidget> m_window;
};

QTEST_MAIN(TestKeyboard)
#include "test_keyboard.moc"
