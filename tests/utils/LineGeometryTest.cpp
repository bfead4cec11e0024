#include <parchlet/Utils.h>

#include <random>

#include <gmock/gmock.h>

#include "support/PlainHits.h"

namespace {

bool Cross(POINT a1, POINT a2, POINT b1, POINT b2) {
  const bool result = Utils::IsLineIntersect(a1, a2, b1, b2);
  EXPECT_EQ(result, Utils::IsLineIntersect(b1, b2, a1, a2)) << "whoever is asked about whom";
  return result;
}

TEST(LineGeometryTest, SegmentsCrossWhereTheyMeet) {
  EXPECT_TRUE(Cross({0, 0}, {10, 10}, {0, 10}, {10, 0}));
  EXPECT_TRUE(Cross({0, 0}, {10, 10}, {10, 10}, {20, 0})) << "a shared end";
  EXPECT_TRUE(Cross({0, 0}, {10, 0}, {5, -5}, {5, 5}));
  EXPECT_FALSE(Cross({0, 0}, {10, 0}, {5, 1}, {5, 5}));
  EXPECT_TRUE(Cross({0, 0}, {10, 0}, {10, -5}, {10, 5})) << "touching the end";
  EXPECT_TRUE(Cross({0, -7}, {0, 7}, {-4, -2}, {4, 2})) << "a vertical and a slanted one";
  EXPECT_FALSE(Cross({0, 3}, {0, 7}, {-4, -2}, {4, 2}));
  EXPECT_TRUE(Cross({-4, 1}, {4, 1}, {0, 0}, {1, 2})) << "a horizontal and a slanted one";
}

TEST(LineGeometryTest, ParallelsAndDotsNeverCross) {
  EXPECT_FALSE(Cross({0, 0}, {10, 10}, {11, 11}, {20, 20}));
  EXPECT_FALSE(Cross({0, 0}, {10, 10}, {5, 5}, {15, 15})) << "overlapping";
  EXPECT_FALSE(Cross({0, 0}, {0, 10}, {0, 5}, {0, 20}));
  EXPECT_FALSE(Cross({0, 0}, {10, 0}, {0, 0}, {10, 0}));
  EXPECT_FALSE(Cross({0, 0}, {10, 0}, {3, 0}, {3, 0}));
  EXPECT_FALSE(Cross({0, 0}, {0, 0}, {0, 0}, {0, 0}));
}

TEST(LineGeometryTest, APointIsOnALineWithinItsEllipseAndItsBox) {
  const auto isOn = [](POINT p, POINT b, int width) {
    return Utils::IsPointOnLine(p, {0, 0}, b, width);
  };
  EXPECT_TRUE(isOn({5, 1}, {10, 0}, 4));
  EXPECT_TRUE(isOn({5, 2}, {10, 0}, 4));
  EXPECT_FALSE(isOn({5, 3}, {10, 0}, 30));
  EXPECT_FALSE(isOn({5, 2}, {10, 0}, 3)) << "half of 3 is 1";
  EXPECT_FALSE(isOn({12, 0}, {10, 0}, 4));
  EXPECT_TRUE(isOn({10, 0}, {10, 0}, 4));
  EXPECT_TRUE(isOn({50, 7}, {100, 0}, 30));
  EXPECT_FALSE(isOn({50, 8}, {100, 0}, 30));
  EXPECT_TRUE(isOn({0, 0}, {0, 0}, 1));
  EXPECT_FALSE(isOn({1, 0}, {0, 0}, 30)) << "a dot is no larger than it is";
  EXPECT_TRUE(isOn({20'000, 20'000}, {20'000, 20'000}, 1));
  EXPECT_FALSE(isOn({-20'000, 20'000}, {20'000, 20'000}, 1));
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

class RandomLines : public testing::Test {
 protected:
  LONG Within(int range) { return static_cast<LONG>(random() % (2U * range + 1)) - range; }
  POINT AnyPoint(int range) { return {Within(range), Within(range)}; }

  std::mt19937 random{20};
};

// Twice the area of the triangle: on which side of the line a-b the point lies.
LONG Side(POINT a, POINT b, POINT p) {
  return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

// Coordinates up to 6 keep every crossing clear of the rounding.
TEST_F(RandomLines, CrossingsAreThoseOfExactArithmetic) {
  int crossings = 0;
  for (int i = 0; i < 200'000; ++i) {
    const POINT a1 = AnyPoint(6);
    const POINT a2 = AnyPoint(6);
    const POINT b1 = AnyPoint(6);
    const POINT b2 = AnyPoint(6);
    const LONG acrossA = Side(a1, a2, b1) * Side(a1, a2, b2);
    const LONG acrossB = Side(b1, b2, a1) * Side(b1, b2, a2);
    if (acrossA < 0 && acrossB < 0) {
      ++crossings;
      ASSERT_TRUE(Cross(a1, a2, b1, b2)) << i;
    } else if (acrossA > 0 || acrossB > 0) {
      ASSERT_FALSE(Cross(a1, a2, b1, b2)) << i;
    }
  }
  EXPECT_GT(crossings, 10'000);
}

TEST_F(RandomLines, AnswersAreThoseOfTheFormulas) {
  int hits = 0;
  for (int i = 0; i < 200'000; ++i) {
    const int range = i % 3 == 0 ? 20'000 : i % 3 == 1 ? 300 : 5;
    const POINT a = AnyPoint(range);
    const POINT b = i % 5 == 0 ? POINT{a.x + Within(2), Within(range)} : AnyPoint(range);
    const POINT c = i % 2 == 0 ? AnyPoint(range) : POINT{a.x + Within(3), a.y + Within(3)};
    const POINT d = i % 2 == 0 ? AnyPoint(range) : POINT{b.x + Within(3), b.y + Within(3)};
    const POINT spot = {(a.x + b.x) / 2 + Within(8), (a.y + b.y) / 2 + Within(8)};
    const int width = static_cast<int>(1 + random() % 30);
    const bool isOn = Utils::IsPointOnLine(spot, a, b, width);
    ASSERT_EQ(PlainlyCross(a, b, c, d), Utils::IsLineIntersect(a, b, c, d)) << i;
    ASSERT_EQ(PlainlyOnLine(spot, a, b, width), isOn) << i;
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
