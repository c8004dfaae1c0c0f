// Random operations over nested hosts, custom widgets and format edits.
//
// Environment: ZEFUI_LIFETIME_OPERATIONS is the number of operations, ZEFUI_LIFETIME_SEED the first seed. A
// list that fails is shrunk, printed and saved; "test_hostlifetime --replay FILE" runs it again.
// "test_hostlifetime --draw SEED" writes the operations of a seed.

#include <ZEFTest.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include "lifetime/LifetimeRun.h"
#include "lifetime/LifetimeWorld.h"
#include "lifetime/NamedSlots.h"
#include "lifetime/Operation.h"

#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 20'000; // milliseconds for one operation; for a loaded machine with sanitizers
constexpr int shrinkingTime = 150'000;
constexpr int operationsPerRun = 1000;
constexpr int fewRuns = 5;

int environmentNumber(const char* name, int otherwise)
{
    bool given = false;
    const int number = qEnvironmentVariableIntValue(name, &given);
    return given ? number : otherwise;
}

} // namespace

class TestHostLifetime : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void linesAreReadAsTheyAreWritten_data();
    void linesAreReadAsTheyAreWritten();
    void otherLinesAreNone_data();
    void otherLinesAreNone();
    void theSameSeedDrawsTheSameOperations();
    void everyNamedSlotIsOfAForm();
    void aLineThatIsNoneFails();
    void aPlantedFaultIsFoundAndShrunk();
    void aFaultInsideASignalIsFoundAndShrunk();
    void randomOperations_data();
    void randomOperations();
};

void TestHostLifetime::linesAreReadAsTheyAreWritten_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("plain") << u"delete 0.3"_s;
    QTest::newRow("arguments") << u"press 2.5 left corner"_s;
    QTest::newRow("emitter") << u"when clicked delete emitter"_s;
    QTest::newRow("parent") << u"when any hide parent"_s;
    QTest::newRow("host") << u"when textChanged set host objectName x"_s;
    QTest::newRow("numbered") << u"when any add 11.39 toggle"_s;
}

void TestHostLifetime::linesAreReadAsTheyAreWritten()
{
    QFETCH(const QString, line);
    const std::optional<Operation> operation = Operation::fromLine(line);
    QVERIFY(operation);
    QCOMPARE(operation->toLine(), line);
}

void TestHostLifetime::otherLinesAreNone_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("empty") << QString();
    QTest::newRow("no place") << u"delete"_s;
    QTest::newRow("odd place") << u"delete 1"_s;
    QTest::newRow("negative place") << u"delete -1.0"_s;
    QTest::newRow("when alone") << u"when clicked delete"_s;
}

void TestHostLifetime::otherLinesAreNone()
{
    QFETCH(const QString, line);
    QVERIFY(!Operation::fromLine(line));
}

void TestHostLifetime::theSameSeedDrawsTheSameOperations()
{
    const QStringList lines = drawnOperations(7, 200);
    QCOMPARE(lines.size(), 200);
    QCOMPARE(drawnOperations(7, 200), lines);
    QVERIFY(drawnOperations(8, 200) != lines);
    for (const QString& line : lines) {
        const std::optional<Operation> operation = Operation::fromLine(line);
        QVERIFY2(operation && operation->toLine() == line, qPrintable(line));
    }
}

void TestHostLifetime::everyNamedSlotIsOfAForm()
{
    QSet<QString> unmatched;
    NamedSlots receiver([](const QMetaMethod&, QObject*) {});
    for (int index = receiver.metaObject()->methodOffset(); index < receiver.metaObject()->methodCount();
         ++index)
        unmatched.insert(QString::fromLatin1(receiver.metaObject()->method(index).methodSignature()));
    for (const QString& form :
         {u"qtwidgets"_s, u"dialogroot"_s, u"names"_s, u"allwidgets"_s, u"formatinput"_s}) {
        const std::unique_ptr<ZEFUIWidget> host(ZEFUIWidget::create(form, u"en"_s, nullptr, Qt::Window));
        TestLog::takeAll();
        host->element()->connectSlotsByName(&receiver);
        QSet<QString> missing;
        for (const QString& line : TestLog::takeAll())
            missing.insert(line.section(u' ', -1));
        unmatched &= missing;
    }
    QCOMPARE(unmatched, QSet<QString>());
}

void TestHostLifetime::aLineThatIsNoneFails()
{
    const LifetimeRun::Outcome outcome =
        LifetimeRun::inProcess({u"create 0.0 dialog names top"_s, u"jump"_s}, patience);
    QCOMPARE(outcome.begun, 2);
    QVERIFY2(outcome.failure.contains(u"not an operation: jump"), qPrintable(outcome.failure));
}

void TestHostLifetime::aPlantedFaultIsFoundAndShrunk()
{
    const QTemporaryDir folder;
    QStringList lines = drawnOperations(1, 120);
    lines.insert(100, u"planted 0.0"_s);
    lines.insert(70, u"mark 0.0 blue"_s);
    lines.insert(50, u"mark 0.0 red"_s);
    lines.insert(40, u"mark 0.0 blue"_s);
    lines.insert(10, u"planted 0.0"_s);
    const LifetimeRun::Outcome outcome = LifetimeRun::inProcess(lines, patience);
    QVERIFY(!outcome.failure.isEmpty());
    QCOMPARE(outcome.begun, 105);
    QStringList shrunk;
    const QString path = folder.filePath(u"list.txt"_s);
    const QString report =
        LifetimeRun::shrunkReport(lines, outcome, patience, QDeadlineTimer(shrinkingTime), path, &shrunk);
    QCOMPARE(shrunk, QStringList({u"mark 0.0 red"_s, u"mark 0.0 blue"_s, u"planted 0.0"_s}));
    QCOMPARE(LifetimeRun::linesOf(path), shrunk);
    QVERIFY(report.endsWith(u"--replay " + path + u":\nmark 0.0 red\nmark 0.0 blue\nplanted 0.0"));
    QVERIFY(!LifetimeRun::inProcess(LifetimeRun::linesOf(path), patience).failure.isEmpty());
}

void TestHostLifetime::aFaultInsideASignalIsFoundAndShrunk()
{
    const QTemporaryDir folder;
    const QStringList needed = {u"create 0.0 dialog names top"_s, u"mark 0.0 red"_s, u"mark 0.0 blue"_s,
                                u"when clicked planted 0.0"_s};
    QStringList lines = needed;
    for (int widget = 0; widget < 40; ++widget)
        lines.append(u"click 0.%1 left"_s.arg(widget));
    const LifetimeRun::Outcome outcome = LifetimeRun::inProcess(lines, patience);
    QStringList shrunk;
    LifetimeRun::shrunkReport(lines, outcome, patience, QDeadlineTimer(shrinkingTime),
                              folder.filePath(u"list.txt"_s), &shrunk);
    QCOMPARE(shrunk.size(), needed.size() + 1);
    QCOMPARE(shrunk.first(needed.size()), needed);
    QVERIFY(shrunk.last().startsWith(u"click 0."));
}

void TestHostLifetime::randomOperations_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("count");
    const auto first = static_cast<quint32>(environmentNumber("ZEFUI_LIFETIME_SEED", 1));
    const int total = environmentNumber("ZEFUI_LIFETIME_OPERATIONS", fewRuns * operationsPerRun);
    quint32 seed = first;
    for (int done = 0; done < total; done += operationsPerRun, ++seed)
        QTest::addRow("seed %u", seed) << seed << qMin(operationsPerRun, total - done);
}

void TestHostLifetime::randomOperations()
{
    QFETCH(const quint32, seed);
    QFETCH(const int, count);
    const QStringList lines = drawnOperations(seed, count);
    const LifetimeRun::Outcome outcome = LifetimeRun::inProcess(lines, patience);
    if (outcome.failure.isEmpty()) {
        QCOMPARE(outcome.begun, count);
        return;
    }
    const QString report = LifetimeRun::shrunkReport(lines, outcome, patience, QDeadlineTimer(shrinkingTime),
                                                     u"lifetime-seed-%1.txt"_s.arg(seed));
    QFAIL(qPrintable(report));
}

int main(int argc, char** argv)
{
    LifetimeWorld::Application application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc == 3 && qstrcmp(argv[1], "--replay") == 0)
        return LifetimeRun::here(LifetimeRun::linesOf(QString::fromLocal8Bit(argv[2])));
    if (argc == 3 && qstrcmp(argv[1], "--draw") == 0) {
        const quint32 seed = QString::fromLocal8Bit(argv[2]).toUInt();
        QTextStream(stdout) << drawnOperations(seed, operationsPerRun).join(u'\n') << '\n';
        return 0;
    }
    TestHostLifetime test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_hostlifetime.moc"
