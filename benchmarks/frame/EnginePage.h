// EnginePage.h - the marks of a workload as a page of the engine holds them.
#pragma once

#include <cstdint>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "page/AnnotationPage.h"
#include "Workload.h"

// A page with the marks as four participants' confirmed annotations, and the window it belongs to.
// One thread's own.
class EnginePage {
 public:
  explicit EnginePage(const Workload& workload);

  // Renders the page once; false when it has no surface.
  bool Draw() { return page.DrawPage() == 1; }

  // Renders the page once more and gives what it pushes to its window.
  std::vector<std::uint32_t> CopyPixels();

 private:
  MemoryWindow window;  // outlives the page
  AnnotationPage page;
};
