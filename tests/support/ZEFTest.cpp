#include "ZEFTest.h"

void ZEFTest::init()
{
    TestLog::start();
    prepare();
}

void ZEFTest::cleanup()
{
    tidyUp();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QStringList unannounced = TestLog::finish();
    if (!unannounced.isEmpty())
        QFAIL(qPrintable(u"Lines that the test did not announce:\n" + unannounced.join(u'\n')));
}
