#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

// Document "doc" with pages c, a, b, in this order; b is current.
class NavigationTest : public testing::Test {
 protected:
  NavigationTest() {
    engine.NewDoc("ada", "doc");
    for (const char* page : {"c", "a", "b"}) {
      Add("doc", page, window);
    }
  }

  void Add(const std::string& doc, const std::string& page, MemoryWindow& shown) {
    EXPECT_EQ(1, engine.NewPage(doc, page, "ada", shown.Handle(), PageOf(10, 10)));
  }

  // "DOCUMENT PAGE"; "-" for what there is none of.
  std::string Current() {
    std::string doc = "-";
    std::string page = "-";
    engine.GetCurrentPageInfo(doc, page);
    return doc + " " + page;
  }

  MemoryWindow window{{0, 0, 10, 10}};
  Parchlet engine;
};

TEST_F(NavigationTest, PagesAreWalkedInTheOrderOfTheirMakingWhateverTheArgument) {
  EXPECT_EQ("", engine.GotoNextPage("doc"));
  EXPECT_EQ("doc b", Current());
  EXPECT_EQ("a", engine.GotoPreviousPage("nowhere"));
  EXPECT_EQ("c", engine.GotoPreviousPage("doc"));
  EXPECT_EQ("", engine.GotoPreviousPage("doc"));
  EXPECT_EQ("doc c", Current());
  EXPECT_EQ("a", engine.GotoNextPage(""));
  EXPECT_EQ("c", engine.GotoFirstPage("nowhere"));
  EXPECT_EQ("b", engine.GotoLastPage("nowhere"));
  EXPECT_EQ("doc b", Current());
}

TEST_F(NavigationTest, AnIndexIsBroughtIntoTheDocument) {
  for (const auto& [index, page] :
       {std::pair{2, "a"}, {0, "c"}, {99, "b"}, {INT32_MIN, "c"}, {INT32_MAX, "b"}, {1, "c"}}) {
    EXPECT_EQ(page, engine.GotoPage("nowhere", index)) << index;
    EXPECT_EQ(std::string("doc ") + page, Current());
  }
}

TEST_F(NavigationTest, OnlyNewDocMakesADocumentCurrent) {
  engine.NewDoc("ada", "later");
  EXPECT_EQ(1, engine.SetCurrentPage("doc", "a"));
  Add("doc", "d", window);
  EXPECT_EQ(1, engine.NewDoc("bob", "doc")) << "it exists";
  EXPECT_EQ("later -", Current());
  EXPECT_EQ("", engine.GotoFirstPage("doc") + engine.GotoLastPage("doc") +
                    engine.GotoNextPage("doc") + engine.GotoPage("doc", 1));
  EXPECT_EQ(0, engine.GotoPage("doc", std::string("a")));
  Add("later", "z", window);
  EXPECT_EQ(1, engine.GotoPage("doc", std::string("z")));

  EXPECT_EQ(1, engine.DelDoc("later"));
  EXPECT_EQ("- -", Current());
  EXPECT_EQ("", engine.GotoNextPage("doc") + engine.GotoPage("doc", 1));
  EXPECT_EQ(0, engine.GotoPage("doc", std::string("a")));
}

TEST_F(NavigationTest, TheCurrentPageIsTheOneThatIsPainted) {
  const auto pushes = [&](MemoryWindow& shown) {
    const std::uint64_t before = shown.PresentCount();
    return ParchletTestAccess::Refresh(engine) != 0 && shown.PresentCount() == before + 1;
  };
  MemoryWindow other({0, 0, 10, 10});
  Add("doc", "elsewhere", other);
  EXPECT_TRUE(pushes(other));
  engine.GotoFirstPage("");
  EXPECT_TRUE(pushes(window));
  engine.SetCurrentPage("doc", "elsewhere");
  EXPECT_TRUE(pushes(other));
  engine.GotoPage("", "a");
  EXPECT_TRUE(pushes(window));
  engine.NewDoc("ada", "empty");
  EXPECT_FALSE(pushes(window));
  engine.DelDoc("empty");
  EXPECT_FALSE(pushes(window));
}

TEST_F(NavigationTest, DeletingTheCurrentPageMakesPageOneCurrent) {
  for (const auto& [deleted, current] : {std::pair{"b", "doc c"}, {"c", "doc a"}, {"a", "doc -"}}) {
    EXPECT_EQ(1, engine.DelPage("doc", deleted));
    EXPECT_EQ(current, Current());
    EXPECT_EQ(engine.GetPageCount("doc") > 0 ? 1 : 0, ParchletTestAccess::Refresh(engine));
  }
}

}  // namespace
