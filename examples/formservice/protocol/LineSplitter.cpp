#include "LineSplitter.h"

QList<std::optional<QByteArray>> LineSplitter::feed(const QByteArray& bytes)
{
    QList<std::optional<QByteArray>> lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        const qsizetype lineFeed = bytes.indexOf('\n', start);
        const qsizetype end = lineFeed < 0 ? bytes.size() : lineFeed;
        if (!m_tooLong)
            m_pending.append(bytes.constData() + start, end - start);
        if (m_pending.size() > MaximumLineLength) {
            m_tooLong = true;
            m_pending.clear();
        }
        if (lineFeed < 0)
            break;
        if (m_pending.endsWith('\r'))
            m_pending.chop(1);
        if (m_tooLong)
            lines.append(std::nullopt);
        else
            lines.append(m_pending);
        m_pending.clear();
        m_tooLong = false;
        start = lineFeed + 1;
    }
    return lines;
}
