#pragma once

#include "TestLog.h"

#include <QtCore/QObject>
#include <QtTest/QtTest>

/*!
 * The base of every test program: a test function fails on any line of Qt's message output that it did
 * not announce or take (see TestLog). A derived class that needs an init() or cleanup() of its own
 * overrides prepare() or tidyUp() instead.
 */
class ZEFTest : public QObject {
    Q_OBJECT

protected:
    //! Runs before each test function, after the recording of lines began.
    virtual void prepare() { }
    //! Runs after each test function, while lines are still recorded.
    virtual void tidyUp() { }

private Q_SLOTS:
    void init();
    void cleanup();
};

//! The main() of a test program. Call it once, in the source that includes the test's moc file.
#define ZEF_TEST_MAIN(TestClass)                                                                             \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        QApplication application(argc, argv);                                                                \
        QApplication::setStyle(QStringLiteral("Fusion"));                                                    \
        application.setQuitOnLastWindowClosed(false);                                                        \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
