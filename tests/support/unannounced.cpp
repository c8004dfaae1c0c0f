// Test functions that log in ways that must fail, or must not; test_zeftest runs them one by one.

#include "ZEFTest.h"

#include <ZEFBase.h>

class Unannounced : public ZEFTest {
    Q_OBJECT

private:
    void tidyUp() override;

private Q_SLOTS:
    void silent() { }
    void debugLine() { qDebug("a debug line"); }
    void infoLine() { qInfo("an info line"); }
    void warningLine() { qWarning("a warning"); }
    void criticalLine() { qCritical("a critical line"); }
    void emptyLine() { qDebug(" "); }
    void warningOfQt();
    void lineWhenTidyingUp() { }
    void lineOfADeferredDelete();
    void someTaken();
    void announcedInPart();
    void announcedOnAnotherChannel();

    void announced();
    void announcedByPattern();
    void announcedAfterwards();
    void taken();
    void libraryLog() { ZEFBase::logDebug(QStringLiteral("a line of the library log")); }
    void bothChannelsInOrder();
};

void Unannounced::tidyUp()
{
    if (qstrcmp(QTest::currentTestFunction(), "lineWhenTidyingUp") == 0)
        qDebug("tidying up");
}

void Unannounced::warningOfQt()
{
    QObject::connect(this, "2noSignal()", this, "1deleteLater()");
}

void Unannounced::lineOfADeferredDelete()
{
    auto* object = new QObject;
    QObject::connect(object, &QObject::destroyed, [] { qDebug("deleted late"); });
    object->deleteLater();
}

void Unannounced::someTaken()
{
    qDebug("one");
    qWarning("two");
    QCOMPARE(TestLog::take(QStringLiteral("debug: ")), QStringList({QStringLiteral("debug: one")}));
}

void Unannounced::announcedInPart()
{
    TestLog::allow(QRegularExpression(QStringLiteral("debug: a")));
    qDebug("a longer line");
}

void Unannounced::announcedOnAnotherChannel()
{
    TestLog::allow(QStringLiteral("debug: a warning"));
    qWarning("a warning");
}

void Unannounced::announced()
{
    TestLog::allow(QStringLiteral("debug: a line (with a dot.)"));
    qDebug("a line (with a dot.)");
    qDebug("a line (with a dot.)");
}

void Unannounced::announcedByPattern()
{
    TestLog::allow(QRegularExpression(QStringLiteral("warning: line .*")));
    qWarning("line 1\nline 2");
}

void Unannounced::announcedAfterwards()
{
    qDebug("a line");
    TestLog::allow(QStringLiteral("debug: a line"));
}

void Unannounced::taken()
{
    qDebug("one");
    qWarning("two");
    QCOMPARE(TestLog::takeAll(), QStringList({QStringLiteral("debug: one"), QStringLiteral("warning: two")}));
}

void Unannounced::bothChannelsInOrder()
{
    qDebug("one");
    ZEFBase::logDebug(QStringLiteral("two"));
    qDebug("three");
    QCOMPARE(TestLog::takeAll(),
             QStringList(
                 {QStringLiteral("debug: one"), QStringLiteral("log: two"), QStringLiteral("debug: three")}));
}

ZEF_TEST_MAIN(Unannounced)
#include "unannounced.moc"
