// PixelFormat.h - which visuals and depths hold pixels as frames and captures do.
#pragma once

#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "x11/Connection.h"

// Whether images of that depth are 32-bit words in this machine's byte order; else a text.
bool CheckImageFormat(const Connection& connection, std::uint8_t depth, std::string& error);

// Whether the screen's visual has its colours at 0x00RRGGBB.
bool HasPlainColors(const xcb_screen_t& screen, xcb_visualid_t visual);

// The visual of 32 bits whose colours are at 0x00RRGGBB, which leaves the highest eight to alpha.
std::optional<xcb_visualid_t> FindAlphaVisual(const xcb_screen_t& screen);
