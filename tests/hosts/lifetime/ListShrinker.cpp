#include "ListShrinker.h"

#include <utility>

ListShrinker::ListShrinker(Fails fails)
    : m_fails(std::move(fails))
{
}

QStringList ListShrinker::shrink(QStringList lines, QDeadlineTimer deadline) const
{
    qsizetype piece = (lines.size() + 1) / 2;
    bool shorter = false;
    qsizetype start = 0;
    while (!lines.isEmpty() && !deadline.hasExpired()) {
        if (start >= lines.size()) {
            // Every piece of this size has been tried.
            if (piece == 1 && !shorter)
                break;
            if (!shorter)
                piece = (piece + 1) / 2;
            shorter = false;
            start = 0;
            continue;
        }
        const QStringList rest = lines.first(start) + lines.mid(start + piece);
        if (m_fails(rest)) {
            lines = rest;
            shorter = true;
        } else {
            start += piece;
        }
    }
    return lines;
}
