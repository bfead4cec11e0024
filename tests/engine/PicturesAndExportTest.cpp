// Pictures on pages and behind them, and pages as image files.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <set>

#include <parchlet/Utils.h>

#include "platform/image/Picture.h"
#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"
#include "support/Whiteboard.h"

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class PicturesAndExportTest : public testing::Test {
 protected:
  PicturesAndExportTest() {
    WritePicture("red.png", 50, 25, kRed);
    WritePicture("wide.png", 400, 50, kBlue);
  }

  void WritePicture(const std::string& name, int width, int height, std::uint32_t color) {
    const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height), color);
    ASSERT_TRUE(SavePicture({pixels.data(), width, height, width * 4L}, PictureEncoder::kPng,
                            folder.File(name)));
  }

  std::string Bytes(const std::string& name) { return ReadFile(folder.File(name)); }

  Picture Read(const std::string& name) {
    const std::string bytes = Bytes(name);
    return DecodePicture(std::as_bytes(std::span(bytes.data(), bytes.size())));
  }

  TemporaryFolder folder;
  Whiteboard board;  // 200 x 100
};

TEST_F(PicturesAndExportTest, APictureLiesAtTheOriginInItsOwnSizeOrHalfThePages) {
  Annotation* placed =
      board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "note", false);
  ASSERT_NE(nullptr, placed);
  EXPECT_EQ(AnnotationSubTypePng, placed->subType);
  EXPECT_EQ("note", placed->pictureProperty);
  EXPECT_EQ(placed, board.engine.GetLocalAnnotation("doc", "page", placed->GetAnnotationId()));
  EXPECT_EQ((RECT{0, 0, 50, 25}), board.Paint().InkBox());

  ASSERT_NE(nullptr,
            board.engine.AddPictureFromStream("doc", "page", Bytes("wide.png"), "", false));
  EXPECT_EQ((RECT{0, 0, 100, 50}), board.Paint().InkBox());
}

TEST_F(PicturesAndExportTest, ABackgroundIsFittedUnderEverythingAndReplacedByTheNext) {
  ASSERT_NE(nullptr, board.engine.AddPictureFromStream("doc", "page", Bytes("wide.png"), "", true));
  Frame shown = board.Paint();
  EXPECT_EQ((RECT{0, 37, 200, 62}), shown.InkBox());  // 200 x 25 in the middle, (100 - 25) / 2 = 37
  ASSERT_NE(nullptr,
            board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "", true));
  EXPECT_THAT(board.Paint(), IsAll(kRed));
}

TEST_F(PicturesAndExportTest, WhatCannotBeReadLeavesTheBackgroundAndAnEmptyMark) {
  ASSERT_NE(nullptr,
            board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "", true));
  std::ofstream(folder.File("broken.png")) << "no picture";
  for (const bool isBackground : {true, false}) {
    EXPECT_EQ(nullptr, board.engine.AddPictureFromFile("doc", "page", folder.File("broken.png"), "",
                                                       isBackground));
    EXPECT_EQ(nullptr,
              board.engine.AddPictureFromStream("doc", "page", std::string(), "", isBackground));
  }
  EXPECT_EQ(nullptr, board.engine.AddPictureFromStream("doc", "page", "no picture", "", true));
  EXPECT_EQ(2U, PageTestAccess::Pending(board.Page()).size());
  EXPECT_NE(nullptr, board.engine.AddPictureFromStream("doc", "page", "no picture", "", false));
  EXPECT_THAT(board.Paint(), IsAll(kRed));
}

TEST_F(PicturesAndExportTest, APageIsWrittenAsItsLastRenderingInTheFormatOfItsName) {
  ASSERT_NE(nullptr,
            board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "", true));
  ASSERT_EQ(1, board.engine.SavePage("doc", "page", folder.File("early.png"), std::wstring()));
  EXPECT_EQ(kClear, Read("early.png").pixels.at(0)) << "nothing has been rendered yet";
  board.Paint();
  const std::pair<const char*, PictureFormat> files[] = {
      {"page.png", PictureFormat::kPng}, {"page.jpg", PictureFormat::kJpeg},
      {"page.bmp", PictureFormat::kBmp}, {"page.JPG", PictureFormat::kPng},
      {"page", PictureFormat::kPng},
  };
  for (const auto& [name, format] : files) {
    ASSERT_EQ(1, board.engine.SavePage("doc", "page", folder.File(name), HWND{nullptr})) << name;
    const Picture written = Read(name);
    EXPECT_EQ(format, written.format) << name;
    EXPECT_EQ(200, written.width);
    EXPECT_EQ(100, written.height);
    EXPECT_GT(written.pixels.at(0) & 0x00FF0000, 0x00F00000U) << name;
  }
  EXPECT_EQ(0, board.engine.SavePage("doc", "page", "no-folder.png", HWND{nullptr}));
  EXPECT_EQ(0, board.engine.SavePage("doc", "page", folder.File("none/p.png"), HWND{nullptr}));
  EXPECT_EQ(1, board.engine.SavePage("doc", "page", folder.Path().string() + "\\back.png", L""));
  EXPECT_EQ(0, board.engine.SavePage("doc", "page", folder.File("d.png"), L"NO SUCH DISPLAY"));
  EXPECT_EQ(0, board.engine.SavePage("doc", "none", folder.File("n.png"), HWND{nullptr}));
}

TEST_F(PicturesAndExportTest, TheScreenIsWrittenWithTheWindowOnIt) {
  board.window.SetScreenRect({300, 200, 500, 300});
  ASSERT_NE(nullptr,
            board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "", true));
  board.Paint();
  ASSERT_EQ(1, board.engine.SavePage("doc", "page", folder.File("screen.png"), L"MEMORY-1"));
  const Picture screen = Read("screen.png");
  ASSERT_EQ(1920, screen.width);
  ASSERT_EQ(1080, screen.height);
  EXPECT_EQ(kRed, screen.pixels.at(200 * 1920 + 300));
  EXPECT_EQ(kBlack, screen.pixels.at(199 * 1920 + 300));
  ASSERT_EQ(1,
            board.engine.SavePage("doc", "page", folder.File("area.png"), board.window.Handle()));
  const Picture area = Read("area.png");
  EXPECT_EQ(200, area.width);
  EXPECT_EQ(std::set<std::uint32_t>{kRed}, std::set(area.pixels.begin(), area.pixels.end()));
}

TEST_F(PicturesAndExportTest, ADiskThatRefusesKeepsTheFileThatWasThereAndGetsNoOther) {
  board.Paint();
  const TemporaryFolder out;
  std::ofstream(out.File("page.png")) << "an older file";
  for (HWND const source : {HWND{nullptr}, board.window.Handle()}) {
    const SmallDisk disk(64);
    for (const char* name : {"page.png", "new.jpg", "new.bmp"}) {
      EXPECT_EQ(0, board.engine.SavePage("doc", "page", out.File(name), source)) << name;
      EXPECT_EQ(0, board.engine.SavePage("doc", "page", out.File(name), L"MEMORY-1")) << name;
    }
    EXPECT_EQ(0, board.engine.SaveDocument("doc", out.Path().string(), "", source));
  }
  EXPECT_EQ(0, board.engine.SaveDocument("doc", out.File("none"), "", HWND{nullptr}));
  EXPECT_EQ(1U, out.FileCount());
  EXPECT_EQ("an older file", ReadFile(out.File("page.png")));
}

TEST_F(PicturesAndExportTest, AWindowThatIsGoneLeavesThePagesOwnSurface) {
  board.Paint();
  auto other = std::make_unique<MemoryWindow>(RECT{0, 0, 30, 20});
  HWND const handle = other->Handle();
  ASSERT_EQ(1, board.engine.SavePage("doc", "page", folder.File("window.png"), handle));
  EXPECT_EQ(30, Read("window.png").width);
  other.reset();
  ASSERT_EQ(1, board.engine.SavePage("doc", "page", folder.File("window.png"), handle));
  EXPECT_EQ(200, Read("window.png").width);
}

TEST_F(PicturesAndExportTest, ADocumentLeavesAFileAPageNamedFromTheTime) {
  for (const char* page : {"b", "a"}) {
    ASSERT_EQ(1, board.engine.NewPage("doc", page, "", board.window.Handle(), PageOf(20, 10)));
  }
  const TemporaryFolder out;
  EXPECT_EQ(1, board.engine.SaveDocument("doc", out.Path().string(), "talk", std::wstring()));
  EXPECT_EQ(3U, out.FileCount());
  for (const auto& entry : std::filesystem::directory_iterator(out.Path())) {
    const std::string name = entry.path().filename().string();
    ASSERT_EQ(std::string("talk_20221115_124336.123.png").size(), name.size()) << name;
    EXPECT_EQ('_', name[13]);
    EXPECT_EQ('.', name[20]);
  }
  board.engine.NewDoc("ada", "empty");
  EXPECT_EQ(0, board.engine.SaveDocument("empty", out.Path().string(), "", HWND{nullptr}));
}

}  // namespace
