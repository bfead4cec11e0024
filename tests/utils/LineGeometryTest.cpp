#include <parchlet/Utils.h>

#include <random>

#include <gmock/gmock.h>

#include "model/PlainShapes.h"

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
               {{0, 0}, {10, 0}, {5, -5}, {5, 5}, true},
               {{0, 0}, {10, 0}, {5, 1}, {5, 5}, false},
               {{0, 0}, {10, 0}, {10, -5}, {10, 5}, true},
               {{0, -7}, {0, 7}, {-4, -2}, {4, 2}, true},
               {{0, 3}, {0, 7}, {-4, -2}, {4, 2}, false},
               {{-4, 1}, {4, 1}, {0, 0}, {1, 2}, true},
               {{0, 0}, {10, 10}, {11, 11}, {20, 20}, false},
               {{0, 0}, {10, 10}, {5, 5}, {15, 15}, false},  // overlapping
               {{0, 0}, {0, 10}, {0, 5}, {0, 20}, false},
               {{0, 0}, {10, 0}, {0, 0}, {10, 0}, false},
               {{0, 0}, {10, 0}, {3, 0}, {3, 0}, false}};
  for (const auto& [a1, a2, b1, b2, doCross] : cases) {
    EXPECT_EQ(doCross, Cross(a1, a2, b1, b2)) << a2.x << ", " << a2.y << " and " << b2.x;
  }
}

TEST(LineGeometryTest, ALineHasASlopeAndAnIntercept) {
  float slope = -1;
  float intercept = -1;
  Utils::CalcLineEquation({0, 1}, {2, 5}, slope, intercept);
  EXPECT_EQ(2, slope);
  EXPECT_EQ(1, intercept);
  Utils::CalcLineEquation({3, 4}, {3, 9}, slope, intercept);
  EXPECT_EQ(0, slope);
  EXPECT_EQ(4, intercept);
  Utils::CalcLineEquation({-3, 2}, {9, -2}, slope, intercept);
  EXPECT_EQ(-1.0F / 3, slope);
  EXPECT_EQ(1, intercept);
}

TEST(LineGeometryTest, AnswersAreThoseOfTheFormulas) {
  std::mt19937 random(20);
  const auto within = [&random](int range) {
    return static_cast<LONG>(random() % (2U * range + 1)) - range;
  };
  int hits = 0;
  for (int i = 0; i < 200'000; ++i) {
    const int range = i % 3 == 0 ? 20'000 : i % 3 == 1 ? 300 : 5;
    const auto any = [&] { return POINT{within(range), within(range)}; };
    const POINT a = any();
    const POINT b = i % 5 == 0 ? POINT{a.x + within(2), within(range)} : any();
    const POINT c = i % 2 == 0 ? any() : POINT{a.x + within(3), a.y + within(3)};
    const POINT d = i % 2 == 0 ? any() : POINT{b.x + within(3), b.y + within(3)};
    const POINT spot = {(a.x + b.x) / 2 + within(8), (a.y + b.y) / 2 + within(8)};
    const int width = static_cast<int>(1 + random() % 30);
    const bool isOn = Utils::IsPointOnLine(spot, a, b, width);
    ASSERT_EQ(DoCross({a, b}, {c, d}), Utils::IsLineIntersect(a, b, c, d)) << i;
    ASSERT_EQ(IsOnLine(spot, {a, b}, width), isOn) << i;
    hits += isOn ? 1 : 0;
  }
  EXPECT_GT(hits, 10'000);
}

TEST(LineGeometryTest, EveryCoordinateGetsAnAnswer) {
  const LONG extremes[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX};
  for (const LONG x : extremes) {
    for (const LONG y : extremes) {
      for (const int width : {INT32_MIN, -5, 0, INT32_MAX}) {
        float slope = 0;
        float intercept = 0;
        Utils::CalcLineEquation({x, y}, {y, x}, slope, intercept);
        EXPECT_EQ(Utils::IsPointOnLine({x, y}, {x, x}, {y, y}, width),
                  Utils::IsPointOnLine({x, y}, {y, y}, {x, x}, width));
        static_cast<void>(Utils::IsLineIntersect({x, y}, {y, x}, {0, 0}, {y, y}));
      }
    }
  }
  EXPECT_TRUE(Utils::IsPointOnLine({0, 0}, {INT32_MIN, 0}, {INT32_MAX, 0}, 1));
  EXPECT_TRUE(
      Cross({INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}, {INT32_MIN, 1000}, {INT32_MAX, -9}));
}

}  // namespace
