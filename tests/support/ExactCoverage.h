// The truth that painted strokes are measured against: the union of every segment's rectangle and
// every joint's mitre or bevel, measured along 16 lines a pixel. Slow and obvious.
#pragma once

#include <complex>
#include <span>
#include <vector>

namespace exact {

using Corner = std::complex<double>;  // x and y
using Polygon = std::vector<Corner>;  // convex

// What a stroke with flat caps, mitred joins up to 10 times the pen's width and bevels past that
// covers. One that is closed goes on to its second point.
std::vector<Polygon> StrokePolygons(std::vector<Corner> line, double width);

// The share of every pixel that the union of `polygons` covers, 0 to 1, row by row.
std::vector<double> Coverage(std::span<const Polygon> polygons, int width, int height);

}  // namespace exact
