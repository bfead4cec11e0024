// CairoRival.h - the marks of a workload, drawn the plain way with Cairo.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <vector>

#include "workload/Workload.h"

// An image of the workload's size and the plain code that draws the marks on it. One thread's own.
class CairoRival {
 public:
  explicit CairoRival(const Workload& workload);
  ~CairoRival();
  CairoRival(const CairoRival&) = delete;
  CairoRival& operator=(const CairoRival&) = delete;

  // Clears the image to white and draws all marks.
  void Draw();

  // Premultiplied 0xAARRGGBB, row by row.
  std::vector<std::uint32_t> CopyPixels() const;

 private:
  void Draw(const BenchMark& mark);
  void DrawPicture(const BenchMark& mark);

  const Workload& workload;
  cairo_surface_t* surface;
  cairo_t* cairo;
};
