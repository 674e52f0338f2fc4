// What this folder asks the X server and its window manager, over the toolkit's own connection. Main thread,
// with an application; only for the .cpp files that know X11.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

namespace pixelgrove {

struct FreedReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using ReplyOf = std::unique_ptr<Reply, FreedReply>;

// Null on other platforms and without a connection that works.
xcb_connection_t* XConnection();

// The root window of the first screen, where window managers leave word; XCB_WINDOW_NONE without a
// connection.
xcb_window_t RootWindow();

// XCB_ATOM_NONE when no program has ever used the name.
xcb_atom_t ExistingAtom(std::string_view name);

// A window's property as 32-bit words, at most 4096 of them; empty when it lacks it, or is gone.
std::vector<uint32_t> ReadWords(xcb_window_t window, xcb_atom_t property);

// Whether a window manager runs that says it knows all of these.
bool ManagerSupports(std::initializer_list<std::string_view> names);

// Asks the window manager for something about the window. Nothing when it doesn't know the message.
void AskManager(xcb_window_t window, std::string_view message, const std::array<uint32_t, 5>& words);

}  // namespace pixelgrove
