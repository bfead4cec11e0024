#include "platform/raster/CellPieces.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "platform/raster/HalfPlane-inl.h"
#include "platform/raster/StrokeRules.h"

namespace raster {
namespace {

using HWY_NAMESPACE::EdgeRamps;
using HWY_NAMESPACE::HalfPlaneScale;
using HWY_NAMESPACE::Single;

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

// The half-plane whose edge runs through the point and which grows along `direction`.
HalfPlane HalfPlaneThrough(Vector point, Vector direction) {
  using Float = Single<float>;
  const float scale = HalfPlaneScale<Float>(std::abs(direction.x), std::abs(direction.y));
  const HWY_NAMESPACE::Normal<Float> normal(direction.x, direction.y, scale);
  return HWY_NAMESPACE::HalfPlaneThrough(point.x, point.y, normal, kOnEdge);
}

// The strip of `halfWidth` around the line through `point` along `tangent`. Lines may be long: in
// doubles, it lies right at both ends.
Strip StripAlong(Vector point, Vector tangent, float halfWidth) {
  using Double = Single<double>;
  const double absX = std::abs(tangent.x);
  const double absY = std::abs(tangent.y);
  const double scale = HalfPlaneScale<Double>(absX, absY);
  const EdgeRamps<Double> ramps(halfWidth, absX, absY, scale);
  Strip strip;
  strip.a = -tangent.y * scale;
  strip.b = tangent.x * scale;
  strip.c = -(strip.a * point.x + strip.b * point.y);
  strip.outer = ramps.outer;
  strip.inner = ramps.inner;
  return strip;
}

void SetBox(CellPiece& piece, std::initializer_list<Vector> corners) {
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
HalfPlane EndOf(const ChunkPoints& points, const ChunkGeometry& geometry, int i, Vector tangent) {
  if (geometry.seamed[i] != 0) {
    return {geometry.seam.a[i], geometry.seam.b[i], geometry.seam.c[i]};
  }
  return HalfPlaneThrough({points.x[i], points.y[i]}, tangent);
}

struct Corner {
  Vector at;
  Vector before, after;          // the tangents
  Vector edgeBefore, edgeAfter;  // from the joint to the outer ends of the two flat ends
  float onePlusCos;              // of the turn
};

// Covers what lies beyond both flat ends and within both strips, up to the tip.
void CoverMitre(const Corner& corner, float halfWidth, CoverageMask& mask) {
  CellPiece mitre;
  mitre.strip = StripAlong(corner.at, corner.before, halfWidth);
  mitre.other = StripAlong(corner.at, corner.after, halfWidth);
  mitre.isMitre = true;
  mitre.thin = halfWidth < kThickHalfWidth;
  mitre.start = HalfPlaneThrough(corner.at, corner.before);
  mitre.end = HalfPlaneThrough(corner.at, corner.after);
  const Vector tip = corner.at + (1 / corner.onePlusCos) * (corner.edgeBefore + corner.edgeAfter);
  SetBox(mitre, {corner.at, corner.at + corner.edgeBefore, corner.at + corner.edgeAfter, tip});
  CoverCellPiece(mitre, mask);
}

// Covers the triangle between the joint and the outer ends, and with `mitred` the one between those
// and the tip. They meet at the line through the outer ends, hw cos(theta / 2) from the joint,
// where 1 + cos theta = 2 cos^2(theta / 2). A sharp tip is thinner than a pixel, so that both of
// its edges must count in every pixel: they take the place of its piece's start and end.
void CoverSharpCorner(const Corner& corner, bool mitred, float halfWidth, CoverageMask& mask) {
  const Vector across = corner.edgeBefore + corner.edgeAfter;
  const float length = std::hypot(across.x, across.y);
  if (length < 0.01F * halfWidth) {
    return;
  }
  const Vector outward = (1 / length) * across;
  const Vector along = {outward.y, -outward.x};
  const float height = halfWidth * std::sqrt(corner.onePlusCos / 2);
  const Vector endBefore = corner.at + corner.edgeBefore;
  const Vector endAfter = corner.at + corner.edgeAfter;
  CellPiece triangle;
  triangle.strip = StripAlong(corner.at, along, height);
  triangle.thin = height < kThickHalfWidth;
  triangle.start = HalfPlaneThrough(corner.at, corner.before);
  triangle.end = HalfPlaneThrough(corner.at, corner.after);
  SetBox(triangle, {corner.at, endBefore, endAfter});
  CoverCellPiece(triangle, mask);
  if (!mitred) {
    return;
  }
  const Vector tip = corner.at + (1 / corner.onePlusCos) * across;
  const float beyond = (length / corner.onePlusCos - height) / 2 + 1;
  CellPiece top;
  top.strip = StripAlong(corner.at + (height + beyond) * outward, along, beyond);
  top.thin = beyond < kThickHalfWidth;
  top.start = HalfPlaneThrough(endBefore, -1 * corner.edgeBefore);
  top.end = HalfPlaneThrough(endAfter, corner.edgeAfter);
  SetBox(top, {endBefore, endAfter, tip});
  CoverCellPiece(top, mask);
}

}  // namespace

CellPiece MakeCellPiece(const ChunkPoints& points, const ChunkGeometry& geometry, int i,
                        float halfWidth) {
  const Vector tangent = {geometry.tangentX[i], geometry.tangentY[i]};
  CellPiece piece;
  piece.strip = StripAlong({points.x[i], points.y[i]}, tangent, halfWidth);
  piece.thin = halfWidth < kThickHalfWidth;
  piece.start = EndOf(points, geometry, i, tangent);
  piece.end = EndOf(points, geometry, i + 1, tangent);
  piece.left = geometry.left[i];
  piece.top = geometry.top[i];
  piece.right = geometry.right[i];
  piece.bottom = geometry.bottom[i];
  return piece;
}

void CoverCorner(const ChunkPoints& points, const ChunkGeometry& geometry, int i, float halfWidth,
                 CoverageMask& mask) {
  Corner corner;
  corner.at = {points.x[i], points.y[i]};
  corner.before = {geometry.tangentX[i - 1], geometry.tangentY[i - 1]};
  corner.after = {geometry.tangentX[i], geometry.tangentY[i]};
  corner.onePlusCos = geometry.onePlusCos[i];
  const float cross = corner.before.x * corner.after.y - corner.before.y * corner.after.x;
  const float outer = cross > 0 ? -halfWidth : halfWidth;
  corner.edgeBefore = outer * LeftNormal(corner.before);
  corner.edgeAfter = outer * LeftNormal(corner.after);
  if (corner.onePlusCos >= kSharpTurn) {
    CoverMitre(corner, halfWidth, mask);
  } else {
    CoverSharpCorner(corner, corner.onePlusCos >= kMitreLimitTurn, halfWidth, mask);
  }
}

}  // namespace raster
