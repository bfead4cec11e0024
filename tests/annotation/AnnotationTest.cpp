#include <cmath>
#include <tuple>

#include <parchlet/Fragments.h>

#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

AnnotationPoint P(double x, double y) {
  return {0, 0, x, y};
}

enum Ask { kAt, kAcross, kWithin, kInFrame };

// A point, the way of an eraser, or a rectangle dragged out.
struct Place {
  LONG x, y;
  LONG toX = 0;
  LONG toY = 0;
};

// What is asked about a mark of pen 6 between (20, 20) and (140, 80), worked out by hand. The
// path goes around the box. A point may be 3 pixels off a side.
const struct {
  AnnotationSubType subType;
  Ask ask;
  std::vector<Place> hits, misses;
} kHits[] = {{AnnotationSubTypeLine, kAt, {{80, 53}}, {{80, 60}, {143, 83}}},
             {AnnotationSubTypeLine, kAcross, {{80, 0, 80, 100}}, {{0, 60, 60, 60}}},
             {AnnotationSubTypeLine, kWithin, {{140, 80, 20, 20}}, {{21, 20, 140, 80}}},
             {AnnotationSubTypeLine, kInFrame, {{30, 80}}, {{30, 81}}},
             {AnnotationSubTypePath,
              kAt,
              {{80, 17}, {143, 50}, {80, 83}, {17, 50}},
              {{80, 16}, {144, 50}, {80, 84}, {16, 50}, {80, 50}}},
             {AnnotationSubTypePath, kAcross, {{80, 0, 80, 40}}, {{80, 30, 80, 70}}},
             {AnnotationSubTypePath, kWithin, {{20, 20, 140, 80}}, {{20, 20, 140, 79}}},
             {AnnotationSubTypeRectangle, kAt, {{80, 50}, {17, 83}}, {{16, 50}}},
             {AnnotationSubTypeRectangle, kAcross, {{80, 30, 80, 90}}, {{80, 30, 100, 60}}},
             {AnnotationSubTypeEllipse, kAt, {{143, 50}}, {{144, 50}, {140, 20}}},
             // An end inside, or the diamond within the ellipse; what lies between them is missed.
             {AnnotationSubTypeEllipse,
              kAcross,
              {{140, 0, 100, 30}, {60, 0, 160, 80}},
              {{104, 15, 145, 44}}},
             {AnnotationSubTypeTriangle,
              kAt,
              {{80, 60}, {80, 20}, {20, 80}, {140, 80}},
              {{80, 84}, {30, 30}, {19, 80}, {141, 80}}},
             {AnnotationSubTypeTriangle, kAcross, {{60, 60, 30, 30}}, {{70, 60, 90, 60}}},
             {AnnotationSubTypeRightTriangle, kAt, {{30, 70}}, {{60, 30}}},
             {AnnotationSubTypeRightTriangle, kAcross, {{100, 0, 100, 65}}, {{100, 0, 100, 55}}},
             {AnnotationSubTypePng, kAt, {{20, 50}}, {{19, 50}}},
             {AnnotationSubTypePng, kAcross, {{80, 30, 80, 90}}, {{80, 30, 100, 60}}},
             {AnnotationSubTypePng, kWithin, {{20, 20, 140, 80}}, {{20, 20, 139, 80}}},
             {AnnotationSubTypePng, kInFrame, {{30, 80}}, {{30, 81}}}};

bool IsHit(const Annotation& mark, Ask ask, const Place& place) {
  if (ask == kWithin) {
    return mark.IsInSelectRect({place.x, place.y, place.toX, place.toY}) != 0;
  }
  const AnnotationPoint from = {place.x, place.y, 0, 0};
  return (ask == kAcross ? mark.FindAnnotation(from, {place.toX, place.toY, 0, 0})
                         : mark.FindAnnotation(from, ask == kInFrame)) != 0;
}

TEST(AnnotationTest, AMarkIsHitWhereItsShapeIs) {
  constexpr CurrentAnnotPageSize kSize = {200, 100};
  for (const auto& [subType, ask, hits, misses] : kHits) {
    Annotation mark;
    mark.Init({kRed, 6, 0},
              subType == AnnotationSubTypePng ? AnnotationTypePicture : AnnotationTypeDrawing,
              subType, "", "", "");
    mark.InsertPoints(0, subType == AnnotationSubTypePath
                             ? PointsOn(kSize, {{20, 20}, {140, 20}, {140, 80}, {20, 80}, {20, 20}})
                             : PointsOn(kSize, {{140, 80}, {20, 20}}));
    mark.SetRectEx(kSize);
    for (const Place& place : hits) {
      EXPECT_TRUE(IsHit(mark, ask, place)) << subType << " at " << place.x << ", " << place.y;
    }
    for (const Place& place : misses) {
      EXPECT_FALSE(IsHit(mark, ask, place)) << subType << " at " << place.x << ", " << place.y;
    }
  }
}

TEST(AnnotationTest, AFractionIsThePixelThatItIsRoundedTo) {
  const struct {
    double x, y;
    POINT pixel;
  } cases[] = {{0.16, 0.26, {10, 10}},   // 9.6 and 10.4
               {-0.01, -0.05, {0, -1}},  // -0.6 and -2, a half more, toward zero
               {NAN, INFINITY, {0, INT32_MAX}},
               {-INFINITY, -1e300, {INT32_MIN, INT32_MIN}},
               {3e9, 1.0, {INT32_MAX, 40}}};
  for (const auto& [x, y, pixel] : cases) {
    const POINT found = PixelOf(P(x, y), {60, 40});
    EXPECT_EQ(pixel.x, found.x) << x;
    EXPECT_EQ(pixel.y, found.y) << y;
  }
}

// The model compares everything else.
TEST(AnnotationCopyTest, CopiesHaveAllButPropertyAndStartTick) {
  Annotation source;
  source.pictureProperty = "property";
  source.tempStartTick = 8;
  std::tie(source.hostData1, source.hostData2, source.hostData3) = std::tuple(1, 2, 3);
  source.InsertPoints(0, {P(0.1, -0.1), P(0.2, -0.2)});
  source.SetRectEx({100, 100});
  source.StartMoving({0, 0, 0.25, 0.25});
  Annotation copied(source);
  EXPECT_EQ("", copied.pictureProperty);
  EXPECT_EQ(0U, copied.tempStartTick);
  Annotation assigned;
  assigned.pictureProperty = "mine";
  assigned.tempStartTick = 77;
  assigned.InsertPoints(5, {P(0.9, 0)});
  assigned = source;
  EXPECT_EQ("mine", assigned.pictureProperty);
  EXPECT_EQ(77U, assigned.tempStartTick);
  const Annotation& same = source;
  source = same;
  for (Annotation* copy : {&copied, &assigned, &source}) {
    EXPECT_EQ(std::tuple(1, 2, 3), std::tie(copy->hostData1, copy->hostData2, copy->hostData3));
    EXPECT_EQ((RECT{10, -19, 20, -9}), AnnotationTestAccess::FrameOf(*copy));
    copy->Moving({0, 0, 0.5, 0.25});
    EXPECT_THAT(copy->GetPoints(), ElementsAre(Pair(0, ElementsAre(P(0.35, -0.1), P(0.45, -0.2)))))
        << "the drag goes on where the source's stood";
  }
}

TEST(AnnotationCopyTest, FragmentsKeepTheHeaderAndTheirOwnPoints) {
  Annotation source;
  source.annotationId = "id";
  source.pictureProperty = "property";
  source.hostData2 = 12;
  source.InsertPoints(0, std::vector<AnnotationPoint>(parchlet::kFragmentPoints * 2 + 1));
  const auto fragments = parchlet::SplitMark(source, 7);
  ASSERT_EQ(3U, fragments.size());
  EXPECT_EQ(2, fragments[2]->subModelIndex);
  fragments[2]->subModelIndex = 3;
  const std::unique_ptr<Annotation> joined = parchlet::JoinFragments(fragments);
  EXPECT_EQ("id property", joined->annotationId + " " + joined->pictureProperty);
  EXPECT_THAT((std::vector{joined->subModelIndex, joined->order, joined->hostData2}),
              ElementsAre(0, 7, 12));
  EXPECT_THAT(joined->GetPoints(),
              ElementsAre(Pair(0, SizeIs(256)), Pair(1, SizeIs(256)), Pair(3, SizeIs(1))));
  EXPECT_EQ(1U, parchlet::SplitMark(Annotation(), 0).size());
  EXPECT_EQ(nullptr, parchlet::JoinFragments({}));
  auto late = parchlet::SplitMark(source, 7);
  late.erase(late.begin());
  const std::unique_ptr<Annotation> cut = parchlet::JoinFragments(late);
  EXPECT_EQ(0, cut->subModelIndex);
  EXPECT_THAT(cut->GetPoints(), ElementsAre(Pair(1, SizeIs(256)), Pair(2, SizeIs(1))));
}

}  // namespace
