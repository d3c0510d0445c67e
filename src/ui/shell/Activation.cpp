#include "ui/Activation.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWidget>
#include <algorithm>
#include <cstring>
#include <memory>

namespace pendra {

namespace {

constexpr const char* kTokenOfWayland = "XDG_ACTIVATION_TOKEN";
constexpr const char* kTokenOfX = "DESKTOP_STARTUP_ID";

/// What is sent to the window manager, past a toolkit that knows no tokens on X.
class ToWindowManager {
 public:
  explicit ToWindowManager(xcb_connection_t* connection)
      : connection_(connection), root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {}

  /// `time` is that of the press of a key or button that all began with.
  void activate(xcb_window_t window, quint32 time) {
    auto message = about(window, "_NET_ACTIVE_WINDOW", kWords);
    message.data.data32[0] = 1;  // an application asks
    message.data.data32[1] = time;
    send(message, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
  }

  /// Text goes in pieces of as many bytes as a message has; the one with its end is the last.
  void broadcast(const QByteArray& text) {
    const xcb_window_t sender = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, sender, root_, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const QByteArray ended = text + '\0';
    const char* type = "_NET_STARTUP_INFO_BEGIN";
    for (qsizetype at = 0; at < ended.size(); at += kPiece, type = "_NET_STARTUP_INFO") {
      auto message = about(sender, type, kBytes);
      const auto length = std::min(kPiece, ended.size() - at);
      std::memcpy(message.data.data8, ended.constData() + at, static_cast<std::size_t>(length));
      send(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    xcb_destroy_window(connection_, sender);
    xcb_flush(connection_);
  }

 private:
  static constexpr std::uint8_t kWords = 32;
  static constexpr std::uint8_t kBytes = 8;
  static constexpr qsizetype kPiece = 20;

  [[nodiscard]] xcb_atom_t atom(const char* name) const {
    const auto asked = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(qstrlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection_, asked, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }

  [[nodiscard]] xcb_client_message_event_t about(xcb_window_t window, const char* type,
                                                 std::uint8_t format) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = format;
    message.window = window;
    message.type = atom(type);
    return message;
  }

  void send(const xcb_client_message_event_t& message, std::uint32_t mask) {
    xcb_send_event(connection_, 0, root_, mask, reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
  }

  xcb_connection_t* connection_;
  xcb_window_t root_;
};

xcb_connection_t* connectionToX() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

/// Tokens of X end with the time of the press that began it.
std::optional<quint32> timeIn(const QString& activation) {
  const QString mark = QStringLiteral("_TIME");
  const qsizetype at = activation.lastIndexOf(mark);
  bool isNumber = false;
  const quint32 time = at < 0 ? 0 : activation.mid(at + mark.size()).toUInt(&isNumber);
  return isNumber ? std::optional(time) : std::nullopt;
}

}  // namespace

QString takeActivation() {
  const QString token = qEnvironmentVariable(kTokenOfWayland);
  return token.isEmpty() ? qEnvironmentVariable(kTokenOfX) : token;
}

void activate(QWidget& window, const QString& activation) {
  // The toolkit takes it from there where windows are Wayland's.
  if (!activation.isEmpty()) qputenv(kTokenOfWayland, activation.toUtf8());
  window.activateWindow();
  auto* const x = connectionToX();
  if (const auto time = timeIn(activation); x && time) {
    ToWindowManager(x).activate(static_cast<xcb_window_t>(window.winId()), *time);
  }
}

void tellArrived(const QString& activation) {
  qunsetenv(kTokenOfWayland);
  auto* const x = connectionToX();
  if (!x || activation.isEmpty()) return;
  QString quoted = activation;
  quoted.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
  ToWindowManager(x).broadcast("remove: ID=\"" + quoted.toUtf8() + '"');
}

}  // namespace pendra
