#include "ZEFTest.h"

#include <platform/Utf8Console.h>

#include <qt_windows.h>

class TestUtf8Console : public ZEFTest {
    Q_OBJECT

    void prepare() override
    {
        // The output of a test program under ctest is a pipe: it has a console only when it makes one.
        m_allocated = AllocConsole();
        QVERIFY(GetConsoleOutputCP() != 0);
        QVERIFY(SetConsoleOutputCP(850));
    }
    void tidyUp() override
    {
        if (m_allocated)
            FreeConsole();
    }

private Q_SLOTS:
    void speaksUtf8WhileItLives();
    void nests();
    void doesNothingWithoutAConsole();

private:
    BOOL m_allocated = FALSE;
};

void TestUtf8Console::speaksUtf8WhileItLives()
{
    {
        const Utf8Console console;
        QCOMPARE(GetConsoleOutputCP(), static_cast<UINT>(CP_UTF8));
    }
    QCOMPARE(GetConsoleOutputCP(), 850U);
}

void TestUtf8Console::nests()
{
    {
        const Utf8Console outer;
        {
            const Utf8Console inner;
        }
        QCOMPARE(GetConsoleOutputCP(), static_cast<UINT>(CP_UTF8));
    }
    QCOMPARE(GetConsoleOutputCP(), 850U);
}

void TestUtf8Console::doesNothingWithoutAConsole()
{
    if (!m_allocated)
        QSKIP("the console belongs to the shell that started this program");
    FreeConsole();
    {
        const Utf8Console console;
    }
    QCOMPARE(GetConsoleOutputCP(), 0U);
    m_allocated = AllocConsole();
    QVERIFY(m_allocated);
}

ZEF_TEST_MAIN(TestUtf8Console)
#include "test_utf8console_windows.moc"
