#include <ZEFTest.h>

#include "lifetime/ListShrinker.h"

using namespace Qt::StringLiterals;

namespace {

QStringList numbers(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines.append(QString::number(i));
    return lines;
}

bool containsInOrder(const QStringList& lines, const QStringList& wanted)
{
    qsizetype found = 0;
    for (const QString& line : lines) {
        if (found < wanted.size() && line == wanted.at(found))
            ++found;
    }
    return found == wanted.size();
}

} // namespace

class TestListShrinker : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void keepsWhatIsNeeded_data();
    void keepsWhatIsNeeded();
    void asksSeldom();
    void stopsInTime();
};

void TestListShrinker::keepsWhatIsNeeded_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("wanted");
    QTest::newRow("nothing") << 10 << QStringList();
    QTest::newRow("an empty list") << 0 << QStringList();
    QTest::newRow("the only one") << 1 << QStringList{u"0"_s};
    QTest::newRow("the first") << 100 << QStringList{u"0"_s};
    QTest::newRow("the last") << 100 << QStringList{u"99"_s};
    QTest::newRow("both ends") << 101 << QStringList{u"0"_s, u"100"_s};
    QTest::newRow("some far apart") << 1000 << QStringList{u"1"_s, u"499"_s, u"500"_s, u"998"_s};
    QTest::newRow("all") << 7 << numbers(7);
}

void TestListShrinker::keepsWhatIsNeeded()
{
    QFETCH(const int, count);
    QFETCH(const QStringList, wanted);
    const ListShrinker shrinker([&](const QStringList& lines) { return containsInOrder(lines, wanted); });
    QCOMPARE(shrinker.shrink(numbers(count), QDeadlineTimer(QDeadlineTimer::Forever)), wanted);
}

void TestListShrinker::asksSeldom()
{
    int questions = 0;
    const ListShrinker shrinker([&](const QStringList& lines) {
        ++questions;
        return containsInOrder(lines, {u"300"_s, u"700"_s});
    });
    QCOMPARE(shrinker.shrink(numbers(1000), QDeadlineTimer(QDeadlineTimer::Forever)),
             QStringList({u"300"_s, u"700"_s}));
    QVERIFY2(questions < 100, qPrintable(QString::number(questions)));
}

void TestListShrinker::stopsInTime()
{
    int questions = 0;
    const ListShrinker shrinker([&](const QStringList&) {
        ++questions;
        return true;
    });
    QCOMPARE(shrinker.shrink(numbers(9), QDeadlineTimer(0)), numbers(9));
    QCOMPARE(questions, 0);
}

ZEF_TEST_MAIN(TestListShrinker)
#include "test_listshrinker.moc"
