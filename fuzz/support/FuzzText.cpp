#include "FuzzText.h"

#include <algorithm>

namespace {

constexpr char16_t highHalf = 0xd83d;
constexpr char16_t lowHalf = 0xde00;

} // namespace

QString textOf(QByteArrayView bytes)
{
    QString text = QString::fromUtf8(bytes);
    text.replace(QChar(1), QChar(highHalf));
    text.replace(QChar(2), QChar(lowHalf));
    return text;
}

int FuzzStep::number(int least, int most) const
{
    qint64 value = 0;
    const bool negative = argument.startsWith("-");
    for (const char digit : argument.sliced(negative ? 1 : 0)) {
        if (digit < '0' || digit > '9' || value > most)
            break;
        value = value * 10 + (digit - '0');
    }
    return static_cast<int>(std::clamp<qint64>(negative ? -value : value, least, most));
}

QList<FuzzStep> stepsOf(QByteArrayView input)
{
    QList<FuzzStep> steps;
    while (!input.isEmpty()) {
        const auto end = std::find(input.begin(), input.end(), '\n');
        const QByteArrayView line = input.first(end - input.begin());
        if (!line.isEmpty())
            steps.append({line.front(), line.sliced(1)});
        input = input.sliced(std::min(line.size() + 1, input.size()));
    }
    return steps;
}
