// Pictures on pages and behind them, and pages as image files.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#include <parchlet/Display.h>
#include <sys/stat.h>

#include "platform/image/Picture.h"
#include "platform/Platform.h"
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
  const Frame shown = board.Paint();
  EXPECT_EQ((RECT{0, 37, 200, 62}), shown.InkBox());  // 200 x 25 in the middle, (100 - 25) / 2 = 37
  WritePicture("tall.png", 10, 20, kRed);
  ASSERT_NE(nullptr, board.engine.AddPictureFromStream("doc", "page", Bytes("tall.png"), "", true));
  EXPECT_EQ((RECT{75, 0, 125, 100}), board.Paint().InkBox());
  ASSERT_NE(nullptr,
            board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "", true));
  EXPECT_THAT(board.Paint(), IsAll(kRed));
}

TEST_F(PicturesAndExportTest, WhatCannotBeReadLeavesTheBackgroundAndAnEmptyMark) {
  ASSERT_NE(nullptr,
            board.engine.AddPictureFromFile("doc", "page", folder.File("red.png"), "", true));
  std::ofstream(folder.File("broken.png")) << "no picture";
  ASSERT_EQ(0, mkfifo(folder.File("pipe.png").c_str(), 0600)) << "that nobody writes to";
  const std::string noPictures[] = {folder.File("broken.png"), folder.File("pipe.png"),
                                    folder.Path().string(), "/dev/zero", ""};
  for (const std::string& path : noPictures) {
    EXPECT_EQ(nullptr, board.engine.AddPictureFromFile("doc", "page", path, "", true)) << path;
    EXPECT_EQ(nullptr, board.engine.AddPictureFromFile("doc", "page", path, "", false)) << path;
  }
  EXPECT_EQ(nullptr, board.engine.AddPictureFromStream("doc", "page", "no picture", "", true));
  EXPECT_EQ(std::size(noPictures), PageTestAccess::Pending(board.Page()).size());
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
  HWND const gone = MemoryWindow({0, 0, 30, 20}).Handle();
  ASSERT_EQ(1, board.engine.SavePage("doc", "page", folder.File("page.png"), gone));
  EXPECT_EQ(200, Read("page.png").width) << "the page's own surface";
}

// Three pages, and a display whose first capture throws.
class DocumentExportTest : public PicturesAndExportTest, public Display {
 protected:
  DocumentExportTest() {
    for (const char* page : {"b", "a"}) {
      EXPECT_EQ(1, board.engine.NewPage("doc", page, "", board.window.Handle(), PageOf(20, 10)));
    }
    SetDisplay(this);
  }
  ~DocumentExportTest() override {
    SetDisplay(nullptr);
    SetLocalTimeSource(nullptr);
  }

  std::vector<DisplayMonitor> GetMonitors() const override { return {{"D", {0, 0, 20, 10}}}; }
  bool Capture(const RECT& /*area*/, std::uint32_t* /*pixels*/) override {
    if (captures++ == 0) {
      throw 7;
    }
    return true;
  }

  std::set<std::string> FileNames() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(out.Path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  const TemporaryFolder out;
  const std::string to = out.Path().string();
  int captures = 0;
};

TEST_F(DocumentExportTest, EveryPageHasANameOfItsOwnWhateverTheClockDoes) {
  SetLocalTimeSource([] { return SYSTEMTIME{2024, 12, 2, 31, 23, 59, 59, 999}; });
  EXPECT_EQ(1, board.engine.SaveDocument("doc", to, "talk", std::wstring()));
  EXPECT_THAT(FileNames(),
              testing::ElementsAre("talk_20241231_235959.999.png", "talk_20250101_000000.000.png",
                                   "talk_20250101_000000.001.png"));
  SetLocalTimeSource([] {
    static WORD milliseconds = 8;
    return SYSTEMTIME{2022, 11, 2, 15, 12, 43, 36, --milliseconds};
  });
  EXPECT_EQ(1, board.engine.SaveDocument("doc", to, "", HWND{nullptr}));
  EXPECT_EQ(6U, out.FileCount());
  EXPECT_EQ("20221115_124336.005.png", *FileNames().begin());
}

TEST_F(DocumentExportTest, EveryPageIsTriedAndTheLastOneDecides) {
  EXPECT_EQ(1, board.engine.SaveDocument("doc", to, "", L"D"));
  EXPECT_EQ(3, captures);
  EXPECT_EQ(2U, out.FileCount());
  {
    const SmallDisk disk(64);
    EXPECT_EQ(0, board.engine.SaveDocument("doc", to, "", HWND{nullptr}));
  }
  board.engine.NewDoc("ada", "empty");
  EXPECT_EQ(0, board.engine.SaveDocument("empty", to, "", HWND{nullptr}));
  EXPECT_EQ(0, board.engine.SaveDocument("doc", out.File("none"), "", HWND{nullptr}));
  EXPECT_EQ(2U, out.FileCount());
}

}  // namespace
