#pragma once

#include <memory>

#include <parchlet/Annotation.h>

// A mark with all that the host gave to `source`: what copying an Annotation leaves out as well.
std::unique_ptr<Annotation> FullCopy(const Annotation& source);
