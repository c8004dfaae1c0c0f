#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

//! Something that would fail silently at run time.
struct Finding {
    QLatin1String rule;
    QString file;
    qint64 line = 1;
    //! What happens, and what to do about it.
    QString message;
};

using Findings = QList<Finding>;
