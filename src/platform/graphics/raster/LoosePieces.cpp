#include "platform/graphics/raster/LoosePieces.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace raster {
namespace {

constexpr float kFringe = 0.8F;
constexpr float kMitreLimit = 0.02F;  // 1 + cos(turn) at 10 times the half width
constexpr float kSharpTurn =
    1.0F;  // 1 + cos(turn) of the sharpest joint whose halves a seam parts well

struct Vector {
  float x = 0;
  float y = 0;
};

Vector operator+(Vector a, Vector b) {
  return {a.x + b.x, a.y + b.y};
}
Vector operator*(float k, Vector v) {
  return {k * v.x, k * v.y};
}
Vector LeftNormal(Vector tangent) {
  return {-tangent.y, tangent.x};
}

Plane PlaneThrough(Vector point, Vector normal) {
  const float larger = std::max({std::abs(normal.x), std::abs(normal.y), 1e-6F});
  const float scale = kPlaneUnit / larger;
  const auto a = static_cast<float>(Rounded(normal.x * scale));
  const auto b = static_cast<float>(Rounded(normal.y * scale));
  return {static_cast<std::int32_t>(a), static_cast<std::int32_t>(b),
          kPlaneUnit / 2 - static_cast<std::int32_t>(Rounded(a * point.x + b * point.y))};
}

// The strip of `halfWidth` around the line through `point` along `tangent`.
LooseStrip StripAlong(Vector point, Vector tangent, float halfWidth) {
  const double absX = std::abs(tangent.x);
  const double absY = std::abs(tangent.y);
  const double scale = kPlaneUnit / std::max({absX, absY, 1e-6});
  LooseStrip strip;
  strip.a = -tangent.y * scale;
  strip.b = tangent.x * scale;
  strip.c = -(strip.a * point.x + strip.b * point.y);
  const double edge = halfWidth * scale + kEdgeOffset;
  const double quarter = std::min(absX, absY) * scale * 0.25;
  strip.outer = static_cast<std::int32_t>(Rounded(edge + quarter));
  strip.inner = static_cast<std::int32_t>(Rounded(edge - quarter));
  return strip;
}

void SetBox(LoosePiece& piece, std::initializer_list<Vector> corners) {
  piece.left = piece.right = corners.begin()->x;
  piece.top = piece.bottom = corners.begin()->y;
  for (const Vector& corner : corners) {
    piece.left = std::min(piece.left, corner.x);
    piece.top = std::min(piece.top, corner.y);
    piece.right = std::max(piece.right, corner.x);
    piece.bottom = std::max(piece.bottom, corner.y);
  }
  piece.left -= kFringe;
  piece.top -= kFringe;
  piece.right += kFringe;
  piece.bottom += kFringe;
}

// The end at point `i` of a segment with this tangent.
Plane EndAt(const ChunkPoints& points, const ChunkGeometry& geometry, int i, Vector tangent) {
  if (geometry.good[i] != 0) {
    return {geometry.seam.a[i], geometry.seam.b[i], geometry.seam.c[i]};
  }
  return PlaneThrough({points.x[i], points.y[i]}, tangent);
}

struct Corner {
  Vector at;
  Vector before, after;          // the tangents
  Vector edgeBefore, edgeAfter;  // from the joint to the outer ends of the two square ends
  float turn;
};

// What lies beyond both square ends and within both strips, up to the tip.
void CoverMitre(const Corner& corner, float halfWidth, CoveragePlane& plane) {
  LoosePiece mitre;
  mitre.strip = StripAlong(corner.at, corner.before, halfWidth);
  mitre.other = StripAlong(corner.at, corner.after, halfWidth);
  mitre.isMitre = true;
  mitre.thin = halfWidth < kThickHalfWidth;
  mitre.start = PlaneThrough(corner.at, corner.before);
  mitre.end = PlaneThrough(corner.at, corner.after);
  const Vector tip = corner.at + (1 / corner.turn) * (corner.edgeBefore + corner.edgeAfter);
  SetBox(mitre, {corner.at, corner.at + corner.edgeBefore, corner.at + corner.edgeAfter, tip});
  CoverLoosePiece(mitre, plane);
}

// The triangle between the joint and the outer ends, and with `mitred` the one between those and
// the tip. They part at the line through the outer ends, hw cos(theta / 2) from the joint, where 1
// + cos theta = 2 cos^2(theta / 2). A sharp tip is thinner than a pixel, so that both of its edges
// must count in every pixel: they stand in for the two ends of its piece.
void CoverSharpCorner(const Corner& corner, bool mitred, float halfWidth, CoveragePlane& plane) {
  const Vector across = corner.edgeBefore + corner.edgeAfter;
  const float length = std::hypot(across.x, across.y);
  if (length < 0.01F * halfWidth) {
    return;
  }
  const Vector outward = (1 / length) * across;
  const Vector along = {outward.y, -outward.x};
  const float height = halfWidth * std::sqrt(corner.turn / 2);
  const Vector endBefore = corner.at + corner.edgeBefore;
  const Vector endAfter = corner.at + corner.edgeAfter;
  LoosePiece triangle;
  triangle.strip = StripAlong(corner.at, along, height);
  triangle.thin = height < kThickHalfWidth;
  triangle.start = PlaneThrough(corner.at, corner.before);
  triangle.end = PlaneThrough(corner.at, corner.after);
  SetBox(triangle, {corner.at, endBefore, endAfter});
  CoverLoosePiece(triangle, plane);
  if (!mitred) {
    return;
  }
  const Vector tip = corner.at + (1 / corner.turn) * across;
  const float beyond = (length / corner.turn - height) / 2 + 1;
  LoosePiece top;
  top.strip = StripAlong(corner.at + (height + beyond) * outward, along, beyond);
  top.thin = beyond < kThickHalfWidth;
  top.start = PlaneThrough(endBefore, -1 * corner.edgeBefore);
  top.end = PlaneThrough(endAfter, corner.edgeAfter);
  SetBox(top, {endBefore, endAfter, tip});
  CoverLoosePiece(top, plane);
}

}  // namespace

LoosePiece MakeLongPiece(const ChunkPoints& points, const ChunkGeometry& geometry, int i,
                         float halfWidth) {
  const Vector tangent = {geometry.tangentX[i], geometry.tangentY[i]};
  LoosePiece piece;
  piece.strip = StripAlong({points.x[i], points.y[i]}, tangent, halfWidth);
  piece.thin = halfWidth < kThickHalfWidth;
  piece.start = EndAt(points, geometry, i, tangent);
  piece.end = EndAt(points, geometry, i + 1, tangent);
  piece.left = geometry.left[i];
  piece.top = geometry.top[i];
  piece.right = geometry.right[i];
  piece.bottom = geometry.bottom[i];
  return piece;
}

void CoverCorner(const ChunkPoints& points, const ChunkGeometry& geometry, int i, float halfWidth,
                 CoveragePlane& plane) {
  Corner corner;
  corner.at = {points.x[i], points.y[i]};
  corner.before = {geometry.tangentX[i - 1], geometry.tangentY[i - 1]};
  corner.after = {geometry.tangentX[i], geometry.tangentY[i]};
  corner.turn = geometry.turn[i];
  const float cross = corner.before.x * corner.after.y - corner.before.y * corner.after.x;
  const float outer = cross > 0 ? -halfWidth : halfWidth;
  corner.edgeBefore = outer * LeftNormal(corner.before);
  corner.edgeAfter = outer * LeftNormal(corner.after);
  if (corner.turn >= kSharpTurn) {
    CoverMitre(corner, halfWidth, plane);
  } else {
    CoverSharpCorner(corner, corner.turn >= kMitreLimit, halfWidth, plane);
  }
}

}  // namespace raster
