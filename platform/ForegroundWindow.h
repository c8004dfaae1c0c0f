#pragma once

#include <QtCore/QtGlobal>

#include <optional>

class QWidget;

/*!
 * What the window system knows about the foreground window, the one the user works in.
 *
 * One source file per platform answers; the build picks it. No call blocks, and none fails when there
 * is no window manager.
 */
class ForegroundWindow {
public:
    //! Answered for a foreground window whose owner cannot be told; no process has this id.
    static constexpr qint64 UnknownProcess = -1;

    ForegroundWindow() = default;
    virtual ~ForegroundWindow() = default;

    //! The process that owns the foreground window; nothing when there is no foreground window.
    virtual std::optional<qint64> ownerProcess() = 0;
    //! Makes the window of \a widget the foreground window and puts it above the others.
    virtual void putInFront(QWidget* widget) = 0;

    /*!
     * Puts \a widget in front if the foreground window belongs to the process \a client, and only then:
     * never in front of another application that the user has switched to. Process ids are unsigned
     * 32 bit numbers here, whatever the sign that \a client was stored with. False when there is no
     * foreground window.
     */
    static bool stepInFrontOf(qint64 client, QWidget* widget);
    /*!
     * The same for the ticks of all forms, ten times a second each: they share one question to the window
     * system, whose answer may be 50 ms old.
     */
    static bool stayInFrontOf(qint64 client, QWidget* widget);

    //! The platform's answers, or those of the backend that a test has put in their place.
    static ForegroundWindow& instance();
    //! \a backend is not owned and must stay alive until it is replaced; null restores the platform's own.
    static void setInstance(ForegroundWindow* backend);

private:
    Q_DISABLE_COPY_MOVE(ForegroundWindow)
    static bool stepInFrontOf(qint64 client, QWidget* widget, qint64 maxAge);
};

//! The one of this platform; each platform's source file defines it.
ForegroundWindow& platformForegroundWindow();
