// The one switch between the home platform and the layer: on Windows the system's own headers,
// everywhere else the same vocabulary by our own components.
#pragma once

#include <parchlet/Platform.h>

#if defined(_WIN32)

#include <gdiplus.h>
#include <shlwapi.h>

#else

#include "platform/clock/Clock.h"
#include "platform/com/Com.h"
#include "platform/display/Screen.h"
#include "platform/files/Files.h"
#include "platform/gdi/Gdi.h"
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/Graphics.h"
#include "platform/graphics/Text.h"
#include "platform/text/CodePage.h"
#include "platform/window/Window.h"

#endif
