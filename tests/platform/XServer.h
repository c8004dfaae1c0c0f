#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <xcb/xcb.h>

/*!
 * The X server as a program beside the library's sees it, through a connection of its own.
 */
class XServer {
public:
    XServer();
    ~XServer();

    xcb_connection_t* connection() const { return m_connection; }
    xcb_window_t root() const;
    xcb_atom_t atom(const char* name) const;

    //! The items of a property of 32-bit items; empty when there is none.
    QList<quint32> property(xcb_window_t window, const char* name) const;
    void setProperty(xcb_window_t window, const char* name, xcb_atom_t type,
                     const QList<quint32>& items) const;
    void setBytes(xcb_window_t window, const char* name, xcb_atom_t type, const QByteArray& bytes) const;
    void removeProperty(xcb_window_t window, const char* name) const;

    //! A window that is not shown; it lives as long as the connection.
    xcb_window_t createWindow() const;
    void destroyWindow(xcb_window_t window) const;

    //! Sends a message to the window manager.
    void tellManager(xcb_window_t window, const char* message, const QList<quint32>& data) const;
    //! Gives the window the focus and puts it above the others, as a click of the user does.
    void activate(xcb_window_t window) const;
    xcb_window_t activeWindow() const;
    //! The managed windows from the bottom to the top.
    QList<quint32> stacking() const;

private:
    Q_DISABLE_COPY_MOVE(XServer)
    void sync() const;

    xcb_connection_t* m_connection = nullptr;
};
