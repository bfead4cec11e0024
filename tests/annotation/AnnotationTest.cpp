#include <parchlet/Annotation.h>

#include "model/PlainMark.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

AnnotationPoint P(double ratio) {
  return {static_cast<int>(ratio * 100), 0, ratio, -ratio};
}

std::vector<double> Ratios(const Annotation& mark, unsigned subModel) {
  const Annotation::SubModels points = mark.GetPoints();
  std::vector<double> ratios;
  for (const AnnotationPoint& point : points.at(subModel)) {
    ratios.push_back(point.xRatio);
  }
  return ratios;
}

TEST(AnnotationTest, EveryPixelAroundAMarkIsHitAsTheFormulasSay) {
  for (const int subType : {0, 10, 14, 15, 19, 20}) {
    for (int width = 1; width < 14; ++width) {
      PlainMark plain;
      plain.subType = static_cast<AnnotationSubType>(subType);
      plain.pen = {kRed, width, 0};
      plain.points[0] = PointsOn({100, 100}, {{40 - width, 20}, {15, 30 + 2 * width}});
      Annotation mark;
      mark.Init(plain.pen, plain.type, plain.subType, "", "", "");
      mark.InsertPoints(0, plain.points[0]);
      for (int i = 0; i < 80 * 80; ++i) {
        const POINT at = {i % 80, i / 80};
        ASSERT_EQ(plain.IsHit(at, false) ? 1 : 0, mark.FindAnnotation({at.x, at.y, 0, 0}, false))
            << subType << " of width " << width << " at " << at.x << ", " << at.y;
      }
    }
  }
}

void FillIn(Annotation& mark) {
  mark.Init({kRed, 9, 1}, AnnotationTypePicture, AnnotationSubTypeLine, "u", "s", "n");
  mark.annotationId = "id";
  mark.pictureProperty = "property";
  mark.hostData1 = 1;
  mark.hostData2 = 2;
  mark.hostData3 = 3;
  mark.subModelIndex = 4;
  mark.order = 5;
  mark.erased = 6;
  mark.tipVisible = 0;
  mark.tempStartTick = 8;
  mark.InsertPoints(0, {P(0.1), P(0.2)});
  mark.SetRectEx({100, 100});
  mark.StartMoving({0, 0, 0.25, 0.25});
}

void ExpectCopied(Annotation& copy) {
  EXPECT_EQ("id u s n",
            copy.annotationId + " " + copy.userId + " " + copy.userSubId + " " + copy.nickname);
  EXPECT_THAT((std::vector{copy.hostData1, copy.hostData2, copy.hostData3, copy.subModelIndex,
                           copy.order, copy.erased, copy.tipVisible, int{copy.type},
                           int{copy.subType}, copy.pen.width, copy.pen.fill}),
              ElementsAre(1, 2, 3, 4, 5, 6, 0, 3, 10, 9, 1));
  EXPECT_EQ(kRed, copy.pen.color);
  EXPECT_EQ((RECT{10, -19, 20, -9}), AnnotationTestAccess::FrameOf(copy));
  copy.Moving({0, 0, 0.5, 0.25});
  EXPECT_THAT(Ratios(copy, 0), ElementsAre(testing::DoubleEq(0.35), testing::DoubleEq(0.45)))
      << "the drag goes on where the source's stood";
}

TEST(AnnotationCopyTest, CopiesHaveAllButPropertyAndStartTick) {
  Annotation source;
  FillIn(source);
  Annotation copy(source);
  ExpectCopied(copy);
  EXPECT_EQ("", copy.pictureProperty);
  EXPECT_EQ(0U, copy.tempStartTick);

  Annotation assigned;
  assigned.pictureProperty = "mine";
  assigned.tempStartTick = 77;
  assigned.InsertPoints(5, {P(0.9)});
  assigned = source;
  EXPECT_EQ(0, assigned.IsSubModelExist(5));
  ExpectCopied(assigned);
  EXPECT_EQ("mine", assigned.pictureProperty);
  EXPECT_EQ(77U, assigned.tempStartTick);
  EXPECT_THAT(Ratios(source, 0), ElementsAre(0.1, 0.2));
}

TEST(AnnotationCopyTest, AssigningAMarkToItselfChangesNothing) {
  Annotation mark;
  mark.InsertPoints(0, {});
  mark.InsertPoints(3, {P(0.1)});
  EXPECT_EQ(1, mark.IsSubModelExist(3));
  const Annotation& same = mark;
  mark = same;
  EXPECT_THAT(mark.GetPoints(), ElementsAre(Pair(0, IsEmpty()), Pair(3, ElementsAre(P(0.1)))));
}

}  // namespace
