#include <ZEFDictionaryList.h>

#include <ZEFTranslatorCache.h>

#include <QtCore/QSet>

#include <optional>

namespace {

constexpr QStringView opening = u"%{";
// A short text and a long value, both of a client, must not use up the memory of a service.
constexpr qsizetype longestResult = 64 << 20;

//! The lengths of all keys that hold a "%{" themselves; normally none.
QSet<qsizetype> lengthsOfNestedKeys(const QList<ZEFDictionaryBase*>& dictionaries)
{
    QSet<qsizetype> lengths;
    for (const ZEFDictionaryBase* dictionary : dictionaries) {
        const QStringList keys = dictionary->keys();
        for (const QString& key : keys) {
            if (key.contains(opening))
                lengths.insert(key.size());
        }
    }
    return lengths;
}

} // namespace

void ZEFDictionaryList::append(ZEFDictionaryBase* dictionary)
{
    if (dictionary)
        m_dictionaries.append(dictionary);
}

void ZEFDictionaryList::prepend(ZEFDictionaryBase* dictionary)
{
    if (dictionary)
        m_dictionaries.prepend(dictionary);
}

void ZEFDictionaryList::clear()
{
    m_dictionaries.clear();
}

ZEFValue ZEFDictionaryList::search(const QString& key, ZEFDictionaryBase** where) const
{
    for (ZEFDictionaryBase* dictionary : m_dictionaries) {
        if (dictionary->contains(key)) {
            if (where)
                *where = dictionary;
            return ZEFValue(dictionary->getString(key));
        }
    }
    if (where)
        *where = nullptr;
    return ZEFValue();
}

QString ZEFDictionaryList::interpolateString(const QString& text, QTranslator* translator) const
{
    std::optional<QSet<qsizetype>> nestedKeyLengths;
    QString result;
    qsizetype copied = 0;
    qsizetype end = -1;
    qsizetype from = text.indexOf(opening);
    while (from >= 0) {
        const qsizetype keyStart = from + opening.size();
        if (end < keyStart)
            end = text.indexOf(u'}', keyStart);
        if (end < 0)
            break;
        const qsizetype next = text.indexOf(opening, keyStart);
        // "%{a%{b}": the outer one counts only when there is such a key, else the inner one may. A
        // hostile text nests them by the hundred thousand before one "}", so only keys of a fitting
        // length are looked up.
        if (next >= 0 && next < end) {
            if (!nestedKeyLengths)
                nestedKeyLengths = lengthsOfNestedKeys(m_dictionaries);
            if (!nestedKeyLengths->contains(end - keyStart)) {
                from = next;
                continue;
            }
        }
        ZEFDictionaryBase* holder = nullptr;
        const QString value = search(text.sliced(keyStart, end - keyStart), &holder);
        if (!holder) {
            from = next;
            continue;
        }
        const QString filled = ZEFTranslatorCache::localizeString(value, translator, nullptr);
        const qsizetype unchanged = from - copied;
        if (result.size() + unchanged + filled.size() > longestResult)
            break;
        result += QStringView(text).sliced(copied, unchanged);
        result += filled;
        copied = end + 1;
        from = text.indexOf(opening, copied);
    }
    if (copied == 0)
        return text;
    return result + QStringView(text).sliced(copied);
}
