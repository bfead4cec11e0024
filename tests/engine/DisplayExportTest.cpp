// Exports of what a display of the layer's own shows.
#include <parchlet/Display.h>

#include "support/PictureFile.h"
#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"
#include "support/Whiteboard.h"

namespace {

TEST(DisplayExportTest, TheScreenIsWrittenWithTheWindowOnIt) {
  const TemporaryFolder folder;
  Whiteboard board(200, 100);
  const auto save = [&](const char* name, const auto& source) {
    return board.engine.SavePage("doc", "page", folder.File(name), source);
  };
  const auto read = [&](const char* name) { return ReadPicture(folder.File(name)); };
  board.window.SetScreenRect({300, 200, 500, 300});
  board.engine.SetPageBackgroundColor(kRed);
  board.Paint();
  ASSERT_EQ(1, save("screen.png", std::wstring(L"MEMORY-1")));
  const parchlet::Picture written = read("screen.png");
  ASSERT_EQ(std::pair(1920, 1080), std::pair(written.width, written.height));
  const Frame screen({written.width, written.height, written.pixels});
  EXPECT_EQ((RECT{300, 200, 500, 300}), screen.InkBox(kBlack));
  HWND const gone = MemoryWindow({0, 0, 30, 20}).Handle();
  for (HWND const window : {board.window.Handle(), gone}) {  // the screen, and the page's surface
    ASSERT_EQ(1, save("area.png", window));
    EXPECT_EQ(200, read("area.png").width);
    EXPECT_THAT(read("area.png"), IsAll(kRed));
  }
}

// Its first capture throws.
class FirstThrows final : public Display {
 public:
  FirstThrows() { SetDisplay(this); }
  ~FirstThrows() { SetDisplay(nullptr); }
  FirstThrows(const FirstThrows&) = delete;
  FirstThrows& operator=(const FirstThrows&) = delete;

  std::vector<DisplayMonitor> GetMonitors() const override { return {{"D", {0, 0, 20, 10}}}; }
  bool Capture(const RECT& /*area*/, std::uint32_t* /*pixels*/) override {
    if (captures++ == 0) {
      throw 7;
    }
    return true;
  }

  int captures = 0;
};

TEST(DisplayExportTest, EveryPageIsTriedAndTheLastOneDecides) {
  FirstThrows display;
  const TemporaryFolder out;
  const std::string to = out.Path().string();
  Whiteboard board(20, 10);
  for (const char* page : {"b", "a"}) {
    EXPECT_EQ(1, board.engine.NewPage("doc", page, "", board.window.Handle(), PageOf(20, 10)));
  }
  EXPECT_EQ(1, board.engine.SaveDocument("doc", to, "", std::wstring(L"D")));
  EXPECT_EQ(3, display.captures);
  {
    const SmallDisk disk(64);
    EXPECT_EQ(0, board.engine.SaveDocument("doc", to, "", std::wstring()));
  }
  board.engine.NewDoc("ada", "empty");
  EXPECT_EQ(0, board.engine.SaveDocument("empty", to, "", HWND{nullptr}));
  EXPECT_EQ(0, board.engine.SaveDocument("doc", out.File("none"), "", HWND{nullptr}));
  EXPECT_EQ(2U, out.FileCount());
}

}  // namespace
