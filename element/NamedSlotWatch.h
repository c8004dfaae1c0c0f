#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;
class ZEFUIElement;

/*!
 * Holds the host while a slot runs that one call of connectSlotsByName() connected. Qt goes on with most
 * widgets after they have emitted a signal (a check box after toggled(), a line edit after returnPressed()),
 * so a slot that closes the form must not have it deleted at once. After a click it may; but an event loop in
 * the slot must not delete what the slot goes on with.
 *
 * A child of the host, made after the form: it outlives the element and the widgets that it watches.
 */
class NamedSlotWatch : public QObject {
    Q_OBJECT

public:
    NamedSlotWatch(QWidget* host, ZEFUIElement* element);

    //! Connects by index, as QMetaObject::connect() does.
    bool connect(QObject* sender, int signal, QObject* receiver, int slot);

private Q_SLOTS:
    void begin();
    void end();

private:
    const QPointer<ZEFUIElement> m_element;
    QList<QPointer<QObject>> m_calls;
};
