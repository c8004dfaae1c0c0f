#pragma once

#include <ZEFBASEExport.h>

#include <QtCore/QString>

//! A value of a dictionary: a text that can be read as a number.
class ZEFBASE_EXPORT ZEFValue {
public:
    //! An empty value: asString() is empty, asLong() is 0.
    ZEFValue();
    ZEFValue(const QString& text);

    /*!
     * The text as a decimal number, blanks around it allowed. Anything else is 0, a number beyond 32
     * bits included.
     */
    long asLong() const;
    QString asString() const;
    //! The same text as asString().
    operator QString() const;

private:
    QString m_text;
};
