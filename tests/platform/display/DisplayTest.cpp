// The desktop in memory, and what the interface of screens makes of any display.
#include <parchlet/Display.h>

#include <future>
#include <limits>

#include "platform/display/CurrentDisplay.h"
#include "platform/Platform.h"
#include "support/Whiteboard.h"

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr DWORD kCapture = SRCCOPY | CAPTUREBLT;
constexpr LONG kMin = std::numeric_limits<LONG>::min();
constexpr LONG kMax = std::numeric_limits<LONG>::max();
constexpr RECT kLeft = {-300, -20, 0, 100};
constexpr RECT kBackground = {-300, -20, 2, 102};

// What each pixel of the background shows: its own place.
std::uint32_t ColorAt(LONG x, LONG y) {
  return kBlack | static_cast<std::uint32_t>(x & 0xFFF) << 12 |
         static_cast<std::uint32_t>(y & 0xFFF);
}

// Pushes a frame of one colour and of the window's size.
void Push(const MemoryWindow& window, int width, int height, std::uint32_t color) {
  AnnotationPage page;
  page.InitPage(window.Handle(), PageOf(width, height, color), nullptr);
  EXPECT_NE(0, page.UpdateLayeredContent());
}

Pixels Capture(const RECT& area) {
  Pixels pixels(static_cast<std::size_t>((area.right - area.left) * (area.bottom - area.top)),
                0x12345678);
  EXPECT_TRUE(CurrentDisplay().Capture(area, pixels.data()));
  return pixels;
}

// Two monitors; the background covers the left one and a little more. Around (300, 0) there is
// nothing.
class DisplayTest : public testing::Test {
 protected:
  DisplayTest() {
    Pixels background;
    for (LONG y = kBackground.top; y < kBackground.bottom; ++y) {
      for (LONG x = kBackground.left; x < kBackground.right; ++x) {
        background.push_back(ColorAt(x, y) & ~kBlack);
      }
    }
    SetMemoryDesktop({{"LEFT", kLeft}, {"主屏", {0, 0, 400, 300}}}, background.data(), kBackground);
  }
  ~DisplayTest() override {
    SetDisplay(nullptr);
    SetMemoryDesktop({{"MEMORY-1", {0, 0, 1920, 1080}}}, nullptr, {});
  }

  static bool CanOpen(const wchar_t* device) {
    HDC opened = CreateDCW(device, device, nullptr, nullptr);
    DeleteDC(opened);
    return opened != nullptr;
  }
  static std::wstring NearestTo(const RECT& area) {
    MONITORINFOEXW info{};
    info.cbSize = sizeof info;
    const HMONITOR monitor = MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST);
    return GetMonitorInfoW(monitor, &info) != 0 ? info.szDevice : L"";
  }
};

TEST_F(DisplayTest, TheMonitorWithTheLargestPartOfAnAreaOrTheClosestToItIsNearest) {
  const std::pair<RECT, const wchar_t*> cases[] = {
      {{-10, 0, 5, 10}, L"LEFT"},
      {{-50, 150, -40, 160}, L"\x4E3B\x5C4F"},  // 40 to the right, 50 upwards
      {{-60, 150, -55, 160}, L"LEFT"},          // 55 to the right, 50 upwards
      {{kMax, kMax, kMax, kMax}, L"\x4E3B\x5C4F"},
      {{kMin, kMin, kMin, kMin}, L"LEFT"}};
  for (const auto& [area, nearest] : cases) {
    EXPECT_EQ(NearestTo(area), nearest) << area.left << ", " << area.top;
  }
  SetMemoryDesktop({{"A", {5, 5, 5, 9}}, {"B", {9, 0, 0, 9}}, {"C", {kMin, 0, kMax, 9}}}, nullptr,
                   {});
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), L"") << "none has an extent within reason";
  EXPECT_FALSE(CanOpen(L"A") || CanOpen(L"C"));
}

TEST_F(DisplayTest, ADisplayIsFoundByItsNameAndDescribedInARecordOfItsSize) {
  EXPECT_TRUE(CanOpen(L"LEFT"));
  EXPECT_FALSE(CanOpen(L"left") || CanOpen(L"") || CanOpen(nullptr));
  DEVMODEW mode{sizeof mode, 0, 0};
  EXPECT_EQ(EnumDisplaySettingsW(L"\x4E3B\x5C4F", ENUM_CURRENT_SETTINGS, &mode), 1);
  EXPECT_EQ(EnumDisplaySettingsW(L"NONE", ENUM_CURRENT_SETTINGS, &mode), 0);
  EXPECT_TRUE(mode.dmPelsWidth == 400 && mode.dmPelsHeight == 300);
  SetMemoryDesktop({{std::string(100, 'n'), kLeft}}, nullptr, {});
  EXPECT_EQ(NearestTo(kLeft), std::wstring(31, L'n')) << "cut to what the record holds";
}

// Its first call throws, and its captures fail.
class FailingDisplay final : public Display {
 public:
  std::vector<DisplayMonitor> GetMonitors() const override { throw 7; }
  bool Capture(const RECT& /*area*/, std::uint32_t* /*pixels*/) override {
    if (captures++ == 0) {
      throw 7;
    }
    return false;
  }

 private:
  int captures = 0;
};

// The context of the display "LEFT", and one of a bitmap of a colour that no screen shows.
class DisplayCopyTest : public DisplayTest {
 protected:
  static constexpr std::uint32_t kUntouched = 0x12345678;

  DisplayCopyTest() {
    std::fill_n(bitmap->pixels.get(), 20 * 20, kUntouched);
    previous = SelectObject(to, bitmap);
  }
  ~DisplayCopyTest() override {
    SelectObject(to, previous);
    DeleteObject(bitmap);
    DeleteDC(to);
    DeleteDC(left);
  }

  std::uint32_t At(std::size_t x, std::size_t y) const { return bitmap->pixels[y * 20 + x]; }

  HDC left = CreateDCW(L"LEFT", L"LEFT", nullptr, nullptr);
  HDC to = CreateCompatibleDC(left);
  HBITMAP bitmap = CreateCompatibleBitmap(left, 20, 20);
  HGDIOBJ previous;
};

TEST_F(DisplayCopyTest, ACopyIsOpaqueFromTheDisplaysOriginAndBlackPastItsEnd) {
  ASSERT_EQ(BitBlt(to, 2, 3, 5, 4, left, 10, 20, kCapture), 1);
  for (int y = 0; y < 20; ++y) {
    for (int x = 0; x < 20; ++x) {
      const bool isCopied = x >= 2 && x < 7 && y >= 3 && y < 7;
      const std::uint32_t shown = ColorAt(-300 + 10 + x - 2, -20 + 20 + y - 3);
      ASSERT_EQ(At(x, y), isCopied ? shown : kUntouched) << x << ", " << y;
    }
  }
  ASSERT_EQ(BitBlt(to, -5, -5, kMax, kMax, left, 290, 110, kCapture), 1);
  EXPECT_EQ(At(0, 0), ColorAt(-5, 95));
  EXPECT_EQ(At(4, 4), ColorAt(-1, 99));
  EXPECT_TRUE(At(5, 4) == kBlack && At(4, 5) == kBlack);
  EXPECT_EQ(At(19, 19), kBlack);
}

TEST_F(DisplayCopyTest, OnlyADisplayIsCopiedFromAndItsFailureIsTold) {
  EXPECT_EQ(BitBlt(to, 0, 0, 0, 5, left, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, to, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(left, 0, 0, 5, 5, left, 0, 0, kCapture), 0);
  EXPECT_EQ(At(0, 0), kUntouched);
  EXPECT_EQ(CreateCompatibleBitmap(left, 32768, 1), nullptr);
  FailingDisplay failing;
  SetDisplay(&failing);
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, left, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, left, 0, 0, kCapture), 0);
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), L"");
  EXPECT_FALSE(CanOpen(L"LEFT"));
}

using MemoryDesktopTest = DisplayTest;

TEST_F(MemoryDesktopTest, BlendsEveryWindowInTheOrderInWhichTheyWereMade) {
  const MemoryWindow low({301, 0, 304, 1});
  auto high = std::make_unique<MemoryWindow>(RECT{302, 0, 305, 1});
  EXPECT_EQ(Capture({300, 0, 306, 1}), Pixels(6, kBlack)) << "nothing has been pushed yet";
  Push(*high, 3, 1, 0x80FF0000);
  Push(low, 3, 1, kGreen);
  EXPECT_EQ(Capture({300, 0, 306, 1}),
            (Pixels{kBlack, kGreen, 0xFF807F00, 0xFF807F00, 0xFF800000, kBlack}));
  high.reset();
  EXPECT_EQ(Capture({303, 0, 305, 1}), (Pixels{kGreen, kBlack}));
}

TEST_F(MemoryDesktopTest, AWindowShowsNoMoreThanItsFrameAndItsRectangle) {
  MemoryWindow window({298, -2, 303, 3});
  Push(window, 5, 5, kBlue);
  EXPECT_EQ(Capture({302, 2, 304, 3}), (Pixels{kBlue, kBlack}));
  window.SetScreenRect({300, 0, 301, 1});
  EXPECT_EQ(Capture({300, 0, 302, 1}), (Pixels{kBlue, kBlack}));
  window.SetScreenRect({305, 5, 300, 0});
  EXPECT_EQ(Capture({300, 0, 306, 6}), Pixels(36, kBlack));
}

TEST_F(MemoryDesktopTest, IsCapturedWhileWindowsComeAndGo) {
  auto coming = std::async(std::launch::async, [] {
    for (int i = 0; i < 50; ++i) {
      const MemoryWindow window({300, 0, 308, 8});
      Push(window, 8, 8, kBlue);
    }
  });
  for (int i = 0; i < 50; ++i) {
    for (const std::uint32_t pixel : Capture({300, 0, 308, 8})) {
      ASSERT_TRUE(pixel == kBlack || pixel == kBlue);
    }
  }
  coming.get();
}

}  // namespace
