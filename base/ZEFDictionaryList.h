#pragma once

#include <ZEFBASEExport.h>
#include <ZEFDictionary.h>
#include <ZEFValue.h>

#include <QtCore/QList>

class QTranslator;

/*!
 * Dictionaries searched front to back. The list does not own them: each must live as long as the
 * list is used. Null dictionaries are ignored.
 */
class ZEFBASE_EXPORT ZEFDictionaryList {
public:
    void append(ZEFDictionaryBase* dictionary);
    void prepend(ZEFDictionaryBase* dictionary);
    void clear();

    /*!
     * The value under \a key in the first dictionary that holds it, an empty value when none does.
     * \a where, unless it is null, is set to that dictionary or to null.
     */
    ZEFValue search(const QString& key, ZEFDictionaryBase** where) const;

    /*!
     * \a text with every %{key} that a dictionary holds replaced by its value, the value passed
     * through \a translator unless that is null. A %{key} that no dictionary holds stays as it
     * stands, as does a "%{" without its "}". Replaced text is not searched again, so a value can
     * never smuggle in a placeholder.
     *
     * A key reaches up to the next "}". In "%{a%{b}" the outer key "a%{b" wins if it is held, else the
     * inner "b". From the placeholder on that would make the result longer than 64 Mi
     * characters, they stay as they stand.
     */
    QString interpolateString(const QString& text, QTranslator* translator) const;

private:
    QList<ZEFDictionaryBase*> m_dictionaries;
};
