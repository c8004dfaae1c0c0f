#pragma once

#include "Suppression.h"

#include <QtCore/QList>
#include <QtCore/QString>

//! A name, number or sign of C++ source; a literal is one token with its quotes.
struct CppToken {
    QString text;
    qint64 line = 1;

    bool isName() const;
    bool operator==(QLatin1String other) const { return text == other; }
};

//! The tokens of \a source without comments and preprocessor lines; \a suppressions may be null.
QList<CppToken> cppTokens(const QString& source, Suppressions* suppressions);
