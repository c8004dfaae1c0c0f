#include "ZEFTest.h"

#include <formatinput/CoercionSearch.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// No machine is so slow.
constexpr auto longEnough = 24h;

//! Each of the characters may become each other one.
CoercionSearch::Vary among(const QString& characters)
{
    return [characters](int, QChar character) {
        QString others = characters;
        return characters.contains(character) ? others.remove(character) : QString();
    };
}

CoercionSearch::Passes equals(const QString& wanted)
{
    return [wanted](const QString& text) { return text == wanted; };
}

} // namespace

class TestCoercionSearch : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void testsNearerTextsFirst();
    void doesNotTestTheTextItself();
    void variesThePositionsOnly();
    void makesEachTextOnce();
    void reachesCharactersThroughOthers();
    void leavesTheResultAloneWhenNothingPasses();
    void givesUpBeyondTheCeiling();
    void findsTheLastOfManyVariants();
    void countsTheCharactersToo();
    void givesUpAfterTheLongestTime();
    void emptyText();
};

void TestCoercionSearch::testsNearerTextsFirst()
{
    QStringList tested;
    QString found;
    CoercionSearch search(u"000"_s, 3, longEnough);
    QVERIFY(!search.run(
        among(u"01"_s),
        [&](const QString& text) {
            tested.append(text);
            return false;
        },
        &found));
    QCOMPARE(tested, (QStringList{u"100"_s, u"010"_s, u"001"_s, u"110"_s, u"101"_s, u"011"_s, u"111"_s}));
}

void TestCoercionSearch::doesNotTestTheTextItself()
{
    QString found;
    QVERIFY(!CoercionSearch(u"00"_s, 2, longEnough).run(among(u"01"_s), equals(u"00"_s), &found));
}

void TestCoercionSearch::variesThePositionsOnly()
{
    QString found;
    QVERIFY(!CoercionSearch(u"000"_s, 2, longEnough).run(among(u"01"_s), equals(u"001"_s), &found));
    QVERIFY(CoercionSearch(u"000"_s, 2, longEnough).run(among(u"01"_s), equals(u"110"_s), &found));
    QCOMPARE(found, u"110"_s);
}

void TestCoercionSearch::makesEachTextOnce()
{
    QSet<QString> tested;
    int tests = 0;
    QString found;
    CoercionSearch search(u"abca"_s, 4, longEnough);
    QVERIFY(!search.run(
        among(u"abc"_s),
        [&](const QString& text) {
            tested.insert(text);
            ++tests;
            return false;
        },
        &found));
    QCOMPARE(tests, 3 * 3 * 3 * 3 - 1);
    QCOMPARE(tested.size(), tests);
}

void TestCoercionSearch::reachesCharactersThroughOthers()
{
    // a leads to b only, b to c only; in a text of two characters there are two passes.
    const auto chain = [](int, QChar character) {
        return character == u'a' ? u"b"_s
            : character == u'b'  ? u"c"_s
            : character == u'c'  ? u"d"_s
                                 : QString();
    };
    QString found;
    QVERIFY(CoercionSearch(u"a-"_s, 1, longEnough).run(chain, equals(u"c-"_s), &found));
    QCOMPARE(found, u"c-"_s);
    QVERIFY(!CoercionSearch(u"a-"_s, 1, longEnough).run(chain, equals(u"d-"_s), &found));
}

void TestCoercionSearch::leavesTheResultAloneWhenNothingPasses()
{
    QString found = u"before"_s;
    QVERIFY(!CoercionSearch(u"00"_s, 2, longEnough).run(among(u"01"_s), equals(u"22"_s), &found));
    QCOMPARE(found, u"before"_s);
}

void TestCoercionSearch::givesUpBeyondTheCeiling()
{
    // 2^18 texts are reachable; the last one is the 262,143rd.
    const QString start(18, u'0');
    QString found;
    QVERIFY(!CoercionSearch(start, 18, longEnough).run(among(u"01"_s), equals(QString(18, u'1')), &found));
    int tests = 0;
    const auto fails = [&](const QString&) {
        ++tests;
        return false;
    };
    QVERIFY(!CoercionSearch(start, 18, longEnough).run(among(u"01"_s), fails, &found));
    QCOMPARE(tests, 200'000);

    const QString near = QString(8, u'1') + QString(10, u'0');
    QVERIFY(CoercionSearch(start, 18, longEnough).run(among(u"01"_s), equals(near), &found));
    QCOMPARE(found, near);
}

void TestCoercionSearch::findsTheLastOfManyVariants()
{
    // 2^17 - 1 = 131,071 texts besides the first, and text behind the positions
    const QString rest(100, u'x');
    const QString last = QString(17, u'1') + rest;
    QString found;
    QVERIFY(
        CoercionSearch(QString(17, u'0') + rest, 17, longEnough).run(among(u"01"_s), equals(last), &found));
    QCOMPARE(found, last);
}

void TestCoercionSearch::countsTheCharactersToo()
{
    // 50 texts of a million characters
    int tests = 0;
    const auto fails = [&](const QString&) {
        ++tests;
        return false;
    };
    QString found;
    CoercionSearch search(QString(1'000'000, u'0'), 100, longEnough);
    QVERIFY(!search.run(among(u"01"_s), fails, &found));
    QCOMPARE(tests, 50);
}

void TestCoercionSearch::givesUpAfterTheLongestTime()
{
    int tests = 0;
    const auto fails = [&](const QString&) {
        ++tests;
        return false;
    };
    QString found;
    QVERIFY(!CoercionSearch(QString(18, u'0'), 18, 0ms).run(among(u"01"_s), fails, &found));
    QCOMPARE(tests, 0);

    // Between two texts, too: the first one takes all the time.
    CoercionSearch slow(QString(18, u'0'), 18, 50ms);
    QVERIFY(!slow.run(
        among(u"01"_s),
        [&](const QString&) {
            ++tests;
            QDeadlineTimer untilThen(60ms);
            while (!untilThen.hasExpired()) { }
            return false;
        },
        &found));
    QVERIFY2(tests <= 1, qPrintable(QString::number(tests)));
}

void TestCoercionSearch::emptyText()
{
    QString found;
    QVERIFY(!CoercionSearch(QString(), 0, longEnough).run(among(u"01"_s), equals(QString()), &found));
}

ZEF_TEST_MAIN(TestCoercionSearch)
#include "test_coercionsearch.moc"
