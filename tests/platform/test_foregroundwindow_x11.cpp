// Under a real window manager, with real windows of other processes.

#include "XServer.h"
#include "ZEFTest.h"

#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <platform/ForegroundWindow.h>

#include <QtCore/QLoggingCategory>
#include <QtCore/QProcess>

namespace {

//! A process with a window of its own.
class OtherProcess {
public:
    bool start()
    {
        m_process.start(QString::fromLocal8Bit(CLIENT_WINDOW_PROGRAM), QStringList());
        if (!m_process.waitForStarted() || !m_process.waitForReadyRead())
            return false;
        window = m_process.readLine().trimmed().toUInt();
        return window != 0;
    }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    ~OtherProcess() { kill(); }
    OtherProcess() = default;

    long processId() const { return static_cast<long>(m_process.processId()); }
    xcb_window_t window = XCB_WINDOW_NONE;

private:
    Q_DISABLE_COPY_MOVE(OtherProcess)
    QProcess m_process;
};

//! Passes everything on to the platform's own answers and remembers what was asked.
class Observer : public ForegroundWindow {
public:
    explicit Observer(ForegroundWindow& own)
        : m_own(own)
    {
    }
    int asked = 0;
    QList<QWidget*> inFront;

    std::optional<qint64> ownerProcess() override
    {
        ++asked;
        return m_own.ownerProcess();
    }
    void putInFront(QWidget* widget) override
    {
        inFront.append(widget);
        m_own.putInFront(widget);
    }

private:
    ForegroundWindow& m_own;
};

} // namespace

class TestForegroundWindowX11 : public ZEFTest {
    Q_OBJECT

private:
    void prepare() override;
    void tidyUp() override;
    xcb_window_t windowOf(const QWidget& widget) const { return static_cast<xcb_window_t>(widget.winId()); }
    //! Waits until the window manager has done all that it was told before.
    void waitForManager();
    //! Waits until \a window is the active one and above all others.
    void bringUp(xcb_window_t window);

    std::unique_ptr<XServer> m_server;

private Q_SLOTS:
    void tellsTheOwnerOfTheForegroundWindow();
    void aFormStepsInFrontOfItsClientsWindow();
    void aFormNeverStepsInFrontOfAnotherProcess();
    void aFormStepsInFrontOfAnUndecoratedWindowOfItsClient();
    void aClientThatIsGoneIsNoOwner();
    void aWindowThatIsGoneIsNotPutInFront();
};

void TestForegroundWindowX11::prepare()
{
    TestLog::allow(QStringLiteral("warning: QObject::connect: No such signal ZEFUIWidget::destoyed()"));
    m_server = std::make_unique<XServer>();
}

void TestForegroundWindowX11::tidyUp()
{
    QLoggingCategory::setFilterRules(QString());
    ForegroundWindow::setInstance(nullptr);
    m_server.reset();
}

void TestForegroundWindowX11::waitForManager()
{
    const xcb_window_t window = m_server->createWindow();
    m_server->tellManager(window, "_NET_REQUEST_FRAME_EXTENTS", {});
    QTRY_COMPARE(m_server->property(window, "_NET_FRAME_EXTENTS").size(), 4);
    m_server->destroyWindow(window);
}

void TestForegroundWindowX11::bringUp(xcb_window_t window)
{
    const auto isUp = [&] {
        return m_server->activeWindow() == window && m_server->stacking().constLast() == window;
    };
    const auto staysUp = [&] {
        if (isUp()) {
            waitForManager();
            if (isUp())
                return true;
        }
        // Once is not enough: the window manager may still be about to give a new window the focus.
        m_server->activate(window);
        return false;
    };
    QTRY_VERIFY(m_server->stacking().contains(window));
    QTRY_VERIFY(staysUp());
}

void TestForegroundWindowX11::tellsTheOwnerOfTheForegroundWindow()
{
    OtherProcess other;
    QVERIFY(other.start());
    bringUp(other.window);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), std::optional<qint64>(other.processId()));

    QWidget own;
    own.show();
    QVERIFY(QTest::qWaitForWindowExposed(&own));
    bringUp(windowOf(own));
    QCOMPARE(ForegroundWindow::instance().ownerProcess(),
             std::optional<qint64>(QCoreApplication::applicationPid()));
}

void TestForegroundWindowX11::aFormStepsInFrontOfItsClientsWindow()
{
    OtherProcess client;
    QVERIFY(client.start());
    ZEFUIWidget host;
    host.setGeometry(150, 150, 200, 100);
    host.element()->show();
    QTRY_VERIFY(m_server->stacking().contains(windowOf(host)));
    bringUp(client.window);

    host.element()->setClientPID(client.processId()); // and the next tick sees to it
    QTRY_COMPARE(m_server->stacking().constLast(), windowOf(host));
    QTRY_COMPARE(m_server->activeWindow(), windowOf(host));
    QVERIFY(QTest::qWaitForWindowActive(&host));
    QVERIFY(m_server->stacking().contains(client.window));
}

void TestForegroundWindowX11::aFormNeverStepsInFrontOfAnotherProcess()
{
    Observer observer(ForegroundWindow::instance());
    ForegroundWindow::setInstance(&observer);
    OtherProcess client;
    OtherProcess stranger;
    QVERIFY(client.start());
    QVERIFY(stranger.start());
    ZEFUIWidget host;
    host.setGeometry(150, 150, 200, 100);
    host.element()->show();
    QTRY_VERIFY(m_server->stacking().contains(windowOf(host)));
    bringUp(stranger.window);

    host.element()->setClientPID(client.processId());
    QVERIFY(host.element()->bringToFront(true));
    observer.asked = 0;
    QTRY_VERIFY(observer.asked >= 3);
    waitForManager();
    QCOMPARE(m_server->activeWindow(), stranger.window);
    QCOMPARE(m_server->stacking().constLast(), stranger.window);
    QCOMPARE(observer.inFront, QList<QWidget*>());
}

void TestForegroundWindowX11::aFormStepsInFrontOfAnUndecoratedWindowOfItsClient()
{
    OtherProcess client;
    QVERIFY(client.start());
    ZEFUIWidget host(nullptr, Qt::FramelessWindowHint);
    host.setGeometry(100, 100, 300, 200);
    host.element()->setClientPID(client.processId());
    host.element()->show();
    QTRY_VERIFY(m_server->stacking().contains(windowOf(host)));
    QTRY_COMPARE(m_server->stacking().constLast(), windowOf(host));
    QTRY_COMPARE(m_server->activeWindow(), windowOf(host));
}

void TestForegroundWindowX11::aClientThatIsGoneIsNoOwner()
{
    OtherProcess client;
    QVERIFY(client.start());
    bringUp(client.window);
    const std::optional<qint64> processId = client.processId();
    ZEFUIWidget host;
    host.element()->setClientPID(client.processId());
    client.kill();
    // At first the window manager may still name a window that is gone.
    for (int i = 0; i < 20; ++i)
        QVERIFY(ForegroundWindow::instance().ownerProcess() != processId);
    host.element()->show();
    waitForManager();
    QVERIFY(ForegroundWindow::instance().ownerProcess() != processId);
}

void TestForegroundWindowX11::aWindowThatIsGoneIsNotPutInFront()
{
    auto window = std::make_unique<QWidget>();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    m_server->destroyWindow(windowOf(*window));
    waitForManager();
    QCoreApplication::processEvents();

    // Qt tells of errors that nobody took, in a category that is off by default.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.xcb=true"));
    ForegroundWindow::instance().putInFront(window.get());
    waitForManager();
    QCoreApplication::processEvents();
    QCOMPARE(TestLog::takeAll().filter(QStringLiteral("XCB error")), QStringList());
}

ZEF_TEST_MAIN(TestForegroundWindowX11)
#include "test_foregroundwindow_x11.moc"
