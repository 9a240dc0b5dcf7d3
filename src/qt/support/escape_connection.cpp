#include "tvx/qt/support/escape_connection.h"

#include <X11/Xlib.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <bitset>
#include <cstdlib>

// Xlib's names for things that Qt has names for as well.
#undef None
#undef Bool

namespace tvx::qt {
namespace {

constexpr xcb_keysym_t escape_symbol = 0xff1b;

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

/// The display that Qt is connected to; null where it is no X server.
const char* display_name() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 && x11->display() ? DisplayString(x11->display()) : nullptr;
}

/// The keys that are Escape in the layout.
std::bitset<256> escape_keys(xcb_connection_t* connection) {
  std::bitset<256> keys;
  const xcb_setup_t* setup = xcb_get_setup(connection);
  const auto count = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
  const Owned<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
      connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr));
  if (!mapping || mapping->keysyms_per_keycode == 0) return keys;
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  const int length = xcb_get_keyboard_mapping_keysyms_length(mapping.get());
  for (int i = 0; i < length; i += mapping->keysyms_per_keycode)
    if (symbols[i] == escape_symbol)
      keys.set(std::size_t(setup->min_keycode + i / mapping->keysyms_per_keycode));
  return keys;
}

}  // namespace

struct EscapeConnection::Private {
  explicit Private(xcb_connection_t* opened) : connection(opened), escape(escape_keys(opened)) {}
  ~Private() { xcb_disconnect(connection); }

  void select(const QList<quint32>& chosen, std::uint32_t events) {
    for (const quint32 window : chosen)
      xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection);
  }

  xcb_connection_t* connection;
  std::bitset<256> escape;
  QList<quint32> windows;
};

std::unique_ptr<EscapeConnection> EscapeConnection::open() {
  const char* display = display_name();
  if (!display) return nullptr;
  xcb_connection_t* connection = xcb_connect(display, nullptr);
  if (xcb_connection_has_error(connection)) {
    xcb_disconnect(connection);
    return nullptr;
  }
  return std::unique_ptr<EscapeConnection>(new EscapeConnection(std::make_unique<Private>(connection)));
}

EscapeConnection::EscapeConnection(std::unique_ptr<Private> own) : d_(std::move(own)) {}
EscapeConnection::~EscapeConnection() = default;

// A window that is gone meanwhile is an error of the server's, and no more than that.
void EscapeConnection::listen_to(const QList<quint32>& windows) {
  d_->select(d_->windows, XCB_EVENT_MASK_NO_EVENT);
  last_press();
  d_->windows = windows;
  d_->select(d_->windows, XCB_EVENT_MASK_KEY_PRESS);
}

std::optional<quint32> EscapeConnection::last_press() {
  std::optional<quint32> time;
  while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(d_->connection)}) {
    if ((event->response_type & 0x7f) != XCB_KEY_PRESS) continue;
    const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
    if (d_->escape.test(key->detail)) time = key->time;
  }
  return time;
}

}  // namespace tvx::qt
