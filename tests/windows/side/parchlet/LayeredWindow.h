#pragma once

#include <parchlet/MemoryWindow.h>  // ends windows
