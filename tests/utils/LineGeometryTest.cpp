#include <parchlet/Utils.h>

#include <gtest/gtest.h>

namespace {

bool Cross(POINT a1, POINT a2, POINT b1, POINT b2) {
  const bool result = Utils::IsLineIntersect(a1, a2, b1, b2);
  EXPECT_EQ(result, Utils::IsLineIntersect(b1, b2, a1, a2)) << "whoever is asked about whom";
  return result;
}

TEST(LineGeometryTest, SegmentsCrossWhereTheyMeetButParallelsAndDotsNever) {
  const struct {
    POINT a1, a2, b1, b2;
    bool doCross;
  } cases[] = {{{0, 0}, {10, 10}, {10, 10}, {20, 0}, true},  // a shared end
               {{0, 0}, {10, 0}, {5, 1}, {5, 5}, false},
               {{0, -7}, {0, 7}, {-4, -2}, {4, 2}, true},
               {{0, 3}, {0, 7}, {-4, -2}, {4, 2}, false},
               {{0, 0}, {10, 10}, {5, 5}, {15, 15}, false},  // overlapping
               {{0, 0}, {0, 10}, {0, 5}, {0, 20}, false},
               {{0, 0}, {10, 0}, {3, 0}, {3, 0}, false}};
  for (const auto& [a1, a2, b1, b2, doCross] : cases) {
    EXPECT_EQ(doCross, Cross(a1, a2, b1, b2)) << a2.x << ", " << a2.y << " and " << b2.x;
  }
}

TEST(LineGeometryTest, EquationsAndTheFarthestCoordinatesAreAnswered) {
  EXPECT_TRUE(Utils::IsPointOnLine({0, 0}, {INT32_MIN, 0}, {INT32_MAX, 0}, 1));
  float slope = -1;
  float intercept = -1;
  Utils::CalcLineEquation({-3, 2}, {9, -2}, slope, intercept);
  EXPECT_TRUE(slope == -1.0F / 3 && intercept == 1);
  Utils::CalcLineEquation({3, 4}, {3, 9}, slope, intercept);
  EXPECT_TRUE(slope == 0 && intercept == 4);
  EXPECT_FALSE(Utils::IsPointOnLine({INT32_MAX, 9}, {INT32_MIN, 0}, {INT32_MAX, 0}, INT32_MIN));
  EXPECT_TRUE(
      Cross({INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}, {INT32_MIN, 1000}, {INT32_MAX, -9}));
}

}  // namespace
