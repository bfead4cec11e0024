// Pictures on pages and behind them, and pages as image files.
#include <set>

#include "platform/clock/Clock.h"
#include "support/NoPictures.h"
#include "support/PictureFile.h"
#include "support/TemporaryFolder.h"
#include "support/Whiteboard.h"

namespace {

class PicturesAndExportTest : public testing::Test {
 protected:
  PicturesAndExportTest() {
    WritePicture(folder.File("red.png"), 50, 25, kRed);
    WritePicture(folder.File("wide.png"), 400, 50, kBlue);
    WritePicture(folder.File("tall.png"), 10, 20, kRed);
  }

  Annotation* Place(const std::string& path, bool isBackground) {
    return board.engine.AddPictureFromFile("doc", "page", path, "note", isBackground);
  }
  Annotation* PlaceBytes(const std::string& bytes, bool isBackground) {
    return board.engine.AddPictureFromStream("doc", "page", bytes, "", isBackground);
  }
  // Saves the page as that file, from a display or a window.
  template <class Source>
  int Save(const std::string& name, const Source& source) {
    return board.engine.SavePage("doc", "page", folder.File(name), source);
  }
  parchlet::Picture Read(const std::string& name) { return ReadPicture(folder.File(name)); }

  TemporaryFolder folder;
  const std::string red = folder.File("red.png");
  Whiteboard board;  // 200 x 100
};

TEST_F(PicturesAndExportTest, APictureLiesAtTheOriginInItsOwnSizeOrHalfThePages) {
  const Annotation* placed = Place(red, false);
  ASSERT_NE(nullptr, placed);
  EXPECT_EQ(AnnotationSubTypePng, placed->subType);
  EXPECT_EQ("note", placed->pictureProperty);
  EXPECT_EQ(placed, board.engine.GetLocalAnnotation("doc", "page", placed->annotationId));
  EXPECT_EQ((RECT{0, 0, 50, 25}), board.Paint().InkBox());
  EXPECT_NE(nullptr, PlaceBytes(ReadWholeFile(folder.File("wide.png")), false));
  EXPECT_EQ((RECT{0, 0, 100, 50}), board.Paint().InkBox());
}

TEST_F(PicturesAndExportTest, ABackgroundIsFittedUnderEverythingAndReplacedByTheNext) {
  // 200 x 25 in the middle, (100 - 25) / 2 = 37
  for (const auto& [name, box] : {std::pair("wide.png", RECT{0, 37, 200, 62}),
                                  {"tall.png", {75, 0, 125, 100}},
                                  {"red.png", {0, 0, 200, 100}}}) {
    ASSERT_NE(nullptr, PlaceBytes(ReadWholeFile(folder.File(name)), true));
    EXPECT_EQ(box, board.Paint().InkBox());
  }
}

TEST_F(PicturesAndExportTest, WhatCannotBeReadLeavesTheBackgroundAndAnEmptyMark) {
  ASSERT_NE(nullptr, Place(red, true));
  std::ofstream(folder.File("broken.png")) << "no picture";
  std::vector<std::string> noPictures = MakeNoPictures(folder);
  noPictures.insert(noPictures.end(), {folder.File("broken.png"), ""});
  for (const std::string& path : noPictures) {
    EXPECT_EQ(nullptr, Place(path, true)) << path;
    EXPECT_EQ(nullptr, Place(path, false)) << path;
  }
  EXPECT_EQ(nullptr, PlaceBytes("no picture", true));
  EXPECT_EQ(noPictures.size(), PageTestAccess::Pending(board.Page()).size());
  EXPECT_NE(nullptr, PlaceBytes("no picture", false));
  EXPECT_THAT(board.Paint(), IsAll(kRed));
}

TEST_F(PicturesAndExportTest, APageIsWrittenAsItsLastRenderingInTheFormatOfItsName) {
  ASSERT_NE(nullptr, Place(red, true));
  ASSERT_EQ(1, Save("early.png", std::wstring()));
  EXPECT_EQ(kClear, Read("early.png").pixels.at(0)) << "nothing has been rendered yet";
  board.Paint();
  for (const auto& [name, start] : {std::pair("page.png", "\x89PNG"),
                                    {"page.jpg", "\xFF\xD8"},
                                    {"page.bmp", "BM"},
                                    {"page.JPG", "\x89PNG"},
                                    {"page", "\x89PNG"}}) {
    ASSERT_EQ(1, Save(name, HWND{nullptr})) << name;
    EXPECT_TRUE(ReadWholeFile(folder.File(name)).starts_with(start)) << name;
    const parchlet::Picture written = Read(name);
    EXPECT_EQ(std::pair(200, 100), std::pair(written.width, written.height));
    EXPECT_GT(written.pixels.at(0) & 0x00FF0000, 0x00F00000U) << name;
  }
  EXPECT_EQ(0, board.engine.SavePage("doc", "page", "no-folder.png", HWND{nullptr}));
  EXPECT_EQ(1, board.engine.SavePage("doc", "page", folder.Path().string() + "\\back.png", L""));
  EXPECT_EQ(0, Save("d.png", L"NO SUCH DISPLAY"));
  EXPECT_EQ(0, board.engine.SavePage("doc", "none", folder.File("n.png"), HWND{nullptr}));
}

class DocumentExportTest : public testing::Test {
 protected:
  DocumentExportTest() {
    for (const char* page : {"b", "a"}) {
      EXPECT_EQ(1, board.engine.NewPage("doc", page, "", board.window.Handle(), PageOf(20, 10)));
    }
  }
  ~DocumentExportTest() override { SetLocalTimeSource(nullptr); }

  std::set<std::string> FileNames() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(to)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  Whiteboard board;
  const TemporaryFolder out;
  const std::string to = out.Path().string();
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
  SetLocalTimeSource(nullptr);
  for (int again = 0; again < 2; ++again) {
    EXPECT_EQ(1, board.engine.SaveDocument("doc", to, "now", std::wstring()));
  }
  EXPECT_EQ(12U, out.FileCount()) << "an export begins after the names of the one before";
}

}  // namespace
