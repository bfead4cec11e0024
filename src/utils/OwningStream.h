#pragma once

#include <string>

#include <parchlet/Platform.h>

// A stream that owns its copy of the bytes, as a picture loaded from it may go on reading; at its
// start, with one reference for the caller. Null for no bytes, or no memory for them. Any thread.
IStream* MakeOwningStream(const std::string& bytes);
