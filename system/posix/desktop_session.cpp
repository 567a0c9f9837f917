#include "system/desktop_session.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace corvanel {
namespace {

bool IsSet(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

xcb_atom_t Atom(xcb_connection_t* server, const char* name) {
  const auto asked = xcb_intern_atom(server, 0, static_cast<uint16_t>(std::strlen(name)), name);
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
      xcb_intern_atom_reply(server, asked, nullptr), &std::free);
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace

void ChooseWindowSystem() {
  // Wayland lets no program place its windows. Deliberate: sway places none of X either, but shows
  // one of Wayland on the screen that it asks for.
  if (IsSet("DISPLAY") && IsSet("WAYLAND_DISPLAY") && !IsSet("SWAYSOCK")) {
    setenv("QT_QPA_PLATFORM", "xcb;wayland", 0);
  }
}

std::string StartToken() {
  for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    const char* token = std::getenv(name);
    if (token != nullptr) return token;
  }
  return {};
}

void UseStartToken(const std::string& token, uint64_t window) {
  if (token.empty()) return;
  // Qt looks here when it activates a window of Wayland.
  setenv("XDG_ACTIVATION_TOKEN", token.c_str(), 1);
  if (window == 0) return;
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> server(
      xcb_connect(nullptr, nullptr), &xcb_disconnect);
  if (xcb_connection_has_error(server.get()) != 0) return;
  xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window),
                      Atom(server.get(), "_NET_STARTUP_ID"), Atom(server.get(), "UTF8_STRING"), 8,
                      static_cast<uint32_t>(token.size()), token.data());
  xcb_flush(server.get());
}

}  // namespace corvanel
