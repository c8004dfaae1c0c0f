#include <ZEFDictionary.h>

ZEFDictionaryBase::~ZEFDictionaryBase() = default;

ZEFDictionary::ZEFDictionary() = default;

ZEFDictionary::ZEFDictionary(std::initializer_list<std::pair<QString, QString>> entries)
{
    for (const auto& [key, value] : entries)
        setString(key, value);
}

void ZEFDictionary::setString(const QString& key, const QString& value)
{
    if (!m_values.contains(key))
        m_keys.append(key);
    m_values.insert(key, value);
}

void ZEFDictionary::remove(const QString& key)
{
    if (m_values.remove(key))
        m_keys.removeOne(key);
}

QStringList ZEFDictionary::keys() const
{
    return m_keys;
}

bool ZEFDictionary::contains(const QString& key) const
{
    return m_values.contains(key);
}

QString ZEFDictionary::getString(const QString& key) const
{
    return m_values.value(key);
}
