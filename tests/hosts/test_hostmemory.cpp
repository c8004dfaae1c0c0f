#include "ElementTest.h"

#include <QtCore/QFile>

namespace {

//! Resident memory of this process in bytes; 0 where the system does not say.
qint64 residentMemory()
{
    QFile statm(u"/proc/self/statm"_s);
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    return statm.readAll().split(' ').value(1).toLongLong() * 4096;
}

} // namespace

class TestHostMemory : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void manyFormsLeaveNothingBehind();
    void twoHundredOpenForms();
};

void TestHostMemory::manyFormsLeaveNothingBehind()
{
    int contexts = 0;
    int answers = 0;
    const auto openAndClose = [&](int count) {
        for (int i = 0; i < count; ++i) {
            auto* dialog =
                new ZEFUIDialog(u"names"_s, u"de"_s, nullptr, Qt::Dialog, new CountingContext(&contexts));
            connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
            dialog->show();
            dialog->element()->close();
            if (i % 100 == 99) {
                TestLog::takeAll();
                QCoreApplication::processEvents();
            }
        }
    };
    openAndClose(1000);
    const qint64 before = residentMemory();
    openAndClose(9000);
    const qint64 after = residentMemory();
    QCOMPARE(contexts, 10000);
    QCOMPARE(answers, 10000);
    if (before == 0)
        QSKIP("This system does not tell the resident memory");
    qInfo("resident after 1,000 forms: %lld KiB, after 10,000: %lld KiB", before / 1024, after / 1024);
    TestLog::take(u"info: "_s);
#if !defined(__SANITIZE_ADDRESS__)
    QVERIFY2(after - before < before / 100, qPrintable(u"%1 bytes more"_s.arg(after - before)));
#endif
}

void TestHostMemory::twoHundredOpenForms()
{
    int contexts = 0;
    QList<QPointer<ZEFUIWidget>> hosts;
    for (int i = 0; i < 200; ++i) {
        hosts.append(
            new ZEFUIWidget(u"names"_s, u"en"_s, nullptr, Qt::Window, new CountingContext(&contexts)));
        TestLog::takeAll();
    }
    for (const auto& host : std::as_const(hosts))
        QTRY_VERIFY(host->isVisible());
    for (const auto& host : std::as_const(hosts))
        host->close();
    QTRY_COMPARE(contexts, 200);
    for (const auto& host : std::as_const(hosts))
        QVERIFY(!host);
}

ZEF_TEST_MAIN(TestHostMemory)
#include "test_hostmemory.moc"
