#pragma once

#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include "ZEFTest.h"

#include <element/ZEFUIElementPrivate.h>

#include <memory>

using namespace Qt::StringLiterals;

//! A request that counts how often it was deleted.
class CountingContext : public ZEFPipeFacilityInvocationContext {
public:
    explicit CountingContext(int* deletions)
        : m_deletions(deletions)
    {
    }
    ~CountingContext() override { ++*m_deletions; }

private:
    int* m_deletions;
};

/*!
 * The base of tests that make elements and hosts. Qt's two warnings for the connections that it refuses
 * whenever a form is shown are announced here; test_zefuielement_loading asserts them.
 */
class ElementTest : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        TestLog::allow(
            QRegularExpression(u"warning: QObject::connect: No such signal Q?\\w+::destoyed\\(\\)"_s));
        TestLog::allow(QRegularExpression(
            u"warning: QObject::(dis)?connect: No such slot Q?\\w+::(rootDestroyed|rootClosed|clicked)\\((bool)?\\)"_s));
        TestLog::allow(
            QRegularExpression(u"warning: QObject::(dis)?connect:  \\((sender|receiver) name: +'.*'\\)"_s));
        TestLog::allow(QRegularExpression(u"debug: formpath in ZEFUIDialog is .*"_s));
        TestLog::allow(QRegularExpression(u"debug: ZEFUIDialog::create form: .*"_s));
    }
};

//! Lines that are not the refused connections, in order.
inline QStringList withoutRefusedConnections(const QStringList& lines)
{
    QStringList rest;
    for (const QString& line : lines) {
        if (!line.startsWith(u"warning: QObject::"))
            rest.append(line);
    }
    return rest;
}
