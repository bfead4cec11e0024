// Boards with pictures, authors and their names, and what the engine itself writes of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "ReplayRun.h"

namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

// On a page of 480 x 270, every fourth pixel: a wide green background from y 90 to 180, Ada's red
// line across it at y 135, and Grace's blue picture from (300, 60) to (420, 210), above both.
constexpr const char* kBoard =
    R"({"background":"green.png"})"
    "\n"
    R"({"kind":"line","color":"#FFFF0000","width":24,"points":[[200,540],[1600,540]],"author":"Ada"})"
    "\n"
    R"({"picture":"blue.png","points":[[1680,840],[1200,240]],"author":"Grace"})"
    "\n";

class PicturesTest : public testing::Test {
 protected:
  PicturesTest() {
    folder.WritePicture("green.png", 48, 9, kGreen);
    folder.WritePicture("blue.png", 30, 20, kBlue);
    folder.Write("board.jsonl", kBoard);
  }

  Picture Replay(const std::string& arguments) {
    const RunResult run = folder.Run("--size 480x270 " + arguments);
    EXPECT_EQ(run.status, 0) << arguments << ": " << run.messages;
    return folder.ReadPicture("replay.png");
  }

  ReplayFolder folder;
};

// Over every network, and on the pages of all who take part: the tool compares those.
TEST_F(PicturesTest, PicturesAndBackgroundsReachEverybody) {
  for (const char* network : {"", "--lossy 3", "--lossy 8"}) {
    const Picture page = Replay(std::string("board.jsonl ") + network);
    EXPECT_EQ(PixelAt(page, 20, 80), kWhite);
    EXPECT_EQ(PixelAt(page, 20, 100), kGreen);
    EXPECT_EQ(PixelAt(page, 200, 135), kRed);
    EXPECT_EQ(PixelAt(page, 299, 100), kGreen);
    EXPECT_EQ(PixelAt(page, 301, 61), kBlue);
    EXPECT_EQ(PixelAt(page, 418, 208), kBlue);
    EXPECT_EQ(PixelAt(page, 360, 135), kBlue);
  }
}

TEST_F(PicturesTest, GesturesMeetTheMarksOfAllAuthors) {
  folder.MakeFolder("sub");
  // From a folder below; and a picture without points keeps its own size in the corner.
  folder.Write("sub/board.jsonl", R"({"picture":"../blue.png"})"
                                  "\n"
                                  R"({"background":"../blue.png"})"
                                  "\n" +
                                      std::string(kBoard)
                                          .replace(std::string(kBoard).find("green"), 0, "../")
                                          .replace(std::string(kBoard).find("blue") + 3, 0, "../") +
                                      R"({"erase":[[400,540]]})"
                                      "\n"
                                      R"({"select":[[1100,200],[1800,900]]})"
                                      "\n"
                                      R"({"move":[[1400,400],[1300,400],[800,400]]})");
  for (const char* network : {"", "--lossy 5"}) {
    const Picture page = Replay(std::string("sub/board.jsonl ") + network);
    EXPECT_EQ(PixelAt(page, 29, 19), kBlue) << "the picture in the corner";
    EXPECT_EQ(PixelAt(page, 31, 19), kWhite);
    EXPECT_EQ(PixelAt(page, 100, 135), kGreen) << "Ada's line is gone";
    EXPECT_EQ(PixelAt(page, 152, 65), kBlue) << "Grace's picture is 150 pixels to the left";
    EXPECT_EQ(PixelAt(page, 268, 205), kBlue);
    EXPECT_EQ(PixelAt(page, 275, 205), kWhite);
  }
}

TEST_F(PicturesTest, NamesAppearBesideAuthorsMarksWhenAskedFor) {
  folder.Write("nameless.jsonl",
               R"({"kind":"line","color":"#FFFF0000","width":24,"points":[[40,900],[1600,900]]})");
  const Picture plain = Replay("board.jsonl");
  const Picture named = Replay("--nickname --lossy 2 board.jsonl");
  // The boxes hang down and right from where Ada's line and Grace's picture begin, 7 pixels a unit.
  EXPECT_NE(PixelAt(named, 51, 144), PixelAt(plain, 51, 144));
  EXPECT_NE(PixelAt(named, 301, 69), PixelAt(plain, 301, 69));
  EXPECT_EQ(PixelAt(named, 49, 144), PixelAt(plain, 49, 144));
  EXPECT_EQ(PixelAt(named, 301, 71), PixelAt(plain, 301, 71));
  EXPECT_EQ(Replay("--nickname nameless.jsonl").pixels, Replay("nameless.jsonl").pixels);
}

TEST_F(PicturesTest, TheEngineExportsThePagesInTheAskedFormat) {
  folder.MakeFolder("out");
  folder.Write("out/page-1.bmp", "an older file");
  const std::pair<const char*, PictureFormat> formats[] = {
      {"png", PictureFormat::kPng}, {"bmp", PictureFormat::kBmp}, {"jpg", PictureFormat::kJpeg}};
  for (const auto& [extension, format] : formats) {
    const Picture page = Replay(std::string("--export out board.jsonl --format ") + extension);
    const Picture written = folder.ReadPicture(std::string("out/page-1.") + extension);
    ASSERT_EQ(written.format, format) << extension;
    ASSERT_EQ(written.pixels.size(), page.pixels.size()) << extension;
    if (format == PictureFormat::kJpeg) {
      EXPECT_GT(PixelAt(written, 360, 170) & 0xFFU, 0xF0U);
    } else {
      EXPECT_EQ(written.pixels, page.pixels) << extension;
    }
  }
  EXPECT_THAT(folder.List("out"), ElementsAre("page-1.bmp", "page-1.jpg", "page-1.png"));
}

TEST_F(PicturesTest, TheEngineExportsTheDocumentUnderTheTime) {
  folder.MakeFolder("out");
  folder.Write("empty.jsonl", "");
  const RunResult run =
      folder.Run("--size 48x27 --nickname --export out/ --out page.png empty.jsonl board.jsonl");
  ASSERT_EQ(run.status, 0) << run.messages;
  const std::vector<std::string> names = folder.List("out");
  ASSERT_THAT(names, testing::SizeIs(2));
  EXPECT_THAT(names, testing::Each(MatchesRegex("[0-9]{8}_[0-9]{6}\\.[0-9]{3}\\.png")));
  EXPECT_EQ(folder.ReadPicture("out/" + names[0]).pixels, folder.ReadPicture("page-1.png").pixels);
  EXPECT_NE(folder.ReadPicture("out/" + names[1]).pixels, folder.ReadPicture("page-1.png").pixels);
}

TEST_F(PicturesTest, AnExportThatTheDiskRefusesEndsWithItsName) {
  folder.MakeFolder("out");
  // Files of at most 8 blocks of 1024 bytes: enough for the picture, not for the export.
  const RunResult run =
      folder.RunLimited(8, "--size 480x270 --export out --format bmp board.jsonl");
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.messages, testing::EndsWith("out/page-1.bmp: the page cannot be written\n"));
  EXPECT_THAT(folder.List("out"), testing::IsEmpty());
}

}  // namespace
