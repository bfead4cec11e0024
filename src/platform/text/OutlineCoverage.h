// How much of each pixel closed outlines cover.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct OutlinePoint {
  double x = 0;
  double y = 0;
};

// Takes the edges of closed outlines in any order and from any distance; those that wind the other
// way are holes. One thread at a time.
class OutlineCoverage {
 public:
  // The pixels 0 .. width-1 of the rows 0 .. height-1.
  OutlineCoverage(int width, int height);

  void AddEdge(OutlinePoint from, OutlinePoint to);
  // 0 to 255 for each pixel, row by row.
  std::vector<std::uint8_t> Coverage() const;

 private:
  void AddClipped(const OutlinePoint& upper, const OutlinePoint& lower, double direction);
  void AddToRow(double* row, double x0, double x1, double height);

  int width;
  int height;
  // For each pixel how much more of it is covered than of the one to its left; a row has two more
  // than pixels.
  std::vector<double> steps;
};
