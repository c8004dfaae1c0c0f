// On an X server without a window manager; where one is needed the test plays it.

#include "XServer.h"
#include "ZEFTest.h"

#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <platform/ForegroundWindow.h>

#include <cstdlib>
#include <memory>

namespace {

using Owner = std::optional<qint64>;

} // namespace

class TestForegroundWindowX11Unmanaged : public ZEFTest {
    Q_OBJECT

private:
    void prepare() override;
    void tidyUp() override;
    //! Announces a window manager whose own window is \a window.
    void announceManager(xcb_window_t window);
    void setActiveWindow(xcb_window_t window);
    //! A window that is the active one and names \a process as its owner.
    xcb_window_t activeWindowOf(quint32 process);

    std::unique_ptr<XServer> m_server;

private Q_SLOTS:
    void withoutAWindowManagerThereIsNoForegroundWindow();
    void thePropertiesOfADeadWindowManagerDoNotCount();
    void aWindowManagerThatDoesNotAnswerForItselfDoesNotCount();
    void theOwnerIsTheProcessOfTheActiveWindow_data();
    void theOwnerIsTheProcessOfTheActiveWindow();
    void aWindowWithoutAProcessHasAnUnknownOwner();
    void propertiesOfAnotherKindDoNotCount();
    void withoutAnActiveWindowThereIsNoForegroundWindow();
    void anActiveWindowThatIsGoneIsNoForegroundWindow();
    void theWindowManagerIsAskedAsAPagerAsks();
    void theWindowOfAChildIsPutInFront();
    void widgetsWithoutAWindowAreIgnored();
};

void TestForegroundWindowX11Unmanaged::prepare()
{
    TestLog::allow(QStringLiteral("warning: QObject::connect: No such signal ZEFUIWidget::destoyed()"));
    m_server = std::make_unique<XServer>();
}

void TestForegroundWindowX11Unmanaged::tidyUp()
{
    m_server->removeProperty(m_server->root(), "_NET_SUPPORTING_WM_CHECK");
    m_server->removeProperty(m_server->root(), "_NET_ACTIVE_WINDOW");
    m_server.reset();
}

void TestForegroundWindowX11Unmanaged::announceManager(xcb_window_t window)
{
    m_server->setProperty(m_server->root(), "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {window});
}

void TestForegroundWindowX11Unmanaged::setActiveWindow(xcb_window_t window)
{
    m_server->setProperty(m_server->root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
}

xcb_window_t TestForegroundWindowX11Unmanaged::activeWindowOf(quint32 process)
{
    const xcb_window_t manager = m_server->createWindow();
    m_server->setProperty(manager, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {manager});
    announceManager(manager);
    const xcb_window_t window = m_server->createWindow();
    m_server->setProperty(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {process});
    setActiveWindow(window);
    return window;
}

void TestForegroundWindowX11Unmanaged::withoutAWindowManagerThereIsNoForegroundWindow()
{
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
    ZEFUIWidget host;
    host.element()->setClientPID(static_cast<long>(QCoreApplication::applicationPid()));
    QVERIFY(!host.element()->bringToFront(true));
    QVERIFY(host.isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QVERIFY(!host.element()->bringToFront(true));
    ForegroundWindow::instance().putInFront(&host);
    QCoreApplication::processEvents();
}

void TestForegroundWindowX11Unmanaged::thePropertiesOfADeadWindowManagerDoNotCount()
{
    activeWindowOf(4711);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner(4711));
    m_server->destroyWindow(m_server->property(m_server->root(), "_NET_SUPPORTING_WM_CHECK").constFirst());
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());

    // a new window may have got the old one's id
    announceManager(m_server->createWindow());
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
}

void TestForegroundWindowX11Unmanaged::aWindowManagerThatDoesNotAnswerForItselfDoesNotCount()
{
    activeWindowOf(4711);
    const xcb_window_t manager = m_server->createWindow();
    m_server->setProperty(manager, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {m_server->root()});
    announceManager(manager);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
    announceManager(XCB_WINDOW_NONE);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
}

void TestForegroundWindowX11Unmanaged::theOwnerIsTheProcessOfTheActiveWindow_data()
{
    QTest::addColumn<quint32>("process");
    QTest::addColumn<qint64>("owner");

    QTest::newRow("1") << 1U << qint64(1);
    QTest::newRow("4711") << 4711U << qint64(4711);
    QTest::newRow("beyond 2^31") << 3000000000U << qint64(3000000000);
    QTest::newRow("the largest") << 4294967295U << qint64(4294967295);
    QTest::newRow("0 is no process") << 0U << ForegroundWindow::UnknownProcess;
}

void TestForegroundWindowX11Unmanaged::theOwnerIsTheProcessOfTheActiveWindow()
{
    QFETCH(const quint32, process);
    QFETCH(const qint64, owner);
    activeWindowOf(process);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner(owner));
}

void TestForegroundWindowX11Unmanaged::aWindowWithoutAProcessHasAnUnknownOwner()
{
    m_server->removeProperty(activeWindowOf(4711), "_NET_WM_PID");
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner(ForegroundWindow::UnknownProcess));

    ZEFUIWidget host;
    host.element()->setClientPID(4711);
    QVERIFY(host.element()->bringToFront(true));
}

void TestForegroundWindowX11Unmanaged::propertiesOfAnotherKindDoNotCount()
{
    const xcb_window_t window = activeWindowOf(4711);
    m_server->setBytes(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, "4711");
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner(ForegroundWindow::UnknownProcess));
    m_server->setProperty(window, "_NET_WM_PID", XCB_ATOM_INTEGER, {4711});
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner(ForegroundWindow::UnknownProcess));
    m_server->setProperty(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {});
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner(ForegroundWindow::UnknownProcess));

    m_server->setProperty(m_server->root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_CARDINAL, {window});
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
    m_server->setProperty(m_server->root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {});
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
}

void TestForegroundWindowX11Unmanaged::withoutAnActiveWindowThereIsNoForegroundWindow()
{
    activeWindowOf(4711);
    setActiveWindow(XCB_WINDOW_NONE);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
    m_server->removeProperty(m_server->root(), "_NET_ACTIVE_WINDOW");
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
}

void TestForegroundWindowX11Unmanaged::anActiveWindowThatIsGoneIsNoForegroundWindow()
{
    m_server->destroyWindow(activeWindowOf(4711));
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), Owner());
    ZEFUIWidget host;
    host.element()->setClientPID(4711);
    QVERIFY(!host.element()->bringToFront(true));
}

void TestForegroundWindowX11Unmanaged::theWindowManagerIsAskedAsAPagerAsks()
{
    activeWindowOf(4711);
    ZEFUIWidget host;
    host.element()->setClientPID(4711);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    constexpr quint32 redirect = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(m_server->connection(), m_server->root(), XCB_CW_EVENT_MASK, &redirect);
    QCOMPARE(m_server->activeWindow() != XCB_WINDOW_NONE, true); // the server has done it

    QVERIFY(host.element()->bringToFront(true));
    const auto window = static_cast<xcb_window_t>(host.winId());
    bool asked = false;
    bool raised = false;
    const auto look = [&] {
        while (xcb_generic_event_t* event = xcb_poll_for_event(m_server->connection())) {
            const int type = event->response_type & 0x7f;
            if (type == XCB_CLIENT_MESSAGE) {
                const auto* message = reinterpret_cast<xcb_client_message_event_t*>(event);
                asked = asked
                    || (message->type == m_server->atom("_NET_ACTIVE_WINDOW") && message->format == 32
                        && message->window == window && message->data.data32[0] == 2);
            } else if (type == XCB_CONFIGURE_REQUEST) {
                const auto* request = reinterpret_cast<xcb_configure_request_event_t*>(event);
                raised = raised
                    || (request->window == window && request->value_mask == XCB_CONFIG_WINDOW_STACK_MODE
                        && request->stack_mode == XCB_STACK_MODE_ABOVE);
            }
            std::free(event);
        }
        return asked && raised;
    };
    QTRY_VERIFY(look());
}

void TestForegroundWindowX11Unmanaged::theWindowOfAChildIsPutInFront()
{
    QWidget below;
    below.show();
    QWidget window;
    QWidget child(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&below));
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto topmost = [this] {
        auto* reply = xcb_query_tree_reply(m_server->connection(),
                                           xcb_query_tree(m_server->connection(), m_server->root()), nullptr);
        const xcb_window_t* children = xcb_query_tree_children(reply);
        const xcb_window_t top = children[xcb_query_tree_children_length(reply) - 1];
        std::free(reply);
        return top;
    };
    below.raise();
    QTRY_COMPARE(topmost(), static_cast<xcb_window_t>(below.winId()));
    ForegroundWindow::instance().putInFront(&child);
    QTRY_COMPARE(topmost(), static_cast<xcb_window_t>(window.winId()));
    QVERIFY(!child.internalWinId()); // no window of its own was made for it
}

void TestForegroundWindowX11Unmanaged::widgetsWithoutAWindowAreIgnored()
{
    QWidget never;
    ForegroundWindow::instance().putInFront(&never);
    ForegroundWindow::instance().putInFront(nullptr);
    QVERIFY(!never.internalWinId());
}

ZEF_TEST_MAIN(TestForegroundWindowX11Unmanaged)
#include "test_foregroundwindow_x11_unmanaged.moc"
