#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

#include <optional>

//! The texts that a .ts file translates.
struct Translation {
    QString path;
    //! From the name zefmain_<locale>.ts.
    QString locale;
    QSet<QString> translated;

    //! As QTranslator looks: with the disambiguation, else without one.
    bool covers(const QString& context, const QString& source, const QString& comment) const;
};

//! Without a result, \a error says in one line what is wrong.
std::optional<Translation> readTranslation(const QString& path, QString* error);
