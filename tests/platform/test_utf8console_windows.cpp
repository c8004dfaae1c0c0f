#include "ZEFTest.h"

#include <platform/Utf8Console.h>

#include <qt_windows.h>

class TestUtf8Console : public ZEFTest {
    Q_OBJECT

    void prepare() override
    {
        // A console of its own: that of a shell is not this test's to change, and a pipe is none.
        FreeConsole();
        QVERIFY(AllocConsole());
        QVERIFY(SetConsoleOutputCP(850));
    }
    void tidyUp() override { FreeConsole(); }

private Q_SLOTS:
    void speaksUtf8WhileItLives();
    void nests();
    void doesNothingWithoutAConsole();
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
    FreeConsole();
    {
        const Utf8Console console;
    }
    QCOMPARE(GetConsoleOutputCP(), 0U);
}

ZEF_TEST_MAIN(TestUtf8Console)
#include "test_utf8console_windows.moc"
