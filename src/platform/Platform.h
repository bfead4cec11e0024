// The one switch between the home platform and the layer: on Windows the system's own headers,
// everywhere else the same vocabulary by our own components.
#pragma once

#include <parchlet/Platform.h>

#if defined(_WIN32)

#include <gdiplus.h>

#else

#include "platform/clock/Clock.h"
#include "platform/com/Com.h"
#include "platform/gdi/Gdi.h"
#include "platform/graphics/Graphics.h"
#include "platform/text/CodePage.h"
#include "platform/window/Window.h"

#endif
