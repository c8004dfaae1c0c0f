#include "ZEFTest.h"

#include <platform/ForegroundWindow.h>
#include <platform/ForegroundWindow_windows.h>

#include <QtCore/QProcess>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

#include <qt_windows.h>

#include <memory>

namespace {

constexpr int patience = 30000;

WId foregroundWindow()
{
    return reinterpret_cast<WId>(GetForegroundWindow());
}

//! Whether \a upper stands above \a lower on the screen.
bool isAbove(WId upper, WId lower)
{
    for (HWND window = reinterpret_cast<HWND>(upper); window; window = GetWindow(window, GW_HWNDNEXT)) {
        if (reinterpret_cast<WId>(window) == lower)
            return true;
    }
    return false;
}

//! Another process that has made its window the foreground window.
class ForeignProcess {
public:
    ForeignProcess()
    {
        m_process.start(
            QCoreApplication::applicationDirPath() + u'/' + QStringLiteral(FOREIGN_WINDOW_PROGRAM), {});
        m_window = readLine().toULongLong();
    }
    ~ForeignProcess() { end(); }

    WId window() const { return m_window; }
    qint64 id() const { return m_process.processId(); }
    bool isForeground() const { return m_window && foregroundWindow() == m_window; }

    //! Sends \a command and waits for the answer.
    QByteArray ask(const char* command)
    {
        m_process.write(QByteArray(command) + '\n');
        return readLine();
    }
    //! Whether the window is in the foreground and stays there while all of \a others handle what they have
    //! got.
    bool isForegroundOver(const QList<ForeignProcess*>& others)
    {
        for (ForeignProcess* process : others)
            process->ask("ping");
        ask("ping");
        return isForeground();
    }
    void end()
    {
        m_process.closeWriteChannel();
        if (!QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, patience))
            m_process.kill();
    }

private:
    Q_DISABLE_COPY_MOVE(ForeignProcess)

    QByteArray readLine()
    {
        // The other process may wait for an answer of this process's windows.
        if (!QTest::qWaitFor([this] { return m_process.canReadLine(); }, patience))
            return {};
        return m_process.readLine().trimmed();
    }

    QProcess m_process;
    WId m_window = 0;
};

//! Answers as told, and counts how often it put a widget in front.
class ScriptedForeground : public ForegroundWindow {
public:
    explicit ScriptedForeground(std::optional<qint64> owner)
        : m_owner(owner)
    {
        setInstance(this);
    }
    ~ScriptedForeground() override { setInstance(nullptr); }

    std::optional<qint64> ownerProcess() override { return m_owner; }
    void putInFront(QWidget* widget) override { raised.append(widget); }

    QList<QWidget*> raised;

private:
    std::optional<qint64> m_owner;
};

} // namespace

class TestForegroundWindow_windows : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void noForegroundWindow();
    void ownWindowInFront();
    void stepsInFrontOfItsClientsWindow();
    void leavesTheWindowOfAnotherProcessAlone();
    void windowDestroyedMeanwhile();
    void ownNativeWindowDestroyedMeanwhile();
    void processIdsAreUnsigned_data();
    void processIdsAreUnsigned();

private:
    static std::unique_ptr<QWidget> shownForm()
    {
        auto form = std::make_unique<QWidget>();
        form->setAttribute(Qt::WA_ShowWithoutActivating);
        form->resize(200, 100);
        form->show();
        return form;
    }
};

void TestForegroundWindow_windows::noForegroundWindow()
{
    if (!qEnvironmentVariableIsSet("ZEFUI_TEST_UNDER_WINE"))
        QSKIP("The desktop of Windows takes the foreground whenever nobody else does");
    {
        ForeignProcess process;
        QTRY_VERIFY_WITH_TIMEOUT(process.isForeground(), patience);
        process.end();
    }
    QTRY_COMPARE_WITH_TIMEOUT(foregroundWindow(), WId(0), patience);
    QWidget form;

    QCOMPARE(ForegroundWindow::instance().ownerProcess(), std::nullopt);
    QVERIFY(!ForegroundWindow::stepInFrontOf(QCoreApplication::applicationPid(), &form));

    QCOMPARE(foregroundWindow(), WId(0));
    QVERIFY(!form.testAttribute(Qt::WA_WState_Created));
}

void TestForegroundWindow_windows::ownWindowInFront()
{
    const auto form = shownForm();
    form->activateWindow();
    QTRY_COMPARE(foregroundWindow(), form->winId());
    QCOMPARE(ForegroundWindow::instance().ownerProcess(),
             std::optional<qint64>(QCoreApplication::applicationPid()));
    QCOMPARE(processOfWindow(form->winId()), QCoreApplication::applicationPid());
}

void TestForegroundWindow_windows::stepsInFrontOfItsClientsWindow()
{
    const auto form = shownForm();
    ForeignProcess client;
    QTRY_VERIFY_WITH_TIMEOUT(client.isForeground(), patience);
    QCOMPARE(ForegroundWindow::instance().ownerProcess(), std::optional<qint64>(client.id()));

    QVERIFY(ForegroundWindow::stepInFrontOf(client.id(), form.get()));

    QTRY_COMPARE_WITH_TIMEOUT(foregroundWindow(), form->winId(), patience);
    QTRY_VERIFY_WITH_TIMEOUT(isAbove(form->winId(), client.window()), patience);
    QVERIFY(!isAbove(client.window(), form->winId()));
    QTRY_VERIFY(form->isActiveWindow());
}

void TestForegroundWindow_windows::leavesTheWindowOfAnotherProcessAlone()
{
    const auto form = shownForm();
    ForeignProcess client;
    QTRY_VERIFY_WITH_TIMEOUT(client.isForeground(), patience);
    ForeignProcess other;
    QTRY_VERIFY_WITH_TIMEOUT(other.isForegroundOver({&client}), patience);
    QVERIFY(client.id() != other.id());

    QVERIFY(ForegroundWindow::stepInFrontOf(client.id(), form.get()));
    QVERIFY(ForegroundWindow::stepInFrontOf(0, form.get()));

    QVERIFY(other.isForegroundOver({&client}));
    QVERIFY(isAbove(other.window(), form->winId()));
}

void TestForegroundWindow_windows::windowDestroyedMeanwhile()
{
    const auto form = shownForm();
    ForeignProcess client;
    QTRY_VERIFY_WITH_TIMEOUT(client.isForeground(), patience);
    QCOMPARE(processOfWindow(client.window()), client.id());

    QCOMPARE(client.ask("destroy"), "destroyed");

    QCOMPARE(processOfWindow(client.window()), ForegroundWindow::UnknownProcess);
    // What was asked of the window before belongs to nobody now, not even to a client without an id.
    ScriptedForeground foreground(processOfWindow(client.window()));
    QVERIFY(ForegroundWindow::stepInFrontOf(client.id(), form.get()));
    QVERIFY(ForegroundWindow::stepInFrontOf(0, form.get()));
    QVERIFY(ForegroundWindow::stepInFrontOf(-1, form.get()));
    QCOMPARE(foreground.raised, {});
}

void TestForegroundWindow_windows::ownNativeWindowDestroyedMeanwhile()
{
    const auto form = shownForm();
    ForeignProcess client;
    QTRY_VERIFY_WITH_TIMEOUT(client.isForeground(), patience);
    TestLog::allow(QRegularExpression(QStringLiteral("critical: flush: GetDC failed .*")));
    const WId before = form->winId();
    DestroyWindow(reinterpret_cast<HWND>(before));
    QVERIFY(!IsWindow(reinterpret_cast<HWND>(before)));
    QVERIFY(TestLog::take(QStringLiteral("warning: External WM_DESTROY received")).size() == 1);

    QVERIFY(ForegroundWindow::stepInFrontOf(client.id(), form.get()));

    QVERIFY(client.isForeground());
    QVERIFY(!IsWindow(reinterpret_cast<HWND>(form->internalWinId())));
}

void TestForegroundWindow_windows::processIdsAreUnsigned_data()
{
    QTest::addColumn<qint64>("owner");
    QTest::addColumn<qint64>("client");
    QTest::addColumn<bool>("raised");

    // A client's id passes through a long, which has 32 bits and a sign here.
    const auto stored = [](quint32 id) { return qint64(static_cast<long>(id)); };
    QTest::newRow("small") << qint64(42) << stored(42) << true;
    QTest::newRow("last with a clear sign") << qint64(0x7fffffff) << stored(0x7fffffff) << true;
    QTest::newRow("2^31") << qint64(0x80000000) << stored(0x80000000) << true;
    QTest::newRow("above 2^31") << qint64(0x80000004) << stored(0x80000004) << true;
    QTest::newRow("highest") << qint64(0xfffffffc) << stored(0xfffffffc) << true;
    QTest::newRow("unsigned as it came") << qint64(0xfffffffc) << qint64(0xfffffffc) << true;
    QTest::newRow("differs in the sign only") << qint64(0x80000004) << stored(4) << false;
    QTest::newRow("unknown owner") << ForegroundWindow::UnknownProcess << stored(0xffffffff) << false;
}

void TestForegroundWindow_windows::processIdsAreUnsigned()
{
    QFETCH(qint64, owner);
    QFETCH(qint64, client);
    QFETCH(bool, raised);
    ScriptedForeground foreground(owner);
    QWidget form;

    QVERIFY(ForegroundWindow::stepInFrontOf(client, &form));

    QCOMPARE(foreground.raised, raised ? QList<QWidget*>{&form} : QList<QWidget*>{});
}

ZEF_TEST_MAIN(TestForegroundWindow_windows)

#include "test_foregroundwindow_windows.moc"
