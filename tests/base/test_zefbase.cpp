#include "ZEFTest.h"

#include <ZEFBase.h>

#include <QtCore/QLoggingCategory>

#include <memory>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

} // namespace

class TestZEFBase : public ZEFTest {
    Q_OBJECT

private:
    void tidyUp() override;

private Q_SLOTS:
    void theHandlerGetsEachLineAsItStands();
    void settingAHandlerReturnsThePreviousOne();
    void theHandlerMayLogAndMayBeReplacedWhileItRuns();
    void theDefaultIsSilentUnlessRulesTurnItOn_data();
    void theDefaultIsSilentUnlessRulesTurnItOn();
    void theDefaultWritesTheLineAsItStands_data();
    void theDefaultWritesTheLineAsItStands();
    void theDefaultWritesAtDebugLevelToItsCategory();
};

void TestZEFBase::tidyUp()
{
    QLoggingCategory::setFilterRules(QString());
    ZEFBase::setLogHandler({});
}

void TestZEFBase::theHandlerGetsEachLineAsItStands()
{
    QStringList lines;
    ZEFBase::setLogHandler([&](const QString& line) { lines.append(line); });
    ZEFBase::logDebug(s("100 %s %n \"quoted\" ä\nsecond"));
    ZEFBase::logDebug(QString());
    QCOMPARE(lines, QStringList({s("100 %s %n \"quoted\" ä\nsecond"), QString()}));
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFBase::settingAHandlerReturnsThePreviousOne()
{
    ZEFBase::setLogHandler({});
    QStringList lines;
    QVERIFY(!ZEFBase::setLogHandler([&](const QString& line) { lines.append(u"first " + line); }));
    const ZEFBase::LogHandler first =
        ZEFBase::setLogHandler([&](const QString& line) { lines.append(u"second " + line); });
    QVERIFY(first);
    first(s("by hand"));
    ZEFBase::logDebug(s("a"));
    ZEFBase::setLogHandler(first);
    ZEFBase::logDebug(s("b"));
    QVERIFY(ZEFBase::setLogHandler({}));
    ZEFBase::logDebug(s("c"));
    QCOMPARE(lines, QStringList({s("first by hand"), s("second a"), s("first b")}));
}

void TestZEFBase::theHandlerMayLogAndMayBeReplacedWhileItRuns()
{
    QStringList lines;
    auto alive = std::make_shared<int>(0);
    ZEFBase::setLogHandler([&lines, alive](const QString& line) {
        lines.append(line);
        if (line == u"outer")
            ZEFBase::logDebug(s("inner"));
        if (line == u"last") {
            ZEFBase::setLogHandler([&lines](const QString& later) { lines.append(u"new " + later); });
            lines.append(QString::number(alive.use_count())); // what it captured is still there
        }
    });
    const std::weak_ptr<int> watch = alive;
    alive.reset();
    ZEFBase::logDebug(s("outer"));
    ZEFBase::logDebug(s("last"));
    QVERIFY(watch.expired());
    ZEFBase::logDebug(s("line"));
    QCOMPARE(lines, QStringList({s("outer"), s("inner"), s("last"), s("1"), s("new line")}));
}

void TestZEFBase::theDefaultIsSilentUnlessRulesTurnItOn_data()
{
    QTest::addColumn<QString>("rules");
    QTest::addColumn<QStringList>("output");

    QTest::newRow("no rules") << QString() << QStringList();
    QTest::newRow("another category") << s("zef.other.debug=true") << QStringList();
    QTest::newRow("another level") << s("zef.log.info=true") << QStringList();
    QTest::newRow("on") << s("zef.log.debug=true") << QStringList({s("debug: a line")});
    QTest::newRow("the family on") << s("zef.*=true") << QStringList({s("debug: a line")});
    QTest::newRow("off again") << s("zef.log.debug=true\nzef.log=false") << QStringList();
}

void TestZEFBase::theDefaultIsSilentUnlessRulesTurnItOn()
{
    QFETCH(const QString, rules);
    QFETCH(const QStringList, output);
    ZEFBase::setLogHandler({});
    QLoggingCategory::setFilterRules(rules);
    ZEFBase::logDebug(s("a line"));
    QCOMPARE(TestLog::takeAll(), output);
}

void TestZEFBase::theDefaultWritesTheLineAsItStands_data()
{
    QTest::addColumn<QString>("line");

    QTest::newRow("conversions") << s("%s%s%s%n %1 %d 100%");
    QTest::newRow("quotes and backslashes") << s("\"C:\\temp\\%n\"");
    QTest::newRow("blanks at both ends") << s("  two  ");
    QTest::newRow("beyond ASCII") << s("Größe \U0001f600");
    QTest::newRow("empty") << s("");
    QTest::newRow("line end") << s("one\ntwo\n");
}

void TestZEFBase::theDefaultWritesTheLineAsItStands()
{
    QFETCH(const QString, line);
    ZEFBase::setLogHandler({});
    QLoggingCategory::setFilterRules(s("zef.log.debug=true"));
    ZEFBase::logDebug(line);
    QCOMPARE(TestLog::takeAll(), QStringList({QString(u"debug: " + line)}));
}

void TestZEFBase::theDefaultWritesAtDebugLevelToItsCategory()
{
    static QStringList categories;
    categories.clear();
    ZEFBase::setLogHandler({});
    QLoggingCategory::setFilterRules(s("zef.log.debug=true"));
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString&) {
            categories.append(QString::number(type) + u' ' + QString::fromUtf8(context.category));
        });
    ZEFBase::logDebug(s("a line"));
    qInstallMessageHandler(previous);
    QCOMPARE(categories, QStringList({QString(QString::number(QtDebugMsg) + u" zef.log")}));
}

ZEF_TEST_MAIN(TestZEFBase)
#include "test_zefbase.moc"
