// Outlines of strokes: the centre line of a shape, cut down to what can show on a surface.
#pragma once

#include <span>
#include <vector>

struct OutlinePoint {
  double x;
  double y;

  friend bool operator==(const OutlinePoint&, const OutlinePoint&) = default;
};

// The area, in pixels, outside of which no part of a centre line can leave ink on the surface. It
// is the surface grown by the farthest that a stroke reaches from its centre line, the tip of a
// mitre.
struct OutlineBounds {
  double left;
  double top;
  double right;
  double bottom;

  static OutlineBounds Around(int surfaceWidth, int surfaceHeight, double penWidth);
};

// One run of points joined by straight lines. A closed run's last point joins its first.
struct OutlineRun {
  std::span<const OutlinePoint> points;
  bool closed;
};

// Collects a shape's centre line and hands out the runs of it that lie within bounds. A run is cut
// only outside the surface's reach, so neither its caps nor the joins that the cut took away can be
// seen. All coordinates of the runs lie within the bounds, whatever the shape's were. Reused from
// shape to shape: the buffers keep their memory.
class Outline {
 public:
  // Starts a polyline; points that repeat the one before are dropped.
  void Begin(const OutlineBounds& keep);
  void Add(OutlinePoint point);
  // Adds the points of a whole ellipse, by chords that stay within 1/16 pixel of it wherever it can
  // show, and coarser where it cannot.
  void AddEllipse(OutlinePoint centre, double radiusX, double radiusY);
  // Cuts what was added. `closed` joins its ends.
  void End(bool closed);

  // True when all points added fell on one; that point is then `Dot()`, and there are no runs.
  bool IsDot() const { return corners.size() == 1; }
  OutlinePoint Dot() const { return corners.front(); }
  const std::vector<OutlineRun>& Runs() const { return runs; }

 private:
  void AddArc(OutlinePoint centre, double radiusX, double radiusY, double from, double to,
              int depth);
  bool IsInside(OutlinePoint point) const;
  void CutSegment(OutlinePoint from, OutlinePoint to);
  void EndRun(bool closed);

  OutlineBounds keep{};
  std::vector<OutlinePoint> corners;  // as added
  std::vector<OutlinePoint> kept;     // the points of all runs, one run after the other
  std::vector<std::size_t> runEnds;
  std::vector<OutlineRun> runs;
};
