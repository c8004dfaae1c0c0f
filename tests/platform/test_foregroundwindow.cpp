#include "ZEFTest.h"

#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <platform/ForegroundWindow.h>

#include <QtGui/QGuiApplication>

namespace {

class ScriptedForegroundWindow : public ForegroundWindow {
public:
    std::optional<qint64> owner;
    QList<QWidget*> inFront;

    std::optional<qint64> ownerProcess() override { return owner; }
    void putInFront(QWidget* widget) override { inFront.append(widget); }
};

constexpr qint64 nothing = -2;

} // namespace

class TestForegroundWindow : public ZEFTest {
    Q_OBJECT

private:
    void prepare() override;
    void tidyUp() override;

private Q_SLOTS:
    void aBackendStandsInUntilItIsTakenAway();
    void stepsInFrontOfItsClientOnly_data();
    void stepsInFrontOfItsClientOnly();
    void theArgumentIsNotUsed();
    void aHiddenHostIsShownWhateverTheForeground();
    void eachTickStepsInFrontAgain();
    void aFormWithoutAWidgetAsksNobody();
    void withoutXServerThereIsNoForegroundWindow();
};

void TestForegroundWindow::prepare()
{
    TestLog::allow(QStringLiteral("warning: QObject::connect: No such signal ZEFUIWidget::destoyed()"));
}

void TestForegroundWindow::tidyUp()
{
    ForegroundWindow::setInstance(nullptr);
}

void TestForegroundWindow::aBackendStandsInUntilItIsTakenAway()
{
    ForegroundWindow& own = ForegroundWindow::instance();
    ScriptedForegroundWindow scripted;
    ForegroundWindow::setInstance(&scripted);
    QCOMPARE(&ForegroundWindow::instance(), &scripted);
    ForegroundWindow::setInstance(nullptr);
    QCOMPARE(&ForegroundWindow::instance(), &own);
}

void TestForegroundWindow::stepsInFrontOfItsClientOnly_data()
{
    QTest::addColumn<qint64>("owner");
    QTest::addColumn<qint64>("clientPID");
    QTest::addColumn<bool>("result");
    QTest::addColumn<bool>("inFront");

    QTest::newRow("the client's window") << qint64(4711) << qint64(4711) << true << true;
    QTest::newRow("another process's window") << qint64(4712) << qint64(4711) << true << false;
    QTest::newRow("a window of this process")
        << QCoreApplication::applicationPid() << qint64(4711) << true << false;
    QTest::newRow("no foreground window") << nothing << qint64(4711) << false << false;
    QTest::newRow("no foreground window, no client") << nothing << qint64(0) << false << false;
    QTest::newRow("no client") << qint64(4711) << qint64(0) << true << false;
    QTest::newRow("an owner that nobody knows")
        << ForegroundWindow::UnknownProcess << qint64(4711) << true << false;
    QTest::newRow("an owner that nobody knows, and -1 as the client")
        << ForegroundWindow::UnknownProcess << qint64(-1) << true << false;

    // Process ids are unsigned with 32 bits, and so is long on Windows, but signed.
    QTest::newRow("beyond 2^31, client signed")
        << qint64(3000000000) << qint64(3000000000 - 4294967296) << true << true;
    QTest::newRow("beyond 2^31, client unsigned")
        << qint64(3000000000) << qint64(static_cast<long>(3000000000)) << true << true;
    QTest::newRow("beyond 2^31, another process")
        << qint64(3000000001) << qint64(3000000000 - 4294967296) << true << false;
    QTest::newRow("2^31") << qint64(2147483648) << qint64(-2147483648) << true << true;
    QTest::newRow("the largest") << qint64(4294967295) << qint64(-1) << true << true;
}

void TestForegroundWindow::stepsInFrontOfItsClientOnly()
{
    QFETCH(const qint64, owner);
    QFETCH(const qint64, clientPID);
    QFETCH(const bool, result);
    QFETCH(const bool, inFront);
    ScriptedForegroundWindow scripted;
    ForegroundWindow::setInstance(&scripted);
    if (owner != nothing)
        scripted.owner = owner;
    ZEFUIWidget host;
    host.element()->setClientPID(static_cast<long>(clientPID));

    QCOMPARE(host.element()->bringToFront(false), result);
    QCOMPARE(scripted.inFront, inFront ? QList<QWidget*>({&host}) : QList<QWidget*>());
}

void TestForegroundWindow::theArgumentIsNotUsed()
{
    ScriptedForegroundWindow scripted;
    ForegroundWindow::setInstance(&scripted);
    scripted.owner = 4711;
    ZEFUIWidget host;
    host.element()->setClientPID(4711);
    QVERIFY(host.element()->bringToFront(true));
    QVERIFY(host.element()->bringToFront(false));
    host.element()->show();
    QCOMPARE(scripted.inFront, QList<QWidget*>({&host, &host, &host}));
}

void TestForegroundWindow::aHiddenHostIsShownWhateverTheForeground()
{
    ScriptedForegroundWindow scripted;
    ForegroundWindow::setInstance(&scripted);
    ZEFUIWidget host;
    host.element()->setClientPID(4711);
    QVERIFY(!host.element()->bringToFront(false));
    QVERIFY(host.isVisible());

    scripted.owner = 4712;
    host.hide();
    QVERIFY(host.element()->bringToFront(false));
    QVERIFY(host.isVisible());
    QCOMPARE(scripted.inFront, QList<QWidget*>());
}

void TestForegroundWindow::eachTickStepsInFrontAgain()
{
    ScriptedForegroundWindow scripted;
    ForegroundWindow::setInstance(&scripted);
    scripted.owner = 4711;
    ZEFUIWidget host;
    host.element()->setClientPID(4711);
    QTRY_VERIFY(scripted.inFront.size() >= 3);
    QCOMPARE(scripted.inFront.constFirst(), &host);
}

void TestForegroundWindow::aFormWithoutAWidgetAsksNobody()
{
    ScriptedForegroundWindow scripted;
    ForegroundWindow::setInstance(&scripted);
    scripted.owner = 4711;
    ZEFUIElement element(nullptr, nullptr, nullptr, 4711);
    QVERIFY(!element.bringToFront(true));
    QCOMPARE(scripted.inFront, QList<QWidget*>());
}

void TestForegroundWindow::withoutXServerThereIsNoForegroundWindow()
{
    if (QGuiApplication::platformName() != u"offscreen")
        QSKIP("for the offscreen platform");
    ForegroundWindow& own = ForegroundWindow::instance();
    ZEFUIWidget host;
    host.element()->setClientPID(static_cast<long>(QCoreApplication::applicationPid()));
    QVERIFY(!host.element()->bringToFront(true));
    QVERIFY(host.isVisible());
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    QVERIFY(!own.ownerProcess());
    own.putInFront(&host);
    own.putInFront(nullptr);
}

ZEF_TEST_MAIN(TestForegroundWindow)
#include "test_foregroundwindow.moc"
