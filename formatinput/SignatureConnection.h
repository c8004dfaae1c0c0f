#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>

/*!
 * A connection by signature strings that is made again and again: the strings are looked up once. It
 * is the same connection as QObject::connect() makes of them, and disconnects by the same strings.
 */
template <class Sender, class Receiver> class SignatureConnection {
public:
    //! The strings with Qt's code digits, and spaced as one likes.
    SignatureConnection(const char* signal, const char* slot)
        : m_signal(Sender::staticMetaObject.indexOfSignal(normalized(signal).constData()))
        , m_slot(Receiver::staticMetaObject.indexOfSlot(normalized(slot).constData()))
    {
        Q_ASSERT(m_signal >= 0 && m_slot >= 0);
    }

    void make(const Sender* sender, const Receiver* receiver) const
    {
        QMetaObject::connect(sender, m_signal, receiver, m_slot);
    }

private:
    static QByteArray normalized(const char* signature)
    {
        return QMetaObject::normalizedSignature(signature + 1);
    }

    int m_signal;
    int m_slot;
};
