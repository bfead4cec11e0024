#include <array>

#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

TEST(RegistryTest, ADocumentIsMadeOnceAndKeepsItsFirstCreator) {
  Parchlet engine;
  EXPECT_EQ(1, engine.NewDoc("ada", "d"));
  EXPECT_EQ(1, engine.NewDoc("bob", "d"));
  EXPECT_EQ(1, engine.NewDoc("bob", "D")) << "ids are compared byte by byte";
  EXPECT_EQ(1, engine.NewDoc("eve", ""));
  EXPECT_EQ(3, engine.GetDocCount());
  std::string creator = "untouched";
  EXPECT_EQ(0, engine.GetDocCreator("x", creator));
  EXPECT_EQ("untouched", creator);
  EXPECT_EQ(1, engine.GetDocCreator("d", creator));
  EXPECT_EQ("ada", creator);
  EXPECT_EQ(1, engine.DelDoc(""));
  EXPECT_EQ(0, engine.DelDoc(""));
  EXPECT_EQ(2, engine.GetDocCount());
}

TEST(RegistryTest, AnExistingPageIsLeftAlone) {
  Whiteboard board;
  AnnotationPage* page = &board.Page();
  MemoryWindow other({0, 0, 10, 10});
  EXPECT_EQ(1, board.engine.NewPage("doc", "page", "bob", other.Handle(), PageOf(10, 10)));
  EXPECT_EQ(page, &board.Page());
  EXPECT_EQ("ada", page->creator);
  board.engine.NewDoc("bob", "second");
  EXPECT_EQ(1, board.engine.NewPage("second", "page", "bob", other.Handle(), PageOf(10, 10)));
  EXPECT_NE(page, board.engine.GetPagePtr("second", "page")) << "another document, another page";
}

TEST(RegistryTest, APageThatCannotPaintIsRefused) {
  Whiteboard board;
  MemoryWindow dead({0, 0, 10, 10});
  HWND const handle = dead.Handle();
  UnregisterLayeredWindow(handle);
  HWND const alive = board.window.Handle();
  EXPECT_EQ(0, board.engine.NewPage("doc", "x", "ada", nullptr, PageOf(10, 10)));
  EXPECT_EQ(0, board.engine.NewPage("doc", "x", "ada", handle, PageOf(10, 10)));
  EXPECT_EQ(0, board.engine.NewPage("none", "x", "ada", alive, PageOf(10, 10)));
  for (const auto& [width, height] : {std::pair{0, 10},
                                      {10, 0},
                                      {-5, 10},
                                      {10, INT32_MIN},
                                      {INT32_MAX, INT32_MAX},
                                      {40'000, 1}}) {
    EXPECT_EQ(0, board.engine.NewPage("doc", "x", "ada", alive, PageOf(width, height)))
        << width << " x " << height;
  }
  EXPECT_EQ(1, board.engine.GetPageCount("doc"));
}

TEST(RegistryTest, IndexesStayDenseWhenAPageGoes) {
  Whiteboard board;
  for (const char* id : {"b", "a"}) {
    board.engine.NewPage("doc", id, "ada", board.window.Handle(), PageOf(10, 10));
  }
  EXPECT_EQ(3, board.engine.GetPageIndex("doc", "a"));
  EXPECT_EQ(0, board.engine.DelPage("doc", "x"));
  EXPECT_EQ(0, board.engine.DelPage("x", "b"));
  EXPECT_EQ(1, board.engine.DelPage("doc", "b"));
  EXPECT_EQ(2, board.engine.GetPageIndex("doc", "a"));
  EXPECT_EQ(-1, board.engine.GetPageIndex("doc", "b"));
  EXPECT_EQ(2, board.engine.GetPageCount("doc"));
  EXPECT_EQ(0, board.engine.GetPageCount("x"));
}

TEST(RegistryTest, TheCreatorIsCopiedWithoutAClosingZeroOrNotAtAll) {
  Whiteboard board;
  board.engine.NewPage("doc", "five", "12345", board.window.Handle(), PageOf(10, 10));
  board.engine.NewPage("doc", "none", "", board.window.Handle(), PageOf(10, 10));
  const auto read = [&](const char* page, int size) {
    std::array<char, 8> buffer{};
    buffer.fill('#');
    const int result = board.engine.GetPageCreator("doc", page, buffer.data(), size);
    return std::to_string(result) + " " + std::string(buffer.data(), buffer.size());
  };
  EXPECT_EQ("1 12345###", read("five", 5));
  EXPECT_EQ("1 12345###", read("five", 8));
  EXPECT_EQ(std::string("0 \0\0\0\0####", 10), read("five", 4));
  EXPECT_EQ("0 ########", read("none", 8));
  EXPECT_EQ("0 ########", read("missing", 8));
  EXPECT_EQ("0 ########", read("five", 0));
  EXPECT_EQ("0 ########", read("five", -3));
  EXPECT_EQ(0, board.engine.GetPageCreator("doc", "five", nullptr, 8));
}

}  // namespace
