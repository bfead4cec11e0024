#include <parchlet/Annotation.h>

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

TEST(AnnotationTest, MarksOfTwoPointsKeepTheFirstAndTheLatest) {
  for (int type = 1; type <= 4; ++type) {
    for (int subType = -1; subType <= 23; ++subType) {
      Annotation mark;
      mark.Init({kRed, 1, 0}, static_cast<AnnotationType>(type),
                static_cast<AnnotationSubType>(subType), "u", "s", "n");
      for (const double ratio : {0.1, 0.2, 0.3, 0.4}) {
        mark.AddPoint(P(ratio));
      }
      const bool keepsTwo = type == 3 || subType == 10 || subType == 14 || subType == 15 ||
                            subType == 19 || subType == 20;
      const std::vector<double> kept =
          keepsTwo ? std::vector{0.1, 0.4} : std::vector{0.1, 0.2, 0.3, 0.4};
      EXPECT_EQ(kept, Ratios(mark, 0)) << type << " " << subType;
    }
  }
}

TEST(AnnotationTest, SubModelsAreReplacedWholeAndEmptyOnesExist) {
  Annotation mark;
  EXPECT_EQ(0, mark.IsSubModelExist(0));
  mark.InsertPoints(0, {});
  EXPECT_EQ(1, mark.IsSubModelExist(0));
  mark.InsertPoints(UINT32_MAX, {P(0.1), P(0.2)});
  mark.InsertPoints(UINT32_MAX, {P(0.3)});
  EXPECT_THAT(Ratios(mark, UINT32_MAX), ElementsAre(0.3));
  mark.InsertPoints(0, {P(0.5)});
  mark.AddPoint(P(0.6));
  EXPECT_THAT(Ratios(mark, 0), ElementsAre(0.5, 0.6));
  mark.ClearPoints();
  EXPECT_EQ(0, mark.IsSubModelExist(0) + mark.IsSubModelExist(UINT32_MAX));
}

TEST(AnnotationTest, MovingShiftsTheUnbrokenRunOfSubModels) {
  Annotation mark;
  for (const unsigned number : {0U, 1U, 3U}) {
    mark.InsertPoints(number, {{7, 8, 0.5, 0.5}});
  }
  mark.StartMoving({0, 0, 0.2, 0.2});
  mark.Moving({0, 0, 0.3, 0.25});
  mark.Moving({0, 0, 0.35, 0.25});
  const Annotation::SubModels points = mark.GetPoints();
  for (const unsigned number : {0U, 1U}) {
    EXPECT_DOUBLE_EQ(0.65, points.at(number)[0].xRatio);
    EXPECT_DOUBLE_EQ(0.55, points.at(number)[0].yRatio);
    EXPECT_EQ(7, points.at(number)[0].x) << "pixels follow with the next drawing";
  }
  EXPECT_EQ((AnnotationPoint{7, 8, 0.5, 0.5}), points.at(3)[0]);
  Annotation unstarted;
  unstarted.AddPoint({0, 0, 0.5, 0.5});
  unstarted.Moving({0, 0, 0.0, -1.0});
  EXPECT_EQ((AnnotationPoint{0, 0, 1.5, 0.5}), unstarted.GetPoints().at(0)[0]) << "from (-1, -1)";
}

// --- Copies ---

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

TEST(AnnotationCopyTest, TheUnbrokenRunIsCopiedWithoutItsEmptySubModels) {
  const struct {
    std::vector<unsigned> filled, empty, copied;
  } cases[] = {{{0, 1, 3}, {}, {0, 1}}, {{0, 2}, {1}, {0, 2}}, {{1, 2}, {}, {}},
               {{1, 2}, {0}, {1, 2}},   {{}, {0, 1}, {}},      {{0, 4}, {1, 2}, {0}}};
  for (const auto& [filled, empty, copied] : cases) {
    Annotation source;
    for (const unsigned number : filled) {
      source.InsertPoints(number, {P(number * 0.1)});
    }
    for (const unsigned number : empty) {
      source.InsertPoints(number, {});
    }
    const Annotation copy(source);
    std::vector<unsigned> numbers;
    for (const auto& [number, list] : copy.GetPoints()) {
      numbers.push_back(number);
      EXPECT_EQ(source.GetPoints().at(number), list);
    }
    EXPECT_EQ(copied, numbers);
  }
}

TEST(AnnotationCopyTest, AssigningAMarkToItselfChangesNothing) {
  Annotation mark;
  mark.InsertPoints(0, {});
  mark.InsertPoints(3, {P(0.1)});
  const Annotation& same = mark;
  mark = same;
  EXPECT_THAT(mark.GetPoints(), ElementsAre(Pair(0, IsEmpty()), Pair(3, ElementsAre(P(0.1)))));
}

}  // namespace
