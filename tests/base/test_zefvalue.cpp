#include "ZEFTest.h"

#include <ZEFValue.h>

#include <limits>

class TestZEFValue : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void aDefaultValueIsEmpty();
    void theTextComesBackAsItIs();
    void copiesAreIndependent();
    void asLong_data();
    void asLong();
};

void TestZEFValue::aDefaultValueIsEmpty()
{
    const ZEFValue value;
    QCOMPARE(value.asString(), QString());
    QCOMPARE(value.asLong(), 0L);
    QCOMPARE(QString(value), QString());
}

void TestZEFValue::theTextComesBackAsItIs()
{
    const QString text = QStringLiteral(" %n 12\u00a0ä\t");
    const ZEFValue value(text);
    QCOMPARE(value.asString(), text);
    const QString converted = value;
    QCOMPARE(converted, text);
}

void TestZEFValue::copiesAreIndependent()
{
    ZEFValue value(QStringLiteral("1"));
    const ZEFValue copy = value;
    value = ZEFValue(QStringLiteral("2"));
    QCOMPARE(copy.asLong(), 1L);
    QCOMPARE(value.asLong(), 2L);
}

void TestZEFValue::asLong_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");

    QTest::newRow("zero") << QStringLiteral("0") << 0;
    QTest::newRow("number") << QStringLiteral("42") << 42;
    QTest::newRow("negative") << QStringLiteral("-42") << -42;
    QTest::newRow("plus") << QStringLiteral("+5") << 5;
    QTest::newRow("leading zeros are decimal") << QStringLiteral("0012") << 12;
    QTest::newRow("blanks around") << QStringLiteral(" 12 ") << 12;
    QTest::newRow("tabs and line ends around") << QStringLiteral("\t\n12\r\n") << 12;
    QTest::newRow("largest") << QStringLiteral("2147483647") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << QStringLiteral("-2147483648") << std::numeric_limits<int>::min();
    QTest::newRow("many leading zeros") << QString(QString(1000, u'0') + u'7') << 7;

    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("blanks only") << QStringLiteral("   ") << 0;
    QTest::newRow("one beyond 32 bits") << QStringLiteral("2147483648") << 0;
    QTest::newRow("one below 32 bits") << QStringLiteral("-2147483649") << 0;
    QTest::newRow("would wrap to 1") << QStringLiteral("4294967297") << 0;
    QTest::newRow("beyond 64 bits") << QStringLiteral("18446744073709551617") << 0;
    QTest::newRow("10,000 digits") << QString(10000, u'9') << 0;
    QTest::newRow("word") << QStringLiteral("twelve") << 0;
    QTest::newRow("trailing letters") << QStringLiteral("12abc") << 0;
    QTest::newRow("hexadecimal") << QStringLiteral("0x10") << 0;
    QTest::newRow("binary") << QStringLiteral("0b11") << 0;
    QTest::newRow("exponent") << QStringLiteral("1e3") << 0;
    QTest::newRow("fraction") << QStringLiteral("12.0") << 0;
    QTest::newRow("group separator") << QStringLiteral("1,000") << 0;
    QTest::newRow("blank inside") << QStringLiteral("1 000") << 0;
    QTest::newRow("sign alone") << QStringLiteral("-") << 0;
    QTest::newRow("two signs") << QStringLiteral("--1") << 0;
    QTest::newRow("blank after the sign") << QStringLiteral("- 1") << 0;
    QTest::newRow("true") << QStringLiteral("true") << 0;
    QTest::newRow("Arabic-Indic digits") << QStringLiteral("\u0661\u0662") << 0;
    QTest::newRow("full-width digits") << QStringLiteral("\uff11\uff12") << 0;
    QTest::newRow("typographic minus") << QStringLiteral("\u22125") << 0;
    QTest::newRow("null character") << QString(u"12" + QString(QChar::Null)) << 0;
}

void TestZEFValue::asLong()
{
    QFETCH(const QString, text);
    QFETCH(const int, number);
    QCOMPARE(ZEFValue(text).asLong(), static_cast<long>(number));
}

ZEF_TEST_MAIN(TestZEFValue)
#include "test_zefvalue.moc"
