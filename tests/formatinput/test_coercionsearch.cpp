#include "ZEFTest.h"

#include <formatinput/CoercionSearch.h>
#include <formatinput/MatchingTime.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool always(const QString&)
{
    return true;
}

//! The same coercion for each of \a count positions.
std::optional<QString> searched(const QString& text, qsizetype count, const QString& pairs,
                                const CoercionSearch::Test& passes,
                                const CoercionSearch::Test& mayStart = always)
{
    const ZEFCoercionSpec coercion(pairs, 0, -1);
    return CoercionSearch(passes, mayStart).run(text, QList<const ZEFCoercionSpec*>(count, &coercion));
}

CoercionSearch::Test equals(const QString& wanted)
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
    void leavesOutWhatNoTextStartsWith();
    void givesUpBeyondTheCeiling();
    void countsTheCharactersToo();
    void givesUpAfterTheTimeOfTheAction();
    void emptyText();
};

void TestCoercionSearch::testsNearerTextsFirst()
{
    QStringList tested;
    QVERIFY(!searched(u"000"_s, 3, u"0110"_s, [&](const QString& text) {
        tested.append(text);
        return false;
    }));
    QCOMPARE(tested, (QStringList{u"100"_s, u"010"_s, u"001"_s, u"110"_s, u"101"_s, u"011"_s, u"111"_s}));
}

void TestCoercionSearch::doesNotTestTheTextItself()
{
    QVERIFY(!searched(u"00"_s, 2, u"0110"_s, equals(u"00"_s)));
}

void TestCoercionSearch::variesThePositionsOnly()
{
    QVERIFY(!searched(u"000"_s, 2, u"01"_s, equals(u"001"_s)));
    QCOMPARE(searched(u"000"_s, 2, u"01"_s, equals(u"110"_s)), u"110"_s);
    // More coercions than characters
    QCOMPARE(searched(u"0"_s, 9, u"01"_s, equals(u"1"_s)), u"1"_s);
}

void TestCoercionSearch::makesEachTextOnce()
{
    QSet<QString> tested;
    int tests = 0;
    QVERIFY(!searched(u"abca"_s, 4, u"abacbabccacb"_s, [&](const QString& text) {
        tested.insert(text);
        ++tests;
        return false;
    }));
    QCOMPARE(tests, 3 * 3 * 3 * 3 - 1);
    QCOMPARE(tested.size(), tests);
}

void TestCoercionSearch::reachesCharactersThroughOthers()
{
    // a leads to b only, b to c only; in a text of two characters there are two passes.
    QCOMPARE(searched(u"a-"_s, 1, u"abbccd"_s, equals(u"c-"_s)), u"c-"_s);
    QVERIFY(!searched(u"a-"_s, 1, u"abbccd"_s, equals(u"d-"_s)));
}

void TestCoercionSearch::leavesOutWhatNoTextStartsWith()
{
    int tests = 0;
    const auto passes = [&](const QString& text) {
        ++tests;
        return text == QString(40, u'1');
    };
    const auto mayStart = [](const QString& start) { return !start.contains(u'0'); };
    QCOMPARE(searched(QString(40, u'0'), 40, u"01"_s, passes, mayStart), QString(40, u'1'));
    QCOMPARE(tests, 40);
}

void TestCoercionSearch::givesUpBeyondTheCeiling()
{
    const QString start(18, u'0');
    QVERIFY(!searched(start, 18, u"01"_s, equals(QString(18, u'1'))));
    int tests = 0;
    const auto fails = [&](const QString&) {
        ++tests;
        return false;
    };
    QVERIFY(!searched(start, 18, u"01"_s, fails));
    QCOMPARE(tests, CoercionSearch::maxForms);
    const QString near = u"111"_s + QString(15, u'0');
    QCOMPARE(searched(start, 18, u"01"_s, equals(near)), near);
}

void TestCoercionSearch::countsTheCharactersToo()
{
    // 10 texts of a million characters
    int tests = 0;
    const auto fails = [&](const QString&) {
        ++tests;
        return false;
    };
    QVERIFY(!searched(QString(1'000'000, u'0'), 100, u"01"_s, fails));
    QCOMPARE(tests, 10);
}

void TestCoercionSearch::givesUpAfterTheTimeOfTheAction()
{
    // The first text takes all the time, of which the next search of the same action has none left.
    int tests = 0;
    const auto slow = [&](const QString&) {
        ++tests;
        const QDeadlineTimer untilThen(300);
        while (!untilThen.hasExpired()) { }
        return false;
    };
    {
        const MatchingTime action;
        QVERIFY(MatchingTime::remaining() > 0);
        QVERIFY(!searched(QString(18, u'0'), 18, u"01"_s, slow));
        QCOMPARE(tests, 1);
        QVERIFY(MatchingTime::remaining() <= 0);
        QVERIFY(!searched(QString(18, u'0'), 18, u"01"_s, slow));
        QCOMPARE(tests, 1);
    }
    QVERIFY(MatchingTime::remaining() > 0);
}

void TestCoercionSearch::emptyText()
{
    QVERIFY(!searched(QString(), 1, u"01"_s, equals(QString())));
}

ZEF_TEST_MAIN(TestCoercionSearch)
#include "test_coercionsearch.moc"
