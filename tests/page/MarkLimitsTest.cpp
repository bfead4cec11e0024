#include "annotation/MarkLimits.h"

#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {60, 40};

class MarkLimitsTest : public testing::Test {
 protected:
  // Hands over `count` points of one place as a fragment of the mark "m", and gives the mark.
  const Annotation& Receive(int fragment, std::size_t count, const std::string& nickname = "") {
    auto mark = Mark("m").By("bob").Fragment(fragment).Make();
    mark->nickname = nickname;
    mark->InsertPoints(0, std::vector<AnnotationPoint>(count, {3, 4, 0.05, 0.1}));
    EXPECT_EQ(1, board.engine.AddAnnotationFromRemote("doc", "page", mark.get()));
    const Annotation* known = board.engine.GetAnnotation("doc", "page", "bob", "m");
    if (known == mark.get()) {
      static_cast<void>(mark.release());
    }
    return *known;
  }
  static std::size_t CountPoints(const Annotation& mark) {
    std::size_t count = 0;
    for (const auto& [number, list] : mark.GetPoints()) {
      count += list.size();
    }
    return count;
  }

  Whiteboard board{kSize.width, kSize.height};
};

TEST_F(MarkLimitsTest, AMarkIsKeptAsFarAsItsLimit) {
  EXPECT_EQ(kMaxMarkPoints, CountPoints(Receive(0, kMaxMarkPoints + 1)));
  Receive(0, kMaxMarkPoints - 4);
  EXPECT_EQ(std::size_t{4}, Receive(1, 10).GetPoints().at(1).size());
  EXPECT_EQ(kMaxMarkPoints, CountPoints(Receive(2, 10)));
  board.Paint();
  EXPECT_EQ(std::size_t{9}, Receive(0, 9).GetPoints().at(0).size()) << "shorter ones go on";
  EXPECT_EQ(std::size_t{10}, Receive(2, 10).GetPoints().at(2).size()) << "and make room";
}

TEST_F(MarkLimitsTest, AMarkHasSoManyFragmentsAndNoMore) {
  const int last = static_cast<int>(kMaxSubModels) - 1;
  for (int fragment = 0; fragment <= last; ++fragment) {
    Receive(fragment, 2);
  }
  EXPECT_EQ(kMaxSubModels, Receive(last + 1, 2).GetPoints().size());
  EXPECT_EQ(std::size_t{5}, Receive(last, 5).GetPoints().at(kMaxSubModels - 1).size())
      << "those that it has are still replaced";
}

TEST_F(MarkLimitsTest, ANameIsCutBetweenCharacters) {
  const std::string wide = "\xE5\xAE\x89";
  std::string name;
  while (name.size() <= kMaxNicknameBytes) {
    name += wide;
  }
  const std::string kept = Receive(0, 2, name).nickname;
  EXPECT_EQ(name.substr(0, kMaxNicknameBytes / 3 * 3), kept);

  Annotation* whole = Mark("whole").By("bob").Release();
  whole->nickname = std::string(kMaxNicknameBytes + 1, '\xAE');
  for (unsigned number = 0; number <= kMaxSubModels; ++number) {
    whole->InsertPoints(number, {{}});
  }
  EXPECT_EQ(1, board.engine.AddAnnotationFromRemote("doc", "page", whole));
  EXPECT_EQ("", whole->nickname) << "there is no character's start";
  EXPECT_EQ(kMaxSubModels, whole->GetPoints().size());
}

}  // namespace
