#include "XServer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

XServer::XServer()
    : m_connection(xcb_connect(nullptr, nullptr))
{
}

XServer::~XServer()
{
    xcb_disconnect(m_connection);
}

xcb_window_t XServer::root() const
{
    return xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

xcb_atom_t XServer::atom(const char* name) const
{
    auto* reply = xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, false, static_cast<quint16>(std::strlen(name)), name),
        nullptr);
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return atom;
}

QList<quint32> XServer::property(xcb_window_t window, const char* name) const
{
    auto* reply = xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, false, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
        nullptr);
    QList<quint32> items;
    if (reply && reply->format == 32) {
        const auto* first = static_cast<const quint32*>(xcb_get_property_value(reply));
        items = QList<quint32>(first, first + reply->value_len);
    }
    std::free(reply);
    return items;
}

void XServer::setProperty(xcb_window_t window, const char* name, xcb_atom_t type,
                          const QList<quint32>& items) const
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(name), type, 32,
                        static_cast<quint32>(items.size()), items.constData());
    sync();
}

void XServer::setBytes(xcb_window_t window, const char* name, xcb_atom_t type, const QByteArray& bytes) const
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(name), type, 8,
                        static_cast<quint32>(bytes.size()), bytes.constData());
    sync();
}

void XServer::removeProperty(xcb_window_t window, const char* name) const
{
    xcb_delete_property(m_connection, window, atom(name));
    sync();
}

xcb_window_t XServer::createWindow() const
{
    const xcb_window_t window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    sync();
    return window;
}

void XServer::destroyWindow(xcb_window_t window) const
{
    xcb_destroy_window(m_connection, window);
    sync();
}

void XServer::tellManager(xcb_window_t window, const char* message, const QList<quint32>& data) const
{
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::copy(data.cbegin(), data.cend(), event.data.data32);
    xcb_send_event(m_connection, false, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    sync();
}

void XServer::activate(xcb_window_t window) const
{
    tellManager(window, "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0});
}

xcb_window_t XServer::activeWindow() const
{
    return property(root(), "_NET_ACTIVE_WINDOW").value(0, XCB_WINDOW_NONE);
}

QList<quint32> XServer::stacking() const
{
    return property(root(), "_NET_CLIENT_LIST_STACKING");
}

void XServer::sync() const
{
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}
