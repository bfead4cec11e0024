// EnginePage.h - the marks of a workload as a page of the engine holds them.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "page/AnnotationPage.h"
#include "workload/Workload.h"

// The mark at `index` as a remote participant's annotation, fragment 0 of itself.
std::unique_ptr<Annotation> MakeAnnotation(const Workload& workload, std::size_t index);

// A page with the marks as four participants' confirmed annotations, and the window it belongs to.
// One thread's own.
class EnginePage {
 public:
  explicit EnginePage(const Workload& workload);

  // Renders and pushes one frame: nothing in it is as before, the path that is being drawn has one
  // point more, or nothing has changed. False when the window was not reached.
  bool ShowAnew();
  bool ShowLive();
  bool ShowIdle() { return page.UpdateLayeredContent() != 0; }

  AnnotationPage& Page() { return page; }

  // Renders the page once more and gives what it pushes to its window.
  std::vector<std::uint32_t> CopyPixels();

 private:
  static constexpr std::size_t kLivePoints = 200;

  MemoryWindow window;  // outlives the page
  AnnotationPage page;
  int width;
  int height;
  std::uint32_t frames = 0;
  Annotation* live = nullptr;  // the page's
  std::size_t livePoints = 0;
};
