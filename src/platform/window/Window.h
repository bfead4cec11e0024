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

// Returns the context of a registered window, else null. Call ReleaseDC when done.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC dc);

BOOL IsWindow(HWND window);
// Writes the window's screen rectangle. Returns 0, and writes nothing, for a handle that is not
// registered and for a window whose GetScreenRect throws.
BOOL GetWindowRect(HWND window, RECT* rect);

// Pushes the pixels of `source`, from its origin, at the window's size `*size`: what lies past them
// is transparent. Returns what the window's Present returned, 0 if that threw; 0 as well for a dead
// handle, a context without pixels or a size that is not usable. The other arguments keep the
// engine's one use: the source point is (0, 0), the blend is source-over with per-pixel alpha.
// Blocks the window's unregistering while it runs.
BOOL UpdateLayeredWindow(HWND window, HDC destination, POINT* position, SIZE* size, HDC source,
                         POINT* sourcePoint, COLORREF key, BLENDFUNCTION* blend, DWORD flags);
