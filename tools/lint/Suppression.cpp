#include "Suppression.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

bool isSuppressed(const Suppressions& suppressions, QLatin1String rule, qint64 line)
{
    return std::any_of(suppressions.cbegin(), suppressions.cend(), [&](const Suppression& suppression) {
        return suppression.firstLine <= line && line <= suppression.lastLine
            && (suppression.rules.isEmpty() || suppression.rules.contains(rule));
    });
}

std::optional<QStringList> suppressedRules(QStringView comment)
{
    const QStringView text = comment.trimmed();
    constexpr QStringView marker = u"zefui-lint: ignore";
    if (!text.startsWith(marker))
        return std::nullopt;
    static const QRegularExpression separators(u"[\\s,]+"_s);
    return text.sliced(marker.size()).toString().split(separators, Qt::SkipEmptyParts);
}
