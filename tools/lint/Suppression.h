#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

//! Findings of these rules between these lines are intended; no rules means all.
struct Suppression {
    qint64 firstLine = 0;
    qint64 lastLine = 0;
    QStringList rules;
};

using Suppressions = QList<Suppression>;

bool isSuppressed(const Suppressions& suppressions, QLatin1String rule, qint64 line);

//! The rules after "zefui-lint: ignore" in a comment; nothing when the comment says something else.
std::optional<QStringList> suppressedRules(QStringView comment);
