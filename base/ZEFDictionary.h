#pragma once

#include <ZEFBASEExport.h>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <initializer_list>
#include <utility>

//! What a ZEFDictionaryList searches: texts under keys.
class ZEFBASE_EXPORT ZEFDictionaryBase {
public:
    virtual ~ZEFDictionaryBase();

    //! The keys in the order of first insertion.
    virtual QStringList keys() const = 0;
    virtual bool contains(const QString& key) const = 0;
    //! The text under \a key; empty for an unknown key.
    virtual QString getString(const QString& key) const = 0;
};

//! A dictionary in memory that keeps the order in which its keys came.
class ZEFBASE_EXPORT ZEFDictionary : public ZEFDictionaryBase {
public:
    ZEFDictionary();
    //! A key that stands twice keeps its first place and its last value.
    ZEFDictionary(std::initializer_list<std::pair<QString, QString>> entries);

    //! Adds \a key at the end; a known key keeps its place and gets the new value.
    void setString(const QString& key, const QString& value);
    //! An unknown key is ignored. A key set again later comes last.
    void remove(const QString& key);

    QStringList keys() const override;
    bool contains(const QString& key) const override;
    QString getString(const QString& key) const override;

private:
    QStringList m_keys;
    QHash<QString, QString> m_values;
};
