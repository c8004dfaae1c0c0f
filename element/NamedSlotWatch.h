#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class ZEFUIElement;

/*!
 * Holds the host while a slot runs that connectSlotsByName() connected. Qt goes on with most widgets after
 * they have emitted a signal (a check box after toggled(), a line edit after returnPressed()), so a slot that
 * closes the form must not have it deleted at once.
 */
class NamedSlotWatch : public QObject {
    Q_OBJECT

public:
    explicit NamedSlotWatch(ZEFUIElement* element);

    //! Connects by index, as QMetaObject::connect() does.
    bool connect(QObject* sender, int signal, QObject* receiver, int slot);

private Q_SLOTS:
    void begin();
    void end();

private:
    ZEFUIElement* const m_element;
    QList<QPointer<QObject>> m_calls;
};
