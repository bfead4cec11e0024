#include <parchlet/Fragments.h>

#include "annotation/MarkLimits.h"
#include "c/Call.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {60, 40};

std::vector<std::size_t> Sizes(const Annotation& mark) {
  std::vector<std::size_t> sizes;
  for (const auto& [number, points] : mark.GetPoints()) {
    sizes.push_back(points.size());
  }
  return sizes;
}

// What the model does not compare.
class MergingTest : public testing::Test {
 protected:
  MergingTest() : board(kSize.width, kSize.height), engine(board.engine) {
    engine.SetUserInfo("ada", "desk", "Ada");
  }

  int HandOver(std::unique_ptr<Annotation> mark) {
    return engine.AddAnnotationFromRemote("doc", "page", std::move(mark));
  }
  // Hands over so many points as a fragment of bob's mark "m". Returns the mark.
  const Annotation& Receive(int fragment, std::size_t count) {
    auto mark = Mark("m").By("bob").Fragment(fragment).Make();
    mark->InsertPoints(0, std::vector<AnnotationPoint>(count, {3, 4, 0.05, 0.1}));
    EXPECT_EQ(1, HandOver(std::move(mark)));
    return *Find("m");
  }
  // Hands over an object that a page owns.
  int HandBack(Annotation* mark) { return engine.AddAnnotationFromRemote("doc", "page", mark); }
  Annotation* Find(const std::string& id) { return engine.GetAnnotation("doc", "page", "bob", id); }
  Whiteboard board;
  Parchlet& engine;
};

TEST_F(MergingTest, ThePagesOwnMarkHandedOverAgainChangesNoPoints) {
  HandOver(Mark("m").By("bob").Fragment(2).Points(kSize, {{1, 1}, {9, 9}}).Make());
  Annotation* mark = Find("m");
  const std::vector<std::size_t> before = Sizes(*mark);
  for (const int index : {2, 5, 0, -1}) {
    mark->subModelIndex = index;
    EXPECT_EQ(1, HandBack(mark));
    EXPECT_EQ(before, Sizes(*mark)) << "as fragment " << index;
    EXPECT_EQ(1, HandOver(std::unique_ptr<Annotation>(mark)));
    EXPECT_EQ(before, Sizes(*mark)) << "as fragment " << index;
    // A handle of the C interface.
    auto* host = reinterpret_cast<ParchletEngine*>(&engine);
    EXPECT_EQ(PARCHLET_YES, ParchletAddAnnotationFromRemote(host, "doc", "page", HandleOf(mark)));
    EXPECT_EQ(before, Sizes(*mark)) << "as fragment " << index;
  }
  EXPECT_EQ(mark, Find("m"));
}

TEST_F(MergingTest, TheEchoOfALongDrawingIsWholeInAnyOrder) {
  engine.StartDrawing("doc", "page", {5, 5});
  const Annotation* drawing = board.Page().GetCurrentAnnotation();
  for (std::size_t i = 1; i < kMaxMarkPoints; ++i) {
    engine.MoveDrawing({5 + static_cast<LONG>(i % 50), 5});
  }
  engine.EndDrawing();
  std::vector<std::unique_ptr<Annotation>> echo = parchlet::SplitMark(*drawing, 1);
  const std::size_t fragments = echo.size();
  for (; !echo.empty(); echo.pop_back()) {
    HandOver(std::move(echo.back()));
  }
  EXPECT_EQ(std::vector<std::size_t>(fragments, parchlet::kFragmentPoints), Sizes(*drawing));
  HandOver(Mark(drawing->annotationId)
               .By("ada")
               .Fragment(static_cast<int>(fragments))
               .Points(kSize, {{1, 1}})
               .Make());
  EXPECT_EQ(std::size_t{0}, Sizes(*drawing).back()) << "there is no room beyond the limit";
}

TEST_F(MergingTest, AMarkIsKeptAsFarAsItsLimit) {
  using Counts = std::vector<std::size_t>;
  EXPECT_EQ(Counts{kMaxMarkPoints}, Sizes(Receive(0, kMaxMarkPoints + 1)));
  Receive(0, kMaxMarkPoints - 4);
  EXPECT_EQ((Counts{kMaxMarkPoints - 4, 4}), Sizes(Receive(1, 10)));
  EXPECT_EQ((Counts{kMaxMarkPoints - 4, 4, 0}), Sizes(Receive(2, 10)));
  board.Paint();
  EXPECT_EQ((Counts{9, 4, 0}), Sizes(Receive(0, 9))) << "shorter ones go on";
  EXPECT_EQ((Counts{9, 4, 10}), Sizes(Receive(2, 10))) << "and make room";
}

TEST_F(MergingTest, AMarkHasSoManyFragmentsAndNoMore) {
  const int last = static_cast<int>(kMaxSubModels) - 1;
  for (int fragment = 0; fragment <= last; ++fragment) {
    Receive(fragment, 2);
  }
  EXPECT_EQ(kMaxSubModels, Receive(last + 1, 2).GetPoints().size());
  EXPECT_EQ(std::size_t{5}, Sizes(Receive(last, 5)).back()) << "those that it has are replaced";
}

TEST_F(MergingTest, AMarkThatArrivesWholeIsCutAndItsNameBetweenCharacters) {
  std::string name = "n";
  while (name.size() <= kMaxNicknameBytes) {
    name += "\xF0\x9F\x98\x80";
  }
  const std::string broken(kMaxNicknameBytes + 1, '\xAE');
  for (const auto& [sent, kept] :
       {std::pair(name, kMaxNicknameBytes - 3), std::pair(broken, kMaxNicknameBytes)}) {
    auto mark = Mark(sent.substr(0, 2)).By("bob").Make();
    mark->nickname = sent;
    for (unsigned number = 0; number <= kMaxSubModels; ++number) {
      mark->InsertPoints(number, {{}});
    }
    EXPECT_EQ(1, HandOver(std::move(mark)));
    const Annotation* known = Find(sent.substr(0, 2));
    EXPECT_EQ(sent.substr(0, kept), known->nickname);
    EXPECT_EQ(kMaxSubModels, known->GetPoints().size());
  }
}

}  // namespace
