#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class ZEFUIElement;

/*!
 * Holds the host while a slot runs that connectSlotsByName() connected. Qt goes on with most widgets after
 * they have emitted a signal (a check box after toggled(), a line edit after returnPressed()), so a slot that
 * closes the form must not have it deleted at once. After a click it may; but an event loop in the slot must
 * not delete what the slot goes on with.
 *
 * One belongs to each connection. It is a child of the sender, which may move to another host and may outlive
 * the element.
 */
class NamedSlotWatch : public QObject {
    Q_OBJECT

public:
    //! Connects by index, as QMetaObject::connect() does.
    static bool connect(QObject* sender, int signal, QObject* receiver, int slot, ZEFUIElement* element);

private Q_SLOTS:
    void begin();
    void end();

private:
    NamedSlotWatch(QObject* sender, bool isClick, ZEFUIElement* element);

    const bool m_isClick;
    const QPointer<ZEFUIElement> m_element;
    QList<QPointer<QObject>> m_calls;
};
