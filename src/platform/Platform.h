// The one switch between the home platform and our own components: the system's vocabulary by
// System.h, the drawing classes by the painter that the build has chosen.
#pragma once

#include "platform/System.h"

#if defined(PARCHLET_PAINTER_GDIPLUS)

#include <gdiplus.h>

#else

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/Graphics.h"
#include "platform/graphics/Text.h"

// The engine's word for either painter.
namespace Gdiplus = parchlet::graphics;

#endif
