// Where the ink of a stroke must be and where none may be, told plainly, as an oracle for painting.
#pragma once

#include <cstdint>
#include <vector>

#include "support/Frame.h"

// The area of strokes of one width: flat caps, mitred joins, bevelled
// past a mitre of ten times the half width. Coordinates name pixel centres.
class StrokeArea {
 public:
  struct Spot {
    double x;
    double y;
  };
  enum class Cover { kNone, kSome, kFull };

  explicit StrokeArea(double width) : half(width / 2) {}

  StrokeArea& Open(std::vector<Spot> spots) { return Add({std::move(spots), false}); }
  StrokeArea& Closed(std::vector<Spot> spots) { return Add({std::move(spots), true}); }
  // By chords that stay within a few hundredths of a pixel.
  StrokeArea& Ellipse(double left, double top, double right, double bottom);

  // What the pixel at (x, y) must show. Pixels that an edge may cross are kSome.
  Cover At(int x, int y) const;

 private:
  struct Polyline {
    std::vector<Spot> spots;
    bool closed;
  };

  StrokeArea& Add(Polyline polyline);
  Cover CoverOf(const Polyline& polyline, Spot pixel) const;
  Cover NearAnEnd(Spot end, Spot neighbour, Spot pixel) const;
  // What the joins leave open near their corners: kSome where a mitre may reach and where a bevel
  // may cut, otherwise `cover`.
  Cover AtJoins(const Polyline& polyline, Spot pixel, Cover cover) const;

  double half;
  std::vector<Polyline> polylines;
};

// Every pixel of the frame shows what the area says: ink, background, or, at edges, anything.
testing::AssertionResult IsInked(const Frame& frame, const StrokeArea& area, std::uint32_t ink,
                                 std::uint32_t background = kWhite);
