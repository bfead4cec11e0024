// What the platform gives besides the painter: windows, device contexts, streams, clocks. On
// Windows they are the system's own, everywhere else the same vocabulary by our own components.
#pragma once

#include <parchlet/Platform.h>

#if defined(_WIN32)

#include <shlwapi.h>

#else

#include "platform/clock/Clock.h"
#include "platform/com/Com.h"
#include "platform/display/Screen.h"
#include "platform/files/Files.h"
#include "platform/gdi/Gdi.h"
#include "platform/text/CodePage.h"
#include "platform/window/Window.h"

#endif
