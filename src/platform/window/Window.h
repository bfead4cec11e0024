// The window manager's share: contexts, rectangles and pushing a surface to a layered window.
#pragma once

#include <parchlet/LayeredWindow.h>
#include <parchlet/Platform.h>

#include "platform/gdi/Gdi.h"

using COLORREF = DWORD;

inline constexpr BYTE AC_SRC_OVER = 0;
inline constexpr BYTE AC_SRC_ALPHA = 1;
inline constexpr DWORD ULW_ALPHA = 2;

struct BLENDFUNCTION {
  BYTE BlendOp;
  BYTE BlendFlags;
  BYTE SourceConstantAlpha;
  BYTE AlphaFormat;
};

// A registered window's context, or null. Give it back with ReleaseDC.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC dc);

BOOL IsWindow(HWND window);
// Writes the window's screen rectangle; 0 and nothing written for a handle that is not registered.
BOOL GetWindowRect(HWND window, RECT* rect);

// Pushes the pixels of `source`, from its origin, at the window's size `*size`: what lies past them
// is transparent. Gives what the window's Present gave; 0 for a dead handle, a context without
// pixels or a size that is not usable. The other arguments keep the engine's one use: the source
// point is (0, 0), the blend is source-over with per-pixel alpha. Blocks the window's unregistering
// while it runs.
BOOL UpdateLayeredWindow(HWND window, HDC destination, POINT* position, SIZE* size, HDC source,
                         POINT* sourcePoint, COLORREF key, BLENDFUNCTION* blend, DWORD flags);
