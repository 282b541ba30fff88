#include "platform/Tasks.h"

#include <QGuiApplication>
#include <QProcess>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <xcb/xcb.h>

namespace wendmark {

namespace {

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

/// The window manager's list of windows, where there is one: on X11.
class WindowList final {
public:
    explicit WindowList(xcb_connection_t* connection)
        : m_connection(connection), m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {}

    /// A window of the process; nothing if it has none.
    std::optional<xcb_window_t> windowOf(TaskId id) const {
        const auto list = property(m_root, "_NET_CLIENT_LIST");
        for (const std::uint32_t window : values(list.get())) {
            const auto process = property(window, "_NET_WM_PID");
            const auto pids = values(process.get());
            if (!pids.empty() && pids.front() == id)
                return window;
        }
        return {};
    }

    void activate(xcb_window_t window) const {
        constexpr std::uint32_t fromPager = 2; // As after the author's own choice: else it might only blink.
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom("_NET_ACTIVE_WINDOW");
        message.data.data32[0] = fromPager;
        char bytes[sizeof message];
        std::memcpy(bytes, &message, sizeof message);
        xcb_send_event(m_connection, 0, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, bytes);
        xcb_flush(m_connection);
    }

private:
    xcb_atom_t atom(const char* name) const {
        const auto cookie =
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr),
                                                   &std::free);
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    Owned<xcb_get_property_reply_t> property(xcb_window_t window, const char* name) const {
        constexpr std::uint32_t mostValues = 4096;
        const auto cookie =
            xcb_get_property(m_connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, mostValues);
        return {xcb_get_property_reply(m_connection, cookie, nullptr), &std::free};
    }

    static std::span<const std::uint32_t> values(const xcb_get_property_reply_t* reply) {
        if (reply == nullptr || reply->format != 32)
            return {};
        return {static_cast<const std::uint32_t*>(xcb_get_property_value(reply)), reply->value_len};
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
};

} // namespace

TaskId startTask(const QString& program, const QStringList& arguments) {
    TaskId id = 0;
    return QProcess::startDetached(program, arguments, QString(), &id) ? id : 0;
}

bool activateTask(TaskId id) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr)
        return false;
    const WindowList windows(x11->connection());
    const auto window = windows.windowOf(id);
    if (window)
        windows.activate(*window);
    return window.has_value();
}

} // namespace wendmark
