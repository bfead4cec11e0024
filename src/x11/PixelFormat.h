// PixelFormat.h - which visuals and depths hold pixels as frames and captures do.
#pragma once

#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "x11/Connection.h"

// Returns whether images of that depth are 32-bit words in this machine's byte order; if not, sets
// the text.
bool CheckImageFormat(const Connection& connection, std::uint8_t depth, std::string& error);

// Returns whether the screen's visual has its colours at 0x00RRGGBB.
bool HasPlainColors(const xcb_screen_t& screen, xcb_visualid_t visual);

// Returns the visual of 32 bits with its colours at 0x00RRGGBB: the highest eight bits are alpha.
std::optional<xcb_visualid_t> FindAlphaVisual(const xcb_screen_t& screen);
