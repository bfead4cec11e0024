#include <gtest/gtest.h>
#include <parchlet/Display.h>
#include <parchlet/MemoryWindow.h>

#include <limits>

#include "platform/Platform.h"

namespace {

constexpr std::uint32_t kBlack = 0xFF000000;
constexpr DWORD kCapture = SRCCOPY | CAPTUREBLT;
constexpr LONG kMin = std::numeric_limits<LONG>::min();
constexpr LONG kMax = std::numeric_limits<LONG>::max();

// What each pixel of a painted screen shows: its own place.
std::uint32_t ColorAt(LONG x, LONG y) {
  return kBlack | static_cast<std::uint32_t>(x & 0xFFF) << 12 |
         static_cast<std::uint32_t>(y & 0xFFF);
}

// A screen that shows ColorAt everywhere, without its alpha, and can be told to fail.
class PaintedDisplay final : public Display {
 public:
  std::vector<DisplayMonitor> GetMonitors() const override {
    if (hasNoMonitors) {
      throw 7;
    }
    return monitors;
  }

  bool Capture(const RECT& area, std::uint32_t* pixels) override {
    for (LONG y = area.top; y < area.bottom; ++y) {
      for (LONG x = area.left; x < area.right; ++x) {
        *pixels++ = ColorAt(x, y) & ~kBlack;
      }
    }
    if (throws) {
      throw 7;
    }
    return !fails;
  }

  std::vector<DisplayMonitor> monitors;
  bool hasNoMonitors = false;
  bool fails = false;
  bool throws = false;
};

// The context of the display "LEFT", and one of a bitmap of a colour that no screen shows.
class ScreenTest : public testing::Test {
 protected:
  static constexpr std::uint32_t kUntouched = 0x12345678;

  ScreenTest() {
    display.monitors = {{"LEFT", {-300, -20, 0, 100}}, {"主屏", {0, 0, 400, 300}}};
    SetDisplay(&display);
    left = CreateDCW(L"LEFT", L"LEFT", nullptr, nullptr);
    to = CreateCompatibleDC(left);
    bitmap = CreateCompatibleBitmap(left, 20, 20);
    std::fill_n(bitmap->pixels.get(), 20 * 20, kUntouched);
    previous = SelectObject(to, bitmap);
  }
  ~ScreenTest() override {
    SelectObject(to, previous);
    DeleteObject(bitmap);
    DeleteDC(to);
    DeleteDC(left);
    SetDisplay(nullptr);
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
  std::uint32_t At(std::size_t x, std::size_t y) const { return bitmap->pixels[y * 20 + x]; }

  PaintedDisplay display;
  HDC left;
  HDC to;
  HBITMAP bitmap;
  HGDIOBJ previous;
};

TEST_F(ScreenTest, TheMonitorWithTheLargestPartOfAnAreaOrTheClosestToItIsNearest) {
  const std::pair<RECT, const wchar_t*> cases[] = {
      {{-10, 0, 5, 10}, L"LEFT"},
      {{-50, 150, -40, 160}, L"\x4E3B\x5C4F"},  // 40 to the right, 50 upwards
      {{-60, 150, -55, 160}, L"LEFT"},          // 55 to the right, 50 upwards
      {{kMax, kMax, kMax, kMax}, L"\x4E3B\x5C4F"},
      {{kMin, kMin, kMin, kMin}, L"LEFT"}};
  for (const auto& [area, nearest] : cases) {
    EXPECT_EQ(NearestTo(area), nearest) << area.left << ", " << area.top;
  }
  display.monitors = {{"A", {5, 5, 5, 9}}, {"B", {9, 0, 0, 9}}, {"C", {kMin, 0, kMax, 9}}};
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), L"") << "none has an extent within reason";
  EXPECT_FALSE(CanOpen(L"A") || CanOpen(L"C"));
}

TEST_F(ScreenTest, ADisplayIsFoundByItsNameAndDescribedInARecordOfItsSize) {
  EXPECT_TRUE(CanOpen(L"LEFT"));
  EXPECT_FALSE(CanOpen(L"left") || CanOpen(L"") || CanOpen(nullptr));
  DEVMODEW mode{sizeof mode, 0, 0};
  EXPECT_EQ(EnumDisplaySettingsW(L"\x4E3B\x5C4F", ENUM_CURRENT_SETTINGS, &mode), 1);
  EXPECT_EQ(EnumDisplaySettingsW(L"NONE", ENUM_CURRENT_SETTINGS, &mode), 0);
  EXPECT_TRUE(mode.dmPelsWidth == 400 && mode.dmPelsHeight == 300);
  display.monitors[1].name = std::string(100, 'n');
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), std::wstring(31, L'n')) << "cut to what the record holds";
}

TEST_F(ScreenTest, ACopyIsOpaqueFromTheDisplaysOriginAndBlackPastItsEnd) {
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

TEST_F(ScreenTest, OnlyADisplayIsCopiedFromAndItsFailureIsTold) {
  EXPECT_EQ(BitBlt(to, 0, 0, 0, 5, left, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, to, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(left, 0, 0, 5, 5, left, 0, 0, kCapture), 0);
  EXPECT_EQ(At(0, 0), kUntouched);
  EXPECT_EQ(CreateCompatibleBitmap(left, 32768, 1), nullptr);
  display.fails = true;
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, left, 0, 0, kCapture), 0);
  display.throws = true;
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, left, 0, 0, kCapture), 0);
  display.hasNoMonitors = true;
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), L"");
  EXPECT_FALSE(CanOpen(L"LEFT"));
}

}  // namespace
