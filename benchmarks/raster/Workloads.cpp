#include "Workloads.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace workloads {
namespace {

// A small generator of its own: the standard distributions differ between libraries.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state(seed * 2654435761U + 1) {}

  double Unit() {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state >> 40) / static_cast<double>(1 << 24);
  }
  double Between(double low, double high) { return low + (high - low) * Unit(); }

 private:
  std::uint64_t state;
};

std::uint32_t RandomColor(Dice& dice, std::uint32_t alpha) {
  const auto channel = [&] { return static_cast<std::uint32_t>(dice.Unit() * 255); };
  const std::uint32_t red = channel();
  const std::uint32_t green = channel();
  return alpha << 24 | red << 16 | green << 8 | channel();
}

Spot Rounded(double x, double y) {
  return {static_cast<std::int32_t>(std::floor(x + 0.5)),
          static_cast<std::int32_t>(std::floor(y + 0.5))};
}

// A pen that walks over the page and is thrown back at its edges.
class Walker {
 public:
  Walker(Dice& dice, int width, int height) : width(width), height(height) {
    x = dice.Between(0, width);
    y = dice.Between(0, height);
    heading = dice.Between(0, 2 * std::numbers::pi);
  }

  void Turn(double angle) { heading += angle; }
  void Step(double length) {
    x += length * std::cos(heading);
    y += length * std::sin(heading);
    if (x < 0 || x > width) {
      heading = std::numbers::pi - heading;
      x = std::clamp(x, 0.0, static_cast<double>(width));
    }
    if (y < 0 || y > height) {
      heading = -heading;
      y = std::clamp(y, 0.0, static_cast<double>(height));
    }
  }
  Spot Place() const { return Rounded(x, y); }

 private:
  int width, height;
  double x, y, heading;
};

std::vector<Spot> FreehandPath(Dice& dice, int width, int height, int points) {
  Walker walker(dice, width, height);
  std::vector<Spot> path{walker.Place()};
  double bend = 0;
  for (int i = 1; i < points; ++i) {
    bend = 0.9 * bend + dice.Between(-0.04, 0.04);
    walker.Turn(dice.Unit() < 0.01 ? dice.Between(-2.8, 2.8) : bend);
    walker.Step(dice.Between(2, 6));
    path.push_back(walker.Place());
  }
  return path;
}

}  // namespace

Page FreehandPage(int width, int height, int marks, int points, float pen, std::uint32_t alpha,
                  std::uint32_t seed) {
  Dice dice(seed);
  Page page{width, height, {}};
  for (int i = 0; i < marks; ++i) {
    const std::uint32_t argb = RandomColor(dice, alpha);
    page.marks.push_back({Kind::kPath, argb, pen, FreehandPath(dice, width, height, points)});
  }
  return page;
}

Page W1() { return FreehandPage(1920, 1080, 1000, 200, 6, 255, 1); }
Page W2() { return FreehandPage(1920, 1080, 1000, 200, 2, 255, 2); }
Page W3() { return FreehandPage(3840, 2160, 5000, 200, 6, 255, 3); }
Page W5() { return FreehandPage(1920, 1080, 1, 100000, 6, 255, 5); }
Page W7() { return FreehandPage(1920, 1080, 300, 200, 20, 128, 7); }

Page W4() {
  Dice dice(4);
  Page page{1920, 1080, {}};
  for (int i = 0; i < 1000; ++i) {
    const Kind kinds[] = {Kind::kPath, Kind::kRectangle, Kind::kEllipse};
    const std::uint32_t argb = RandomColor(dice, 255);
    const double width = dice.Between(50, 400);
    const double height = dice.Between(50, 400);
    const double x = dice.Between(-50, 1820);
    const double y = dice.Between(-50, 980);
    const bool falling = dice.Unit() < 0.5;
    page.marks.push_back({kinds[i % 3],
                          argb,
                          6,
                          {Rounded(x, falling ? y : y + height),
                           Rounded(x + width, falling ? y + height : y)}});
  }
  return page;
}

Page W6() {
  Dice dice(6);
  Page page{1920, 1080, {}};
  for (int i = 0; i < 200; ++i) {
    const Spot corner = Rounded(dice.Between(0, 1320), dice.Between(0, 680));
    page.marks.push_back({Kind::kPicture, 0, 0, {corner, {corner.x + 600, corner.y + 400}}});
  }
  return page;
}

Page Torture() {
  Dice dice(8);
  Page page{1920, 1080, {}};
  for (int i = 0; i < 400; ++i) {
    const std::uint32_t argb = RandomColor(dice, 255);
    const float pen = static_cast<float>(1 + i % 30);
    const double longest = dice.Between(0.4, 45);
    Walker walker(dice, page.width, page.height);
    std::vector<Spot> path{walker.Place()};
    for (int k = 0; k < 60; ++k) {
      const double shape = dice.Unit();
      const double zigzag = (k % 2 == 0 ? 1 : -1) * dice.Between(1.0, 2.9);
      const double gentle = dice.Between(-0.5, 0.5);
      const double turnBack = std::numbers::pi - dice.Between(-0.2, 0.2);
      walker.Turn(shape < 0.35 ? zigzag : shape < 0.85 ? gentle : turnBack);
      walker.Step(dice.Between(0.4, longest));
      path.push_back(walker.Place());
    }
    page.marks.push_back({Kind::kPath, argb, pen, std::move(path)});
  }
  return page;
}

std::vector<std::uint32_t> SamplePicture(int width, int height) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(width) * height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto red = static_cast<std::uint32_t>(x * 127 / width);
      const auto green = static_cast<std::uint32_t>(y * 127 / height);
      pixels.push_back(0x80000000U | red << 16 | green << 8 | ((x ^ y) & 64));
    }
  }
  return pixels;
}

}  // namespace workloads
