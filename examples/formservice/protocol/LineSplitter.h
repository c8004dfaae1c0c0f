#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <optional>

/*!
 * Cuts a stream of bytes into lines. A line that is too long comes out as nothing, once, as soon as
 * it has ended; its bytes are not kept.
 */
class LineSplitter {
public:
    //! The longest line in bytes, its line feed not counted: 1 MiB.
    static constexpr qsizetype MaximumLineLength = 1024 * 1024;

    //! The lines that \a bytes complete, without their line feeds (a carriage return before one goes too).
    QList<std::optional<QByteArray>> feed(const QByteArray& bytes);

private:
    QByteArray m_pending;
    bool m_tooLong = false;
};
