// The pages that benchmarks paint: generated marks, the same on every machine and in every run.
#pragma once

#include <cstdint>
#include <vector>

namespace workloads {

struct Spot {
  std::int32_t x;
  std::int32_t y;
};

enum class Kind { kPath, kRectangle, kEllipse, kPicture };

// One mark: a path through all its points, or a shape in the box of its first two.
struct Mark {
  Kind kind = Kind::kPath;
  std::uint32_t argb = 0xFF000000;
  float width = 6;
  std::vector<Spot> points;
};

struct Page {
  int width = 0;
  int height = 0;
  std::vector<Mark> marks;
};

// Free-hand paths of `points` points each: steps of 2 to 6 px, a smoothly turning heading and a few
// sharp turns, reflected at the page's edges.
Page FreehandPage(int width, int height, int marks, int points, float pen, std::uint32_t alpha,
                  std::uint32_t seed);

Page W1();  // 1920 x 1080, 1000 paths of 200 points, pen 6
Page W2();  // the same, pen 2
Page W3();  // 3840 x 2160, 5000 paths
Page W4();  // 1000 lines, rectangles and ellipses of 50 to 400 px, pen 6
Page W5();  // one path of 100,000 points
Page W6();  // 200 half-transparent pictures of 400 x 300, stretched to 600 x 400
Page W7();  // 300 paths, pen 20, half-transparent
Page Torture();  // zigzags, U-turns, steps of 0.4 to 45 px, pens 1 to 30

// The picture that W6 shows: premultiplied, row by row.
std::vector<std::uint32_t> SamplePicture(int width, int height);

}  // namespace workloads
