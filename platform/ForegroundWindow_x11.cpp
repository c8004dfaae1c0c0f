#include "ForegroundWindow.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QWidget>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace {

template <typename Reply> using ReplyPointer = std::unique_ptr<Reply, decltype(&std::free)>;

//! The connection of the application; null when it does not run on X11.
xcb_connection_t* applicationConnection()
{
    auto* application = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = application ? application->connection() : nullptr;
    return connection && !xcb_connection_has_error(connection) ? connection : nullptr;
}

xcb_window_t rootWindow(xcb_connection_t* connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

/*!
 * Asks through the properties in which window managers keep what they know. Only the X server answers,
 * never the window manager, so that one that hangs holds nobody up. Every error is taken out of the
 * connection here: windows of others may vanish between two requests.
 */
class X11ForegroundWindow : public ForegroundWindow {
public:
    std::optional<qint64> ownerProcess() override;
    void putInFront(QWidget* widget) override;

private:
    bool connect();
    xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const;
    std::optional<quint32> answer(xcb_get_property_cookie_t question, xcb_atom_t type) const;

    xcb_connection_t* m_connection = nullptr;
    QPointer<QCoreApplication> m_application; // whose connection the atoms belong to
    xcb_atom_t m_activeWindow = XCB_ATOM_NONE;
    xcb_atom_t m_supportingWmCheck = XCB_ATOM_NONE;
    xcb_atom_t m_wmPid = XCB_ATOM_NONE;
};

//! Returns false when there is no X server to ask.
bool X11ForegroundWindow::connect()
{
    m_connection = applicationConnection();
    if (!m_connection)
        return false;
    if (m_application == QCoreApplication::instance())
        return true;

    const auto request = [this](QByteArrayView name) {
        return xcb_intern_atom(m_connection, false, static_cast<quint16>(name.size()), name.data());
    };
    const auto atom = [this](xcb_intern_atom_cookie_t cookie) {
        const ReplyPointer<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection, cookie, nullptr), &std::free);
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    };
    const auto activeWindow = request("_NET_ACTIVE_WINDOW");
    const auto supportingWmCheck = request("_NET_SUPPORTING_WM_CHECK");
    const auto wmPid = request("_NET_WM_PID");
    m_activeWindow = atom(activeWindow);
    m_supportingWmCheck = atom(supportingWmCheck);
    m_wmPid = atom(wmPid);
    m_application = QCoreApplication::instance();
    return true;
}

xcb_get_property_cookie_t X11ForegroundWindow::ask(xcb_window_t window, xcb_atom_t property,
                                                   xcb_atom_t type) const
{
    return xcb_get_property(m_connection, false, window, property, type, 0, 1);
}

//! The property's first item; 0 when the window has no such property, nothing when there is no such window.
std::optional<quint32> X11ForegroundWindow::answer(xcb_get_property_cookie_t question, xcb_atom_t type) const
{
    const ReplyPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, question, nullptr), &std::free);
    if (!reply)
        return std::nullopt;
    if (reply->type != type || reply->format != 32 || reply->value_len == 0)
        return 0;
    return *static_cast<const quint32*>(xcb_get_property_value(reply.get()));
}

std::optional<qint64> X11ForegroundWindow::ownerProcess()
{
    if (!connect())
        return std::nullopt;

    const xcb_window_t root = rootWindow(m_connection);
    const auto managerQuestion = ask(root, m_supportingWmCheck, XCB_ATOM_WINDOW);
    const auto activeQuestion = ask(root, m_activeWindow, XCB_ATOM_WINDOW);
    const xcb_window_t manager = answer(managerQuestion, XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    const xcb_window_t active = answer(activeQuestion, XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    if (manager == XCB_WINDOW_NONE || active == XCB_WINDOW_NONE)
        return std::nullopt;

    // The root window keeps the properties of a window manager that is gone; its own window does not.
    const auto aliveQuestion = ask(manager, m_supportingWmCheck, XCB_ATOM_WINDOW);
    const auto processQuestion = ask(active, m_wmPid, XCB_ATOM_CARDINAL);
    const std::optional<quint32> alive = answer(aliveQuestion, XCB_ATOM_WINDOW);
    const std::optional<quint32> process = answer(processQuestion, XCB_ATOM_CARDINAL);
    if (alive != manager || !process)
        return std::nullopt;
    return *process != 0 ? qint64(*process) : UnknownProcess;
}

void X11ForegroundWindow::putInFront(QWidget* widget)
{
    if (!widget || !connect())
        return;
    const auto window = static_cast<xcb_window_t>(widget->window()->effectiveWinId());
    if (window == XCB_WINDOW_NONE)
        return;

    constexpr quint32 pager = 2; // window managers refuse other sources the focus that a user gave away
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_activeWindow;
    message.data.data32[0] = pager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    const xcb_void_cookie_t activation =
        xcb_send_event_checked(m_connection, false, rootWindow(m_connection),
                               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                               reinterpret_cast<const char*>(&message));
    constexpr quint32 above = XCB_STACK_MODE_ABOVE;
    const xcb_void_cookie_t raising =
        xcb_configure_window_checked(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_discard_reply(m_connection, activation.sequence);
    xcb_discard_reply(m_connection, raising.sequence);
    xcb_flush(m_connection);
}

} // namespace

ForegroundWindow& platformForegroundWindow()
{
    static X11ForegroundWindow window;
    return window;
}
