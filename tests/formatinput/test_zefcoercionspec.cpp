#include <ZEFTest.h>

#include <ZEFCoercionSpec.h>

#include <QtWidgets/QApplication>

#include <limits>
#include <type_traits>

using namespace Qt::StringLiterals;

static_assert(std::is_copy_constructible_v<ZEFCoercionSpec> && std::is_copy_assignable_v<ZEFCoercionSpec>);
static_assert(std::is_move_constructible_v<ZEFCoercionSpec> && std::is_move_assignable_v<ZEFCoercionSpec>);

class TestZEFCoercionSpec : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void keepsWhatItIsGiven();
    void isAPlainValue();
    void knowsItsRange_data();
    void knowsItsRange();
    void coercesOnePosition_data();
    void coercesOnePosition();
    void coercesEveryPositionOfItsRange_data();
    void coercesEveryPositionOfItsRange();
    void appendsToTheOutput();
    void takesAnInputThatIsPartOfTheOutput();
};

void TestZEFCoercionSpec::keepsWhatItIsGiven()
{
    ZEFCoercionSpec spec(u"ab"_s, 3, 7);
    QCOMPARE(spec.spec(), u"ab"_s);
    QCOMPARE(spec.start(), 3);
    QCOMPARE(spec.end(), 7);

    spec.setSpec(u"cd"_s);
    spec.setStart(1);
    spec.setEnd(-1);
    QCOMPARE(spec.spec(), u"cd"_s);
    QCOMPARE(spec.start(), 1);
    QCOMPARE(spec.end(), -1);
}

void TestZEFCoercionSpec::isAPlainValue()
{
    ZEFCoercionSpec spec(u"ab"_s, 3, 7);
    ZEFCoercionSpec copy(spec);
    copy.setSpec(u"xy"_s);
    QCOMPARE(spec.spec(), u"ab"_s);

    spec = copy;
    QCOMPARE(spec.spec(), u"xy"_s);

    const ZEFCoercionSpec moved(std::move(copy));
    QCOMPARE(moved.spec(), u"xy"_s);
    QCOMPARE(moved.start(), 3);
    QCOMPARE(moved.end(), 7);
}

void TestZEFCoercionSpec::knowsItsRange_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("expected");

    QTest::addRow("start") << 3 << 7 << 3 << true;
    QTest::addRow("the end belongs to the range") << 3 << 7 << 7 << true;
    QTest::addRow("behind the end") << 3 << 7 << 8 << false;
    QTest::addRow("before the start, with an end") << 3 << 7 << 2 << true;
    QTest::addRow("negative, with an end") << 3 << 7 << -5 << true;
    QTest::addRow("open, start") << 3 << -1 << 3 << true;
    QTest::addRow("open, far behind") << 3 << -1 << 100000 << true;
    QTest::addRow("open, before the start") << 3 << -1 << 2 << false;
    QTest::addRow("open, negative") << 3 << -1 << -5 << false;
    QTest::addRow("open, before a start of 0") << 0 << -1 << -1 << false;
}

void TestZEFCoercionSpec::knowsItsRange()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, position);
    QTEST(ZEFCoercionSpec(u"ab"_s, start, end).inRange(position), "expected");
}

void TestZEFCoercionSpec::coercesOnePosition_data()
{
    QTest::addColumn<QString>("pairs");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("one pair") << u"ab"_s << 0 << -1 << 1 << u"xaa"_s << QStringList{u"xba"_s};
    QTest::addRow("every matching pair")
        << u"xyxz"_s << 0 << -1 << 0 << u"xx"_s << QStringList{u"yx"_s, u"zx"_s};
    QTest::addRow("no matching pair") << u"ab"_s << 0 << -1 << 0 << u"b"_s << QStringList{};
    QTest::addRow("letter case counts") << u"ab"_s << 0 << -1 << 0 << u"A"_s << QStringList{};
    QTest::addRow("equal characters") << u"aaab"_s << 0 << -1 << 0 << u"a"_s << QStringList{u"b"_s};
    QTest::addRow("only equal characters") << u"aa"_s << 0 << -1 << 0 << u"a"_s << QStringList{};
    QTest::addRow("odd length") << u"aba"_s << 0 << -1 << 0 << u"a"_s << QStringList{u"b"_s};
    QTest::addRow("one character") << u"a"_s << 0 << -1 << 0 << u"a"_s << QStringList{};
    QTest::addRow("empty spec") << u""_s << 0 << -1 << 0 << u"a"_s << QStringList{};
    QTest::addRow("empty input") << u"ab"_s << 0 << -1 << 0 << u""_s << QStringList{};
    QTest::addRow("out of range") << u"ab"_s << 0 << 1 << 2 << u"aaa"_s << QStringList{};
    QTest::addRow("the end is in range") << u"ab"_s << 0 << 1 << 1 << u"aaa"_s << QStringList{u"aba"_s};
    QTest::addRow("before the start, with an end")
        << u"ab"_s << 2 << 2 << 0 << u"aaa"_s << QStringList{u"baa"_s};
    QTest::addRow("behind the text") << u"ab"_s << 0 << -1 << 3 << u"aaa"_s << QStringList{};
    QTest::addRow("far behind the text")
        << u"ab"_s << 0 << -1 << std::numeric_limits<int>::max() << u"aaa"_s << QStringList{};
    QTest::addRow("before the text") << u"ab"_s << 3 << 7 << -5 << u"aaa"_s << QStringList{};
    // Characters are code units: half of a character outside the basic plane is one of them.
    QTest::addRow("outside the basic plane") << u"😀a"_s << 0 << -1 << 0 << u"a😀"_s << QStringList{};
}

void TestZEFCoercionSpec::coercesOnePosition()
{
    QFETCH(QString, pairs);
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, position);
    QFETCH(QString, input);
    QFETCH(QStringList, expected);

    QStringList output;
    QCOMPARE(ZEFCoercionSpec(pairs, start, end).coerce(position, input, output), expected.size());
    QCOMPARE(output, expected);
}

void TestZEFCoercionSpec::coercesEveryPositionOfItsRange_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("open") << 0 << -1 << u"aaa"_s << QStringList{u"baa"_s, u"aba"_s, u"aab"_s};
    QTest::addRow("open, later start") << 2 << -1 << u"aaa"_s << QStringList{u"aab"_s};
    QTest::addRow("the end is never visited") << 0 << 1 << u"aaa"_s << QStringList{u"baa"_s};
    QTest::addRow("start and end the same") << 1 << 1 << u"aaa"_s << QStringList{};
    QTest::addRow("end behind the text") << 1 << 100 << u"aa"_s << QStringList{u"ab"_s};
    QTest::addRow("start behind the text") << 5 << -1 << u"aa"_s << QStringList{};
    QTest::addRow("negative start") << -7 << 1 << u"aa"_s << QStringList{u"ba"_s};
    QTest::addRow("huge end") << 0 << std::numeric_limits<int>::max() << u"a"_s << QStringList{u"b"_s};
    QTest::addRow("end before -1") << 0 << -2 << u"aa"_s << QStringList{};
}

void TestZEFCoercionSpec::coercesEveryPositionOfItsRange()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(QString, input);
    QFETCH(QStringList, expected);

    QStringList output;
    QCOMPARE(ZEFCoercionSpec(u"ab"_s, start, end).coerce(input, output), expected.size());
    QCOMPARE(output, expected);
}

void TestZEFCoercionSpec::appendsToTheOutput()
{
    const ZEFCoercionSpec spec(u"ab"_s, 0, -1);
    QStringList output = {u"before"_s};
    QCOMPARE(spec.coerce(0, u"a"_s, output), 1);
    QCOMPARE(spec.coerce(u"ca"_s, output), 1);
    QCOMPARE(output, (QStringList{u"before"_s, u"b"_s, u"cb"_s}));
}

void TestZEFCoercionSpec::takesAnInputThatIsPartOfTheOutput()
{
    QStringList output = {u"aa"_s};
    output.squeeze();
    QCOMPARE(ZEFCoercionSpec(u"abac"_s, 0, -1).coerce(output.constFirst(), output), 4);
    QCOMPARE(output, (QStringList{u"aa"_s, u"ba"_s, u"ca"_s, u"ab"_s, u"ac"_s}));
}

ZEF_TEST_MAIN(TestZEFCoercionSpec)
#include "test_zefcoercionspec.moc"
