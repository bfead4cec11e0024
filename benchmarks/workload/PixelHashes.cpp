// PixelHashes.cpp - prints what every workload's page looks like, as one number for each of two
// sizes. The numbers are the same on every system and processor.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "workload/EnginePage.h"
#include "workload/Workload.h"

namespace {

std::uint64_t HashOf(const std::vector<std::uint32_t>& pixels) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const std::uint32_t pixel : pixels) {
    hash = (hash ^ pixel) * 0x100000001B3U;
  }
  return hash;
}

bool Print(const Workload& workload) {
  EnginePage page(workload);
  const std::vector<std::uint32_t> pixels = page.CopyPixels();
  std::printf("%s %dx%d %016llx\n", workload.name.c_str(), workload.width, workload.height,
              static_cast<unsigned long long>(HashOf(pixels)));
  return pixels.size() ==
         static_cast<std::size_t>(workload.width) * static_cast<std::size_t>(workload.height);
}

bool PrintAll(int width, int height) {
  bool isWhole = Print(MakePaths("W1", width, height, {1000, 200, 6, 0xFF}));
  isWhole &= Print(MakePaths("W2", width, height, {1000, 200, 2, 0xFF}));
  isWhole &= Print(MakePaths("W3", 2 * width, 2 * height, {5000, 200, 6, 0xFF}));
  isWhole &= Print(MakeShapes("W4", width, height, 1000, 6));
  isWhole &= Print(MakePaths("W5", width, height, {1, 100'000, 6, 0xFF}));
  isWhole &= Print(MakePictures("W6", width, height, 200));
  isWhole &= Print(MakePaths("W7", width, height, {300, 200, 20, 0x80}));
  isWhole &= Print(MakeTorture("T", width, height, 400));
  return isWhole;
}

}  // namespace

int main() {
  const bool isWhole = PrintAll(1920, 1080) && PrintAll(1366, 768);
  return isWhole ? EXIT_SUCCESS : EXIT_FAILURE;
}
