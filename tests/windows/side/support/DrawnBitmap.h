// A bitmap in memory and what draws on it.
#pragma once

#include "page/DibSection.h"
#include "platform/gdi/DevicePixels.h"
#include "support/Frame.h"

class SelectedSection {
 public:
  SelectedSection(int width, int height) {
    EXPECT_EQ(1, section.Create(context, width, height, 32, false));
    previous = SelectObject(context, section.GetBitmap());
  }
  ~SelectedSection() {
    SelectObject(context, previous);
    DeleteDC(context);
  }
  SelectedSection(const SelectedSection&) = delete;
  SelectedSection& operator=(const SelectedSection&) = delete;

  HDC Context() const { return context; }
  HBITMAP Bitmap() const { return section.GetBitmap(); }

 private:
  DibSection section;
  HDC context = CreateCompatibleDC(nullptr);
  HGDIOBJ previous = nullptr;
};

struct DrawnBitmap {
  DrawnBitmap(int width, int height) : section(width, height), graphics(section.Context()) {}

  Frame Show() {
    graphics.Flush();
    BitmapCopy copy = CopyBitmap(section.Bitmap());
    return Frame({copy.width, copy.height, std::move(copy.pixels)});
  }

  SelectedSection section;
  Gdiplus::Graphics graphics;
};
