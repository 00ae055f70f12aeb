#include "views/formarea.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>

/// A form of ten numbers under each other, in more or less room.
class TestFormArea : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { delete m_area; }
    void itsSizeIsThatOfTheForm();
    void itsSizeFollowsTheForm();
    void fieldsKeepTheirSizeInLittleRoom();
    void theFieldReachedByTheTabKeyIsSeen();
    void theWheelScrollsAndChangesNoNumberOnItsWay();
    void theWheelTurnsTheNumberThatHasTheFocus();
    void theWheelTurnsNumbersWhereNothingScrolls();

private:
    static constexpr int Fields = 10;
    static constexpr int Start = 5;

    [[nodiscard]] QSpinBox *field(int index) const
    {
        return m_form->findChildren<QSpinBox *>().at(index);
    }
    void turnWheelOver(QWidget *widget) const;
    void giveRoom(const QSize &size);

    FormArea *m_area = nullptr;
    QWidget *m_form = nullptr;
};

void TestFormArea::init()
{
    m_area = new FormArea;
    m_form = new QWidget;
    auto *const layout = new QGridLayout(m_form);
    for (int i = 0; i < Fields; ++i) {
        auto *const box = new QSpinBox;
        box->setValue(Start);
        layout->addWidget(box);
    }
    m_area->setWidget(m_form);
    m_area->show();
    m_area->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_area));
}

void TestFormArea::giveRoom(const QSize &size)
{
    m_area->resize(size);
    QTest::qWait(10);
}

void TestFormArea::turnWheelOver(QWidget *widget) const
{
    const QPointF place = widget->rect().center();
    QWheelEvent event(place, widget->mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

void TestFormArea::itsSizeIsThatOfTheForm()
{
    QCOMPARE(m_area->sizeHint(), m_form->sizeHint());
    giveRoom(m_area->sizeHint());
    QVERIFY(!m_area->verticalScrollBar()->isVisible());
    QVERIFY(!m_area->horizontalScrollBar()->isVisible());
}

void TestFormArea::itsSizeFollowsTheForm()
{
    QWidget around;
    auto *const layout = new QVBoxLayout(&around);
    layout->addWidget(m_area);
    around.show();
    const int before = around.sizeHint().height();
    m_form->layout()->addWidget(new QSpinBox);
    QTRY_VERIFY(around.sizeHint().height() > before);
    m_area->setParent(nullptr);
}

void TestFormArea::fieldsKeepTheirSizeInLittleRoom()
{
    giveRoom({60, 50});
    for (int i = 0; i < Fields; ++i) {
        QVERIFY(field(i)->height() >= field(i)->minimumSizeHint().height());
        QVERIFY(field(i)->width() >= field(i)->minimumSizeHint().width());
    }
    QVERIFY(m_area->verticalScrollBar()->isVisible());
}

void TestFormArea::theFieldReachedByTheTabKeyIsSeen()
{
    giveRoom({120, 150});
    field(0)->setFocus();
    for (int i = 1; i < Fields; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(field(i)->hasFocus());
        const QRect seen = m_area->viewport()->rect();
        const QPoint top = field(i)->mapTo(m_area->viewport(), QPoint(0, 0));
        QVERIFY(seen.contains(top));
        QVERIFY(seen.contains(top + QPoint(0, field(i)->height() - 1)));
    }
}

void TestFormArea::theWheelScrollsAndChangesNoNumberOnItsWay()
{
    giveRoom({120, 60});
    field(9)->setFocus();
    m_area->verticalScrollBar()->setValue(0);
    turnWheelOver(field(0));
    turnWheelOver(field(0)->findChild<QLineEdit *>());
    QCOMPARE(field(0)->value(), Start);
    QVERIFY(m_area->verticalScrollBar()->value() > 0);
    QVERIFY(field(9)->hasFocus());
}

void TestFormArea::theWheelTurnsTheNumberThatHasTheFocus()
{
    giveRoom({120, 60});
    field(0)->setFocus();
    turnWheelOver(field(0));
    QCOMPARE(field(0)->value(), Start - 1);
    QCOMPARE(m_area->verticalScrollBar()->value(), 0);
}

void TestFormArea::theWheelTurnsNumbersWhereNothingScrolls()
{
    giveRoom(m_area->sizeHint());
    field(9)->setFocus();
    turnWheelOver(field(0));
    QCOMPARE(field(0)->value(), Start - 1);
}

QTEST_MAIN(TestFormArea)
#include "test_formarea.moc"
