#pragma once

#include <parchlet/Platform.h>

using StreamBase = IStream;
