// Hosts and pages for tests.
#pragma once

#include <string>
#include <utility>

#include <parchlet/Parchlet.h>

#include "support/Frame.h"
#include "support/TestAccess.h"

// An opaque page of that size, shown whole.
inline AnnotationPageInfo PageOf(int width, int height, std::uint32_t color = kWhite) {
  return {0, 0, width, height, false, {0, 0, width, height}, color};
}

// A page that paints into a window of its own size, without an engine and without a timer.
class PaintedPage {
 public:
  explicit PaintedPage(CurrentAnnotPageSize size) : size(size) {
    EXPECT_EQ(1, page.InitPage(window.Handle(), PageOf(size.width, size.height), nullptr));
  }

  // Paints the page and gives what the window then shows.
  Frame Paint() {
    EXPECT_NE(0, page.UpdateLayeredContent());
    return Frame(window.CopyFrame());
  }

  CurrentAnnotPageSize size;
  MemoryWindow window{{0, 0, size.width, size.height}};
  AnnotationPage page;
};

// An engine that is not started, with the document "doc" and its page "page" on a window of the
// page's size. The test paints when it wants to.
class Whiteboard {
 public:
  explicit Whiteboard(int width = 200, int height = 100) : window({0, 0, width, height}) {
    engine.NewDoc("ada", "doc");
    EXPECT_EQ(1, engine.NewPage("doc", "page", "ada", window.Handle(), PageOf(width, height)));
  }

  AnnotationPage& Page() { return *engine.GetPagePtr("doc", "page"); }

  Frame Paint() {
    EXPECT_NE(0, ParchletTestAccess::Refresh(engine));
    return Frame(window.CopyFrame());
  }

  MemoryWindow window;
  Parchlet engine;
};
