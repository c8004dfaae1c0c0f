#include <ZEFValue.h>

ZEFValue::ZEFValue() = default;

ZEFValue::ZEFValue(const QString& text)
    : m_text(text)
{
}

long ZEFValue::asLong() const
{
    // long has 32 bits on Windows: the same text means the same number everywhere
    return m_text.trimmed().toInt();
}

QString ZEFValue::asString() const
{
    return m_text;
}

ZEFValue::operator QString() const
{
    return m_text;
}
