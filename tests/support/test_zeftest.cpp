// A test that logs what it did not announce fails: what every other test program relies on.

#include "ZEFTest.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

class TestZEFTest : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void judges_data();
    void judges();
};

void TestZEFTest::judges_data()
{
    QTest::addColumn<QString>("complaint"); // null: the function passes

    QTest::newRow("silent") << QString();
    QTest::newRow("debugLine") << QStringLiteral("debug: a debug line");
    QTest::newRow("infoLine") << QStringLiteral("info: an info line");
    QTest::newRow("warningLine") << QStringLiteral("warning: a warning");
    QTest::newRow("criticalLine") << QStringLiteral("critical: a critical line");
    QTest::newRow("emptyLine") << QStringLiteral("debug:  ");
    QTest::newRow("warningOfQt") << QStringLiteral(
        "warning: QObject::connect: No such signal Unannounced::noSignal()");
    QTest::newRow("lineWhenTidyingUp") << QStringLiteral("debug: tidying up");
    QTest::newRow("lineOfADeferredDelete") << QStringLiteral("debug: deleted late");
    QTest::newRow("someTaken") << QStringLiteral("warning: two");
    QTest::newRow("announcedInPart") << QStringLiteral("debug: a longer line");
    QTest::newRow("announcedOnAnotherChannel") << QStringLiteral("warning: a warning");
    QTest::newRow("announced") << QString();
    QTest::newRow("announcedByPattern") << QString();
    QTest::newRow("announcedAfterwards") << QString();
    QTest::newRow("taken") << QString();
    QTest::newRow("libraryLog") << QString();
    QTest::newRow("bothChannelsInOrder") << QString();
}

void TestZEFTest::judges()
{
    QFETCH(const QString, complaint);
    const QString function = QString::fromLatin1(QTest::currentDataTag());
    // What a program for Windows writes to the console does not always arrive.
    const QTemporaryDir folder;
    QFile result(folder.filePath(QStringLiteral("result.txt")));
    QProcess program;
    program.start(QString::fromLocal8Bit(UNANNOUNCED_PROGRAM),
                  {function, QStringLiteral("-o"), result.fileName() + QStringLiteral(",txt")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QVERIFY2(result.open(QIODevice::ReadOnly), qPrintable(result.errorString()));
    const QString output = QString::fromUtf8(result.readAll()).remove(u'\r');

    QCOMPARE(program.exitCode(), complaint.isNull() ? 0 : 1);
    const QString verdict = complaint.isNull()
        ? QString(u"PASS   : Unannounced::" + function + u"()\n")
        : QString(u"FAIL!  : Unannounced::" + function + u"() Lines that the test did not announce:\n"
                  + complaint + u'\n');
    QVERIFY2(output.contains(verdict), qPrintable(output));
}

ZEF_TEST_MAIN(TestZEFTest)
#include "test_zeftest.moc"
