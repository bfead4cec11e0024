// The rival: the same marks drawn straight with Cairo and its default anti-aliasing.
#pragma once

#include <cstdint>

#include "Workloads.h"

namespace workloads {

// Clears `pixels` (the page's size, no gap between rows) to white and paints every mark.
void PaintWithCairo(const Page& page, std::uint32_t* pixels);

}  // namespace workloads
