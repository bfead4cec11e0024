// The home platform's functions about the screen, and copying from it.
#pragma once

#include <parchlet/Platform.h>

#include "platform/gdi/Gdi.h"

inline constexpr DWORD ENUM_CURRENT_SETTINGS = static_cast<DWORD>(-1);
inline constexpr DWORD MONITOR_DEFAULTTONEAREST = 2;
inline constexpr DWORD SRCCOPY = 0x00CC0020;
inline constexpr DWORD CAPTUREBLT = 0x40000000;

struct DEVMODEW {
  WORD dmSize;
  DWORD dmPelsWidth;
  DWORD dmPelsHeight;
};

struct MONITORINFO {
  DWORD cbSize;
  RECT rcMonitor;
};

struct MONITORINFOEXW : MONITORINFO {
  wchar_t szDevice[32];
};

using HMONITOR = struct MonitorHandle*;

// Returns a context of the display of that name, or null if there is none. The caller ends it with
// DeleteDC. `driver` is the name once more or null, `output` and `mode` are null.
HDC CreateDCW(const wchar_t* driver, const wchar_t* device, const wchar_t* output,
              const DEVMODEW* mode);

// Writes the size in pixels of the display of that name; `modeNumber` is ENUM_CURRENT_SETTINGS.
// Returns 0, and writes nothing, if there is none.
BOOL EnumDisplaySettingsW(const wchar_t* device, DWORD modeNumber, DEVMODEW* mode);

// Returns the monitor that holds the largest part of the area, else the one nearest to it; null if
// there is no monitor. `flags` is MONITOR_DEFAULTTONEAREST.
HMONITOR MonitorFromRect(const RECT* area, DWORD flags);

// Writes a MONITORINFOEXW; its cbSize must say that it is one. Returns 0, and writes nothing, for
// any other record and for a monitor that is gone.
BOOL GetMonitorInfoW(HMONITOR monitor, MONITORINFO* info);

// Copies what the display of `source` shows, layered windows included, onto the bitmap selected
// into `destination`; `operation` is SRCCOPY | CAPTUREBLT. The source point counts from the
// display's origin. The copy is opaque, and black where the display ends. Returns 0 for
// anything but a display and a bitmap, for an empty size and if the capture fails; the bitmap then
// holds anything.
BOOL BitBlt(HDC destination, int x, int y, int width, int height, HDC source, int sourceX,
            int sourceY, DWORD operation);
