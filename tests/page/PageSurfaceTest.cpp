#include "page/AnnotationPage.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {60, 40};

class PageSurfaceTest : public testing::Test {
 protected:
  int Init(AnnotationPageInfo info) { return page.InitPage(window.Handle(), info, nullptr); }

  Frame Paint() {
    EXPECT_NE(0, page.UpdateLayeredContent());
    return Frame(window.CopyFrame());
  }
  // What the surface covers of the window.
  RECT Covered() { return Paint().InkBox(kClear); }

  MemoryWindow window{{5, 5, 5 + kSize.width, 5 + kSize.height}};
  AnnotationPage page;
};

TEST_F(PageSurfaceTest, AnEmptyViewMakesASurfaceOfOnePixelUntilTheFirstResize) {
  const struct {
    RECT view, covered;
  } cases[] = {{{0, 0, 0, 40}, {0, 0, 1, 40}},
               {{0, 7, 60, 7}, {0, 0, 60, 1}},
               {{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}, {0, 0, 1, 1}},
               {{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, {0, 0, 60, 40}}};
  for (const auto& [view, covered] : cases) {
    AnnotationPageInfo info = PageOf(60, 40);
    info.viewRect = view;
    EXPECT_EQ(1, Init(info));
    EXPECT_EQ(covered, Covered());
    EXPECT_EQ(60, page.GetCurrentInfo().width);
    EXPECT_EQ(1, page.UpdatePage(PageOf(50, 40), true));
    EXPECT_EQ((RECT{0, 0, 50, 40}), Covered());
    page.ReleaseSurface();
  }
}

TEST_F(PageSurfaceTest, ASizeThatCannotBeHadKeepsTheOldSurface) {
  Init(PageOf(60, 40));
  page.AddAnnotation(Mark("m").Box({100'000, 40}, 10, 10, 10, kRed).Release(), true);
  for (const auto& [width, height] :
       {std::pair{40, INT32_MAX}, {INT32_MAX, INT32_MAX}, {32'000, 32'000}, {100'000, 40}}) {
    EXPECT_EQ(1, page.UpdatePage(PageOf(width, height), true)) << "the old surface is in use";
    EXPECT_EQ(width, page.GetCurrentInfo().width);
    EXPECT_EQ((RECT{0, 0, 60, 40}), Covered());
  }
  EXPECT_THAT(Paint(), Shows(15, 15, kRed)) << "points follow the page's size all the same";
  EXPECT_EQ(1, page.UpdatePage(PageOf(30, 20), true));
  EXPECT_EQ((RECT{0, 0, 30, 20}), Covered());
}

TEST_F(PageSurfaceTest, TheWindowsSizeIsWhatIsPushed) {
  Init(PageOf(60, 40));
  const std::pair<RECT, RECT> cases[] = {{{0, 0, 20, 10}, {0, 0, 20, 10}},
                                         {{0, 0, 100, 10}, {0, 0, 60, 10}},
                                         {{-9, -9, 91, 91}, {0, 0, 60, 40}},
                                         {{0, 0, 200, 100}, {0, 0, 60, 40}},
                                         // As many pixels, in other rows.
                                         {{0, 0, 100, 200}, {0, 0, 60, 40}}};
  for (const auto& [rect, covered] : cases) {
    window.SetScreenRect(rect);
    const Frame frame = Paint();
    EXPECT_EQ(rect.right - rect.left, frame.width);
    EXPECT_EQ(rect.bottom - rect.top, frame.height);
    EXPECT_EQ(covered, frame.InkBox(kClear));
  }
  for (const RECT& none : {RECT{0, 0, 0, 9}, RECT{9, 9, 3, 3}}) {
    window.SetScreenRect(none);
    EXPECT_EQ(0, page.UpdateLayeredContent());
  }
}

TEST_F(PageSurfaceTest, APageWithoutASurfaceOrWithoutAnObjectRefuses) {
  Annotation mark;
  for (int isInitialised = 0; isInitialised < 2; ++isInitialised) {
    EXPECT_EQ(0, page.AddPictureFromFile(L"/dev/null", "", &mark, true));
    EXPECT_EQ(0, page.AddPictureFromFile(L"/dev/null", "", nullptr, true));
    EXPECT_EQ(0, page.AddPictureFromStream("data", "", nullptr, false));
    EXPECT_EQ(isInitialised, page.AddPictureFromStream("data", "", &mark, false));
    EXPECT_EQ(0, page.SavePage(L"", std::wstring()) + page.SavePage(L"", window.Handle()));
    EXPECT_EQ(0, page.SetNicknameTip(nullptr));
    EXPECT_EQ(0, page.GetAllAnnotations(nullptr) + page.GetUserAnnotations("bob", nullptr));
    page.AddAnnotation(nullptr, true);
    EXPECT_EQ(isInitialised, page.UpdateLayeredContent());
    EXPECT_EQ(0, page.InitPage(nullptr, PageOf(60, 40), nullptr));
    EXPECT_EQ(isInitialised == 0 ? 1 : 0, Init(PageOf(1, 1))) << "the smallest page there is";
  }
  EXPECT_EQ(0, page.IsUserExist("bob"));
  page.AddAnnotation(Mark("m").By("bob").Release(), true);
  EXPECT_EQ(1, page.IsUserExist("bob"));
}

}  // namespace
