#include <ZEFListValidator.h>

#include <QtCore/QPointer>

ZEFListValidator::ZEFListValidator(QObject* parent, const QStringList& list)
    : QValidator(parent)
    , m_list(list)
{
}

QValidator::State ZEFListValidator::validate(QString& input, int&) const
{
    input.remove(u'-');
    if (m_minimumLength > 0 && input.size() < m_minimumLength && !input.isEmpty())
        return updateValidity(Intermediate, QStringLiteral("%{list_incomplete_message}"));
    if (input.isEmpty())
        return updateValidity(Intermediate, QStringLiteral("%{list_empty_message}"));
    if (m_list.contains(input))
        return updateValidity(Acceptable, QStringLiteral("%{list_valid_message}"));
    return updateValidity(Invalid, QStringLiteral("%{list_invalid_message}"));
}

long ZEFListValidator::minimumLength() const
{
    return m_minimumLength;
}

void ZEFListValidator::setMinimumLength(long length)
{
    m_minimumLength = length;
}

QString ZEFListValidator::lastMessage() const
{
    return m_lastMessage;
}

QValidator::State ZEFListValidator::updateValidity(QValidator::State state, const QString& message) const
{
    // Qt validates through const, and the outcome is remembered all the same.
    return const_cast<ZEFListValidator*>(this)->updateValidity(state, message);
}

QValidator::State ZEFListValidator::updateValidity(QValidator::State state, const QString& message)
{
    const QPointer<ZEFListValidator> self(this);
    if (state != m_validity) {
        m_validity = state;
        Q_EMIT validityChanged(state);
        if (!self)
            return state;
        // A receiver has validated another text, whose message stays.
        if (m_validity != state)
            return m_validity;
    }
    if (message != m_lastMessage) {
        m_lastMessage = message;
        Q_EMIT validityMessageChanged(message);
        if (!self)
            return state;
    }
    return m_validity;
}
