#include "replay/Fragments.h"

#include <gtest/gtest.h>

namespace replay {
namespace {

Annotation MakePath(int pointCount) {
  Annotation path;
  path.Init({0xFF102030, 9, 0}, AnnotationTypeDrawing, AnnotationSubTypePath, "u", "desk", "Ada");
  path.SetAnnotationId("id-1");
  for (int number = 0; number < pointCount; ++number) {
    path.AddPoint({number, -number, number / 8.0, number / -4.0});
  }
  return path;
}

TEST(FragmentsTest, ALongPathIsSharedOutInOrderAndEveryShareNamesTheWholeMark) {
  const std::vector<Fragment> fragments = Split(MakePath(600), 17);
  ASSERT_EQ(fragments.size(), 3U);
  int next = 0;
  for (std::size_t index = 0; index < fragments.size(); ++index) {
    const Annotation& fragment = *fragments[index];
    EXPECT_EQ(fragment.subModelIndex, static_cast<int>(index));
    EXPECT_EQ(fragment.GetAnnotationId(), "id-1");
    EXPECT_EQ(fragment.userId + "/" + fragment.userSubId + "/" + fragment.nickname, "u/desk/Ada");
    EXPECT_EQ(fragment.order, 17);
    EXPECT_EQ(fragment.pen.color, 0xFF102030U);
    EXPECT_EQ(fragment.pen.width, 9);
    const Annotation::SubModels points = fragment.GetPoints();
    ASSERT_EQ(points.size(), 1U);
    ASSERT_LE(points.at(0).size(), kMaxFragmentPoints);
    for (const AnnotationPoint& point : points.at(0)) {
      EXPECT_EQ(point.x, next);
      EXPECT_EQ(point.yRatio, next / -4.0);
      ++next;
    }
  }
  EXPECT_EQ(next, 600);
}

TEST(FragmentsTest, TheSizeOfAFragmentIsReachedBeforeThereIsASecond) {
  EXPECT_EQ(Split(MakePath(1), 1).size(), 1U);
  EXPECT_EQ(Split(MakePath(256), 1).size(), 1U);
  EXPECT_EQ(Split(MakePath(257), 1).size(), 2U);
}

TEST(FragmentsTest, AMarkThatCameInFragmentsGivesTheSameOnesAgain) {
  const std::vector<Fragment> sent = Split(MakePath(300), 1);
  Annotation whole(*sent[0]);
  whole.InsertPoints(1, sent[1]->GetPoints().at(0));
  const std::vector<Fragment> again = Split(whole, 2);
  ASSERT_EQ(again.size(), 2U);
  EXPECT_EQ(again[0]->GetPoints().at(0).size(), 256U);
  EXPECT_EQ(again[1]->subModelIndex, 1);
  EXPECT_EQ(again[1]->GetPoints().at(0).front().x, 256);
}

}  // namespace
}  // namespace replay
