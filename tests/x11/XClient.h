// XClient.h - a plain X11 client: the host, or another program on the desktop.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Platform.h>
#include <xcb/xcb.h>

// A reply or event of the X server.
struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Owned = std::unique_ptr<T, FreeReply>;

// What the screen shows in an area: 0x00RRGGBB, row by row.
struct Screenshot {
  RECT area;
  std::vector<std::uint32_t> pixels;

  // The pixel at that place of the screen.
  std::uint32_t At(int x, int y) const;
};

// A connection of its own, without any of the code under test.
class XClient {
 public:
  explicit XClient(const std::string& display);
  ~XClient();
  XClient(const XClient&) = delete;
  XClient& operator=(const XClient&) = delete;

  // A window of 24 bits and one colour above the others, shown, that hears the pointer's buttons.
  xcb_window_t ShowWindow(const RECT& area, std::uint32_t color);
  // A window of one colour that asks the window manager for the whole screen.
  xcb_window_t ShowFullScreenWindow(std::uint32_t color);
  // A window of 32 bits, shown, above the others.
  xcb_window_t ShowAlphaWindow(const RECT& area);
  void MoveWindow(xcb_window_t window, const RECT& area);
  void RaiseWindow(xcb_window_t window);
  void LowerWindow(xcb_window_t window);
  void DestroyWindow(xcb_window_t window);
  void HearButtons(xcb_window_t window);
  // Waits for the next press of a button on one of this client's windows; none for none.
  xcb_window_t WaitForPress();
  // Whether the next press so far was on that window.
  bool HasPress(xcb_window_t window);

  // Empties an area of a window, as any client may and the server does with what was covered.
  void LoseContent(xcb_window_t window, const RECT& area);

  xcb_connection_t* Get() const { return connection; }
  xcb_window_t Root() const { return screen->root; }
  xcb_atom_t Atom(const std::string& name) const;
  xcb_window_t OwnerOf(const std::string& selection) const;
  bool HasRootProperty(const std::string& name) const;

  Screenshot Look(const RECT& area) const;
  // Waits until the screen shows that colour, at most 2 off in every channel, there.
  bool WaitForColor(int x, int y, std::uint32_t color) const;

 private:
  xcb_window_t CreateWindow(const RECT& area, std::uint32_t color, bool isManaged);
  xcb_window_t NextPress();
  void Stack(xcb_window_t window, std::uint32_t mode);
  void Settle() const;

  xcb_connection_t* connection;
  xcb_screen_t* screen;
};

// Whether no channel differs by more than 2: blending rounds in more than one way.
bool IsNear(std::uint32_t color, std::uint32_t wanted);
