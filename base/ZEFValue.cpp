#include <ZEFValue.h>

#include <algorithm>

ZEFValue::ZEFValue() = default;

ZEFValue::ZEFValue(const QString& text)
    : m_text(text)
{
}

long ZEFValue::asLong() const
{
    // Plain digits only, whatever digits and signs Qt knows. And long has 32 bits on Windows: the same
    // text means the same number everywhere.
    const QString number = m_text.trimmed();
    const bool isSigned = number.startsWith(u'-') || number.startsWith(u'+');
    const QStringView digits = QStringView(number).mid(isSigned ? 1 : 0);
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return std::all_of(digits.cbegin(), digits.cend(), isDigit) ? number.toInt() : 0;
}

QString ZEFValue::asString() const
{
    return m_text;
}

ZEFValue::operator QString() const
{
    return m_text;
}
