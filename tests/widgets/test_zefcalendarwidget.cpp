#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFCalendarWidget.h>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

namespace {

constexpr QSize CellSize(30, 20);

template <class Calendar> class Open : public Calendar {
public:
    using Calendar::paintCell;
};

//! One cell on white, as \a calendar paints it.
template <class Calendar> QImage cell(Open<Calendar>& calendar, QDate date, int ratio)
{
    QImage image(CellSize * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    calendar.paintCell(&painter, QRect(QPoint(), CellSize), date);
    painter.end();
    return image;
}

QDate day(int number)
{
    return QDate(2024, 5, number);
}

void allowTheSameRange(QCalendarWidget& calendar)
{
    calendar.setSelectedDate(day(15));
    calendar.setDateRange(day(10), day(20));
}

} // namespace

class TestZEFCalendarWidget : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void newCalendar();
    void cells_data();
    void cells();
    void painterIsLeftAsItWas();
    void wholeMonth();
    void oddDates_data();
    void oddDates();
    void oddRanges_data();
    void oddRanges();
    void sizes_data();
    void sizes();
};

void TestZEFCalendarWidget::metaObject()
{
    const QMetaObject& meta = ZEFCalendarWidget::staticMetaObject;
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("QCalendarWidget"));
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(ownMethods(meta), QStringList());
}

void TestZEFCalendarWidget::newCalendar()
{
    const ZEFCalendarWidget calendar;
    const QCalendarWidget plain;
    QCOMPARE(calendar.minimumDate(), plain.minimumDate());
    QCOMPARE(calendar.maximumDate(), plain.maximumDate());
    QCOMPARE(calendar.isGridVisible(), plain.isGridVisible());
}

void TestZEFCalendarWidget::cells_data()
{
    QTest::addColumn<int>("ratio");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<bool>("veiled");
    for (const int ratio : {1, 2}) {
        QTest::addRow("long before the first day, ratio %d", ratio) << ratio << QDate(1999, 1, 1) << true;
        QTest::addRow("the day before the first, ratio %d", ratio) << ratio << day(9) << true;
        QTest::addRow("the first day, ratio %d", ratio) << ratio << day(10) << false;
        QTest::addRow("the selected day, ratio %d", ratio) << ratio << day(15) << false;
        QTest::addRow("the last day, ratio %d", ratio) << ratio << day(20) << false;
        QTest::addRow("the day after the last, ratio %d", ratio) << ratio << day(21) << true;
        QTest::addRow("long after the last day, ratio %d", ratio) << ratio << QDate(2999, 1, 1) << true;
    }
}

void TestZEFCalendarWidget::cells()
{
    QFETCH(const int, ratio);
    QFETCH(const QDate, date);
    QFETCH(const bool, veiled);
    Open<ZEFCalendarWidget> calendar;
    Open<QCalendarWidget> plain;
    allowTheSameRange(calendar);
    allowTheSameRange(plain);
    QImage expected = cell(plain, date, ratio);
    if (veiled) {
        QPainter painter(&expected);
        painter.fillRect(QRect(QPoint(), CellSize), QColor(128, 128, 128, 40));
    }
    QCOMPARE(cell(calendar, date, ratio), expected);
    QCOMPARE(calendar.minimumDate(), day(10));
    QCOMPARE(cell(calendar, date, ratio) != cell(plain, date, ratio), veiled);
}

void TestZEFCalendarWidget::painterIsLeftAsItWas()
{
    Open<ZEFCalendarWidget> calendar;
    allowTheSameRange(calendar);
    QImage image(CellSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    painter.setBrush(Qt::green);
    calendar.paintCell(&painter, image.rect(), day(1));
    QCOMPARE(painter.pen(), QPen(Qt::red));
    QCOMPARE(painter.brush(), QBrush(Qt::green));
}

void TestZEFCalendarWidget::wholeMonth()
{
    ZEFCalendarWidget calendar;
    QCalendarWidget plain;
    calendar.resize(300, 200);
    plain.resize(300, 200);
    calendar.setSelectedDate(day(15));
    plain.setSelectedDate(day(15));
    QCOMPARE(painted(calendar, 1), painted(plain, 1));
    allowTheSameRange(calendar);
    allowTheSameRange(plain);
    QVERIFY(painted(calendar, 1) != painted(plain, 1));
}

void TestZEFCalendarWidget::oddDates_data()
{
    QTest::addColumn<QDate>("date");
    QTest::newRow("none") << QDate();
    QTest::newRow("no such day") << QDate(2024, 2, 31);
    QTest::newRow("the first of all") << QDate::fromJulianDay(Q_INT64_C(-784350574879));
    QTest::newRow("the last of all") << QDate::fromJulianDay(Q_INT64_C(784354017364));
    QTest::newRow("before our era") << QDate(-1, 1, 1);
}

void TestZEFCalendarWidget::oddDates()
{
    QFETCH(const QDate, date);
    Open<ZEFCalendarWidget> calendar;
    allowTheSameRange(calendar);
    const QImage image = cell(calendar, date, 1);
    QVERIFY(image.pixelColor(0, 0) != QColor(Qt::white));
}

void TestZEFCalendarWidget::oddRanges_data()
{
    QTest::addColumn<QDate>("first");
    QTest::addColumn<QDate>("last");
    QTest::newRow("one day") << day(15) << day(15);
    QTest::newRow("reversed") << day(20) << day(10);
    QTest::newRow("none") << QDate() << QDate();
    QTest::newRow("half open") << day(10) << QDate();
    QTest::newRow("everything") << QDate::fromJulianDay(Q_INT64_C(-784350574879))
                                << QDate::fromJulianDay(Q_INT64_C(784354017364));
    QTest::newRow("long ago") << QDate(-4000, 1, 1) << QDate(-3999, 1, 1);
}

void TestZEFCalendarWidget::oddRanges()
{
    QFETCH(const QDate, first);
    QFETCH(const QDate, last);
    ZEFCalendarWidget calendar;
    calendar.setSelectedDate(day(15));
    calendar.setDateRange(first, last);
    QVERIFY(paintsInSmallWindow(calendar, QSize(200, 100)));
}

void TestZEFCalendarWidget::sizes_data()
{
    addSizeRows();
}

void TestZEFCalendarWidget::sizes()
{
    QFETCH(const QSize, size);
    ZEFCalendarWidget calendar;
    allowTheSameRange(calendar);
    QVERIFY(paintsInSmallWindow(calendar, size));
}

ZEF_TEST_MAIN(TestZEFCalendarWidget)
#include "test_zefcalendarwidget.moc"
