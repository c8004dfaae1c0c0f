#pragma once

#include <QtCore/QtGlobal>

/*!
 * While it lives, the console that this process writes to takes its output as UTF-8. Output that goes to
 * a file or a pipe is not touched.
 */
class Utf8Console {
public:
    Utf8Console();
    ~Utf8Console();

private:
    Q_DISABLE_COPY_MOVE(Utf8Console)

    //! What the console had before; 0 when there is no console or nothing to restore.
    [[maybe_unused]] unsigned m_previous = 0;
};
