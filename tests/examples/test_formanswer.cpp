#include <ZEFTest.h>
#include <protocol/FormAnswer.h>

class FormAnswerTest : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void closed();
    void errorIsOneLine();
    void isError_data();
    void isError();
};

void FormAnswerTest::closed()
{
    const QVariantMap values = {
        {QStringLiteral("a.text"), QStringLiteral("zwei\nZeilen \"ä\"")},
        {QStringLiteral("b.checked"), true},
        {QStringLiteral("c.value"), 7},
        {QStringLiteral("d.value"), 0.5},
        {QStringLiteral("e.missing"), QVariant()},
        {QStringLiteral("f.size"), QSize(1, 2)},
    };
    QCOMPARE(
        FormAnswer::closed(-3, values),
        QByteArray("{\"selection\":-3,\"values\":{\"a.text\":\"zwei\\nZeilen \\\"ä\\\"\",\"b.checked\":true,"
                   "\"c.value\":7,\"d.value\":0.5,\"e.missing\":null,\"f.size\":\"\"}}\n"));
}

void FormAnswerTest::errorIsOneLine()
{
    QCOMPARE(FormAnswer::error(QStringLiteral("100 %n\n\"x\"")),
             QByteArray("{\"error\":\"100 %n\\n\\\"x\\\"\"}\n"));
}

void FormAnswerTest::isError_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("error");
    QTest::newRow("closed") << FormAnswer::closed(0, {}) << false;
    QTest::newRow("error") << FormAnswer::error(QStringLiteral("x")) << true;
    QTest::newRow("a value named error")
        << FormAnswer::closed(1, {{QStringLiteral("error.text"), 1}}) << false;
    QTest::newRow("no answer") << QByteArray("gone\n") << true;
}

void FormAnswerTest::isError()
{
    QFETCH(const QByteArray, line);
    QTEST(FormAnswer::isError(line), "error");
}

ZEF_TEST_MAIN(FormAnswerTest)
#include "test_formanswer.moc"
