#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>

/*!
 * A connection by signature strings that is made again and again. It is the same connection as
 * QObject::connect() makes of the strings, and disconnects by them. That function would normalise and
 * look up both strings of each of a cell's connections anew, which costs more than the rest of a cell;
 * here they are looked up once. Strings that name nothing get Qt's warning and no connection.
 */
template <class Sender, class Receiver> class SignatureConnection {
public:
    //! The strings with Qt's code digits, spaced as one likes; they must live as long as the connection.
    SignatureConnection(const char* signal, const char* slot)
        : m_signalText(signal)
        , m_slotText(slot)
        , m_signal(Sender::staticMetaObject.indexOfSignal(normalized(signal).constData()))
        , m_slot(Receiver::staticMetaObject.indexOfSlot(normalized(slot).constData()))
    {
    }

    void make(const Sender* sender, const Receiver* receiver) const
    {
        if (m_signal < 0 || m_slot < 0)
            QObject::connect(sender, m_signalText, receiver, m_slotText);
        else
            QMetaObject::connect(sender, m_signal, receiver, m_slot);
    }

private:
    static QByteArray normalized(const char* signature)
    {
        return QMetaObject::normalizedSignature(signature + 1);
    }

    const char* m_signalText;
    const char* m_slotText;
    int m_signal;
    int m_slot;
};
