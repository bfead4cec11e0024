#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

// Document "doc" with pages c, a, b, in this order; b is current.
class NavigationTest : public testing::Test {
 protected:
  NavigationTest() {
    engine.NewDoc("ada", "doc");
    for (const char* page : {"c", "a", "b"}) {
      Add("doc", page);
    }
  }

  void Add(const std::string& doc, const std::string& page) {
    EXPECT_EQ(1, engine.NewPage(doc, page, "ada", window.Handle(), PageOf(10, 10)));
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

TEST_F(NavigationTest, PagesAreWalkedInTheOrderOfTheirMaking) {
  EXPECT_EQ("doc b", Current());
  EXPECT_EQ("", engine.GotoNextPage("doc"));
  EXPECT_EQ("doc b", Current());
  EXPECT_EQ("a", engine.GotoPreviousPage("doc"));
  EXPECT_EQ("c", engine.GotoPreviousPage("doc"));
  EXPECT_EQ("", engine.GotoPreviousPage("doc"));
  EXPECT_EQ("doc c", Current());
  EXPECT_EQ("a", engine.GotoNextPage("doc"));
  EXPECT_EQ("c", engine.GotoFirstPage("doc"));
  EXPECT_EQ("b", engine.GotoLastPage("doc"));
  EXPECT_EQ("doc b", Current());
}

TEST_F(NavigationTest, AnIndexIsBroughtIntoTheDocument) {
  const struct {
    int index;
    const char* page;
  } cases[] = {{2, "a"}, {0, "c"}, {99, "b"}, {INT32_MIN, "c"}, {INT32_MAX, "b"}, {1, "c"}};
  for (const auto& [index, page] : cases) {
    EXPECT_EQ(page, engine.GotoPage("doc", index)) << index;
    EXPECT_EQ(std::string("doc ") + page, Current());
  }
}

TEST_F(NavigationTest, AnIdIsLookedForInTheCurrentDocumentAlone) {
  engine.NewDoc("ada", "later");
  Add("later", "z");
  EXPECT_EQ(0, engine.GotoPage("doc", std::string("a")));
  EXPECT_EQ(1, engine.GotoPage("doc", std::string("z")));
  EXPECT_EQ("later z", Current());
}

TEST_F(NavigationTest, TheDocumentArgumentIsIgnored) {
  EXPECT_EQ("c", engine.GotoFirstPage("nowhere"));
  EXPECT_EQ("b", engine.GotoLastPage(""));
  EXPECT_EQ("a", engine.GotoPage("nowhere", 2));
}

TEST_F(NavigationTest, OnlyNewDocMakesADocumentCurrent) {
  engine.NewDoc("ada", "later");
  EXPECT_EQ("later -", Current());
  EXPECT_EQ(1, engine.SetCurrentPage("doc", "a"));
  EXPECT_EQ("later -", Current());
  Add("doc", "d");
  EXPECT_EQ("later -", Current());
  EXPECT_EQ("", engine.GotoFirstPage("doc"));
  EXPECT_EQ("", engine.GotoPage("doc", 1));
  EXPECT_EQ(1, engine.NewDoc("bob", "doc")) << "it exists";
  EXPECT_EQ("later -", Current());

  EXPECT_EQ(1, engine.DelDoc("later"));
  EXPECT_EQ("- -", Current());
  EXPECT_EQ("", engine.GotoNextPage("doc"));
  EXPECT_EQ("", engine.GotoPage("doc", 1));
  EXPECT_EQ(0, engine.GotoPage("doc", std::string("a")));
  engine.NewDoc("ada", "last");
  EXPECT_EQ("last -", Current());
}

TEST_F(NavigationTest, TheCurrentPageIsTheOneThatIsPainted) {
  const auto pushes = [&] { return ParchletTestAccess::Refresh(engine) != 0; };
  MemoryWindow other({0, 0, 10, 10});
  engine.NewPage("doc", "elsewhere", "ada", other.Handle(), PageOf(10, 10));
  EXPECT_TRUE(pushes());
  EXPECT_EQ(0U, window.PresentCount());
  engine.GotoFirstPage("");
  EXPECT_TRUE(pushes());
  EXPECT_EQ(1U, window.PresentCount());
  engine.DelPage("doc", "c");
  engine.SetCurrentPage("doc", "elsewhere");
  EXPECT_TRUE(pushes());
  EXPECT_EQ(2U, other.PresentCount());
  engine.NewDoc("ada", "empty");
  EXPECT_FALSE(pushes());
  engine.DelDoc("empty");
  EXPECT_FALSE(pushes());
}

TEST_F(NavigationTest, DeletingTheCurrentPageMakesPageOneCurrent) {
  EXPECT_EQ(1, engine.DelPage("doc", "b"));
  EXPECT_EQ("doc c", Current());
  EXPECT_EQ(1, engine.DelPage("doc", "c"));
  EXPECT_EQ("doc a", Current());
  EXPECT_EQ(1, engine.DelPage("doc", "a"));
  EXPECT_EQ("doc -", Current());
  EXPECT_EQ(0, ParchletTestAccess::Refresh(engine));
}

}  // namespace
