#include <gtest/gtest.h>
#include <parchlet/Display.h>
#include <parchlet/MemoryWindow.h>

#include <limits>
#include <memory>
#include <optional>

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
  std::vector<DisplayMonitor> GetMonitors() const override { return monitors; }

  bool Capture(const RECT& area, std::uint32_t* pixels) override {
    for (LONG y = area.top; y < area.bottom; ++y) {
      for (LONG x = area.left; x < area.right; ++x) {
        *pixels++ = ColorAt(x, y) & ~kBlack;
      }
    }
    return !fails;
  }

  std::vector<DisplayMonitor> monitors;
  bool fails = false;
};

struct DeleteContext {
  void operator()(DeviceContext* context) const { DeleteDC(context); }
};
using Context = std::unique_ptr<DeviceContext, DeleteContext>;

class ScreenTest : public testing::Test {
 protected:
  ScreenTest() {
    display.monitors = {{"LEFT", {-300, -20, 0, 100}}, {"主屏", {0, 0, 400, 300}}};
    SetDisplay(&display);
  }
  ~ScreenTest() override { SetDisplay(nullptr); }

  static Context Open(const wchar_t* device) {
    return Context(CreateDCW(device, device, nullptr, nullptr));
  }

  static std::wstring NearestTo(const RECT& area) {
    MONITORINFOEXW info{};
    info.cbSize = sizeof info;
    const HMONITOR monitor = MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST);
    return GetMonitorInfoW(monitor, &info) != 0 ? info.szDevice : L"";
  }

  PaintedDisplay display;
};

// A bitmap selected into a context of its own, all of one colour that no screen shows.
class Target {
 public:
  static constexpr std::uint32_t kUntouched = 0x12345678;

  Target(HDC like, int width, int height)
      : context(CreateCompatibleDC(like)), bitmap(CreateCompatibleBitmap(like, width, height)) {
    std::fill_n(bitmap->pixels.get(),
                static_cast<std::size_t>(width) * static_cast<std::size_t>(height), kUntouched);
    previous = SelectObject(context.get(), bitmap);
  }
  ~Target() {
    SelectObject(context.get(), previous);
    DeleteObject(bitmap);
  }
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;

  std::uint32_t At(int x, int y) const {
    return bitmap->pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap->width) +
                          static_cast<std::size_t>(x)];
  }

  Context context;
  HBITMAP bitmap;
  HGDIOBJ previous = nullptr;
};

TEST_F(ScreenTest, ADisplayIsFoundByItsNameAndTellsItsSize) {
  EXPECT_NE(Open(L"LEFT"), nullptr);
  EXPECT_EQ(Open(L"left"), nullptr);
  EXPECT_EQ(Open(L""), nullptr);
  EXPECT_EQ(Open(nullptr), nullptr);
  DEVMODEW mode{sizeof mode, 0, 0};
  EXPECT_EQ(EnumDisplaySettingsW(L"\x4E3B\x5C4F", ENUM_CURRENT_SETTINGS, &mode), 1);
  EXPECT_EQ(mode.dmPelsWidth, 400U);
  EXPECT_EQ(mode.dmPelsHeight, 300U);
  EXPECT_EQ(EnumDisplaySettingsW(L"NONE", ENUM_CURRENT_SETTINGS, &mode), 0);
  EXPECT_EQ(mode.dmPelsWidth, 400U);
}

TEST_F(ScreenTest, TheMonitorWithTheLargestPartOfAnAreaOrTheClosestToItIsNearest) {
  const std::pair<RECT, const wchar_t*> cases[] = {
      {{-10, 0, 5, 10}, L"LEFT"},
      {{-5, 0, 10, 10}, L"\x4E3B\x5C4F"},
      {{-900, 0, -800, 10}, L"LEFT"},
      {{-50, 150, -40, 160}, L"\x4E3B\x5C4F"},  // 40 to the right, 50 upwards
      {{-60, 150, -55, 160}, L"LEFT"},          // 55 to the right, 50 upwards
      {{kMax, kMax, kMax, kMax}, L"\x4E3B\x5C4F"},
      {{kMin, kMin, kMin, kMin}, L"LEFT"}};
  for (const auto& [area, nearest] : cases) {
    EXPECT_EQ(NearestTo(area), nearest) << area.left << ", " << area.top;
  }
  display.monitors = {{"A", {5, 5, 5, 9}}, {"B", {9, 0, 0, 9}}, {"C", {kMin, 0, kMax, 9}}};
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), L"") << "none has an extent within reason";
  EXPECT_EQ(Open(L"A"), nullptr);
  EXPECT_EQ(Open(L"C"), nullptr);
}

TEST_F(ScreenTest, AMonitorsDescriptionNeedsARecordOfItsOwnSize) {
  const RECT area = {0, 0, 1, 1};
  MONITORINFOEXW info{};
  info.cbSize = sizeof(MONITORINFO);
  EXPECT_EQ(GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &info), 0);
  info.cbSize = sizeof info;
  EXPECT_EQ(GetMonitorInfoW(nullptr, &info), 0);
  EXPECT_EQ(GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &info), 1);
  EXPECT_EQ(info.rcMonitor.right, 400);
  display.monitors[1].name = std::string(100, 'n');
  EXPECT_EQ(NearestTo({0, 0, 1, 1}), std::wstring(31, L'n')) << "cut to what the record holds";
}

TEST_F(ScreenTest, ACopyCountsFromTheDisplaysOriginAndIsOpaque) {
  const Context left = Open(L"LEFT");
  const Target target(left.get(), 20, 10);
  ASSERT_EQ(BitBlt(target.context.get(), 2, 3, 5, 4, left.get(), 10, 20, kCapture), 1);
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 20; ++x) {
      const bool isCopied = x >= 2 && x < 7 && y >= 3 && y < 7;
      const std::uint32_t shown = ColorAt(-300 + 10 + x - 2, -20 + 20 + y - 3);
      ASSERT_EQ(target.At(x, y), isCopied ? shown : Target::kUntouched) << x << ", " << y;
    }
  }
}

TEST_F(ScreenTest, ACopyIsBlackWhereTheDisplayEndsAndCutWhereTheBitmapEnds) {
  const Context left = Open(L"LEFT");
  const Target target(left.get(), 20, 20);
  ASSERT_EQ(BitBlt(target.context.get(), -5, -5, kMax, kMax, left.get(), 290, 110, kCapture), 1);
  EXPECT_EQ(target.At(0, 0), ColorAt(-5, 95));
  EXPECT_EQ(target.At(4, 4), ColorAt(-1, 99));
  EXPECT_EQ(target.At(5, 4), kBlack);
  EXPECT_EQ(target.At(4, 5), kBlack);
  EXPECT_EQ(target.At(19, 19), kBlack);
  ASSERT_EQ(BitBlt(target.context.get(), 0, 0, 20, 20, left.get(), kMin, kMax, kCapture), 1);
  EXPECT_EQ(target.At(0, 0), kBlack);
}

TEST_F(ScreenTest, OnlyADisplayIsCopiedFromAndItsFailureIsTold) {
  const Context left = Open(L"LEFT");
  const Target target(left.get(), 20, 10);
  const HDC to = target.context.get();
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, left.get(), 0, 0, SRCCOPY), 0);
  EXPECT_EQ(BitBlt(to, 0, 0, 0, 5, left.get(), 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, to, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, nullptr, 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(left.get(), 0, 0, 5, 5, left.get(), 0, 0, kCapture), 0);
  EXPECT_EQ(BitBlt(nullptr, 0, 0, 5, 5, left.get(), 0, 0, kCapture), 0);
  EXPECT_EQ(CreateCompatibleBitmap(left.get(), 32768, 1), nullptr);
  EXPECT_EQ(CreateCompatibleBitmap(nullptr, 5, 5), nullptr);
  EXPECT_EQ(target.At(0, 0), Target::kUntouched);
  display.fails = true;
  EXPECT_EQ(BitBlt(to, 0, 0, 5, 5, left.get(), 0, 0, kCapture), 0);
}

}  // namespace
