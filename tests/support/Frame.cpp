#include "support/Frame.h"

#include <algorithm>
#include <filesystem>

#include "platform/image/Picture.h"

std::uint32_t Frame::At(int x, int y) const {
  if (x < 0 || y < 0 || x >= width || y >= height) {
    return 0;
  }
  const auto columns = static_cast<std::size_t>(width);
  return pixels[static_cast<std::size_t>(y) * columns + static_cast<std::size_t>(x)];
}

RECT Frame::InkBox(std::uint32_t background) const {
  RECT box = {width, height, 0, 0};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (At(x, y) != background) {
        const RECT pixel = {x, y, x + 1, y + 1};
        box = {std::min(box.left, pixel.left), std::min(box.top, pixel.top),
               std::max(box.right, pixel.right), std::max(box.bottom, pixel.bottom)};
      }
    }
  }
  return box.right == 0 ? RECT{0, 0, 0, 0} : box;
}

double Frame::BlackArea() const {
  double area = 0;
  for (const std::uint32_t pixel : pixels) {
    area += (255 - static_cast<int>(pixel & 0xFF)) / 255.0;
  }
  return area;
}

void PrintTo(const Frame& frame, std::ostream* out) {
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  std::string name = "parchlet-failed";
  if (test != nullptr) {
    name += std::string("-") + test->test_suite_name() + "." + test->name();
  }
  std::replace(name.begin(), name.end(), '/', '_');
  const std::string file = (std::filesystem::temp_directory_path() / (name + ".png")).string();
  const bool saved = SavePicture({frame.pixels.data(), frame.width, frame.height, frame.width * 4L},
                                 PictureEncoder::kPng, file);
  *out << "a frame of " << frame.width << " x " << frame.height << " pixels, "
       << (saved ? "seen in " + file : "which cannot be saved");
}
