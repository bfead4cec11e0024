// Runs the tests with GDI+ started, as a host on Windows must before it makes a page.
#include <parchlet/Platform.h>

#include <gdiplus.h>
#include <gmock/gmock.h>

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const Gdiplus::GdiplusStartupInput input;
  ULONG_PTR token = 0;
  if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) {
    return 1;
  }
  const int result = RUN_ALL_TESTS();
  Gdiplus::GdiplusShutdown(token);
  return result;
}
