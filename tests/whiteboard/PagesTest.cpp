#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "support/PictureFile.h"
#include "whiteboard/DropSource.h"
#include "whiteboard/Person.h"

namespace {

constexpr std::uint32_t kSky = 0xFF80B0F0;

POINT OnPage(double x, double y) {
  return Person::At(Person::Page(), x, y);
}

// A picture of one colour, of a blank page's proportions.
std::string MakeSky(const TemporaryFolder& folder, const std::string& name) {
  WritePicture(folder.File(name), 320, 200, kSky);
  return folder.File(name);
}

// The one picture that was exported; of size 0 x 0 when there is none.
Picture Exported(const TemporaryFolder& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    if (entry.path().filename().string().starts_with("whiteboard_")) {
      return ReadPicture(entry.path());
    }
  }
  return {};
}

}  // namespace

TEST(WhiteboardPages, PagesAndDocumentsKeepTheirMarks) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start({"--peer"}));
  const POINT middle = OnPage(0.5, 0.5);
  const POINT peersMiddle = Person::At(Person::PeerPage(), 0.5, 0.5);
  ASSERT_TRUE(ada.PressKeys(middle, {"2"}));
  ASSERT_TRUE(ada.Drag({OnPage(0.3, 0.5), OnPage(0.7, 0.5)}));
  ASSERT_TRUE(ada.Sees(middle, kRed));
  for (const auto& [leave, comeBack] :
       {std::pair("n", "Page_Up"), std::pair("ctrl+n", "ctrl+Tab")}) {
    ASSERT_TRUE(ada.PressKeys(middle, {leave}));
    EXPECT_TRUE(ada.Sees(middle, kPaper));
    EXPECT_TRUE(ada.Sees(peersMiddle, kPaper));
    ASSERT_TRUE(ada.PressKeys(middle, {comeBack}));
    EXPECT_TRUE(ada.Sees(middle, kRed));
    EXPECT_TRUE(ada.Sees(peersMiddle, kRed));
  }
  // A mark that came back with its document is as good as new.
  ASSERT_TRUE(ada.PressKeys(middle, {"ctrl+z"}));
  EXPECT_TRUE(ada.Sees(middle, kPaper));
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(WhiteboardPages, InkLiesOverThePagesPictureAndTheExportIsWhatTheScreenShows) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start({MakeSky(ada.Folder(), "天空.png")}));
  // A transparent page is a touch darker than what lies below.
  ASSERT_TRUE(ada.Sees(OnPage(0.5, 0.5), 0x7BA9E7));
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"2"}));
  ASSERT_TRUE(ada.Drag({OnPage(0.3, 0.5), OnPage(0.7, 0.5)}));
  ASSERT_TRUE(ada.Sees(OnPage(0.5, 0.5), kRed));
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.8), {"ctrl+e"}));
  const RECT page = Person::Page();
  ASSERT_TRUE(Eventually([&] { return Exported(ada.Folder()).width > 0; }));
  const Picture picture = Exported(ada.Folder());
  ASSERT_EQ(picture.width, page.right - page.left);
  ASSERT_EQ(picture.height, page.bottom - page.top);
  const auto row = static_cast<std::size_t>(picture.height / 2);
  const LONG y = page.top + static_cast<LONG>(row);
  const Screenshot shot = ada.Look({page.left, y, page.right, y + 1});
  for (int x = 0; x < picture.width; ++x) {
    const std::uint32_t color =
        picture.pixels[row * static_cast<std::size_t>(picture.width) + static_cast<std::size_t>(x)];
    ASSERT_TRUE(IsNear(shot.At(page.left + x, y), color & 0xFFFFFF)) << "column " << x;
  }
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(WhiteboardPages, PicturesComeByTheirPathOrDroppedAndCanBeDragged) {
  Person ada;
  NEEDS_X_SERVER(ada);
  const std::string path = MakeSky(ada.Folder(), "a sky.png");
  ASSERT_TRUE(ada.Start({"--peer"}));
  const POINT corner = OnPage(0.1, 0.1);
  DropSource files(ada.Server().Display());
  EXPECT_FALSE(files.Drop("")) << "nothing is taken that is not there";
  const std::string uri = "file://" + ada.Folder().Path().string() + "/a%20sky.png";
  EXPECT_TRUE(files.Drop("# of a file manager\r\n" + uri + "\r\n"));
  EXPECT_TRUE(ada.Sees(corner, kSky & 0xFFFFFF));
  ASSERT_TRUE(ada.Drag({corner, OnPage(0.4, 0.3), OnPage(0.7, 0.6)}));
  EXPECT_TRUE(ada.Sees(corner, kPaper));
  EXPECT_TRUE(ada.Sees(OnPage(0.7, 0.7), kSky & 0xFFFFFF));
  EXPECT_TRUE(ada.Sees(Person::At(Person::PeerPage(), 0.7, 0.7), kSky & 0xFFFFFF));
  ASSERT_TRUE(ada.PressKeys(corner, {"i"}) && ada.Type(path) && ada.PressKeys(corner, {"Return"}));
  EXPECT_TRUE(ada.Sees(corner, kSky & 0xFFFFFF));
  ASSERT_TRUE(ada.PressKeys(corner, {"b"}) && ada.Type(path) && ada.PressKeys(corner, {"Return"}));
  EXPECT_TRUE(ada.Sees(OnPage(0.5, 0.02), kSky & 0xFFFFFF)) << "in the page's middle";
  EXPECT_EQ(ada.Quit(), 0);
}
