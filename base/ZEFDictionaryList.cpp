#include <ZEFDictionaryList.h>

#include <ZEFTranslatorCache.h>

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
    QString result;
    qsizetype copied = 0;
    qsizetype from = text.indexOf(u"%{");
    while (from >= 0) {
        const qsizetype end = text.indexOf(u'}', from + 2);
        if (end < 0)
            break;
        ZEFDictionaryBase* holder = nullptr;
        const QString value = search(text.mid(from + 2, end - from - 2), &holder);
        if (!holder) {
            // "%{a%{b}": the outer one is no placeholder, the inner one may be
            from = text.indexOf(u"%{", from + 2);
            continue;
        }
        bool translated = false;
        result += QStringView(text).sliced(copied, from - copied);
        result += ZEFTranslatorCache::localizeString(value, translator, &translated);
        copied = end + 1;
        from = text.indexOf(u"%{", copied);
    }
    if (copied == 0)
        return text;
    return result + QStringView(text).sliced(copied);
}
