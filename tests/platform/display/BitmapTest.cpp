#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

#include "platform/image/Picture.h"
#include "platform/Platform.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using Gdiplus::Bitmap;
using Gdiplus::ImageCodecInfo;

// The encoder's identifier, found as the home platform has it found.
CLSID EncoderFor(const std::wstring& mimeType) {
  UINT count = 0;
  UINT size = 0;
  EXPECT_EQ(Gdiplus::GetImageEncodersSize(&count, &size), Gdiplus::Ok);
  EXPECT_EQ(size, count * sizeof(ImageCodecInfo));
  std::vector<ImageCodecInfo> encoders(count);
  EXPECT_EQ(Gdiplus::GetImageEncoders(count, size, encoders.data()), Gdiplus::Ok);
  for (const ImageCodecInfo& encoder : encoders) {
    if (encoder.MimeType == mimeType) {
      return encoder.Clsid;
    }
  }
  return {};
}

class BitmapTest : public testing::Test {
 protected:
  std::wstring Path(const char* name) const { return (folder.Path() / name).wstring(); }

  static PixelSection MakeSection() {
    PixelSection section{2, 2, AllocatePixels(4)};
    const std::uint32_t pixels[] = {0xFFFF0000, 0xFF00FF00, 0x80008000, 0x00000000};
    std::copy(std::begin(pixels), std::end(pixels), section.pixels.get());
    return section;
  }

  const TemporaryFolder folder;
  PixelSection section = MakeSection();
};

TEST_F(BitmapTest, AFailedSaveAndASectionWithoutPixelsAreTold) {
  Bitmap bitmap(&section, nullptr);
  const CLSID unknown = EncoderFor(L"image/tiff");
  const CLSID png = EncoderFor(L"image/png");
  EXPECT_NE(bitmap.Save(Path("a").c_str(), &unknown), Gdiplus::Ok);
  EXPECT_NE(bitmap.Save(Path("missing/a").c_str(), &png), Gdiplus::Ok);
  EXPECT_NE(bitmap.GetLastStatus(), Gdiplus::Ok);
  Bitmap none(nullptr, nullptr);
  EXPECT_NE(none.GetLastStatus(), Gdiplus::Ok);
  EXPECT_EQ(none.GetThumbnailImage(0, 0, nullptr, nullptr), nullptr);
  EXPECT_NE(none.Save(Path("a").c_str(), &png), Gdiplus::Ok);
  PixelSection empty;
  EXPECT_NE(Bitmap(&empty, nullptr).GetLastStatus(), Gdiplus::Ok);
  EXPECT_EQ(folder.FileCount(), 0U);
}

TEST_F(BitmapTest, APathThatExistsMayHaveEitherSeparator) {
  const std::wstring path = folder.Path().wstring();
  EXPECT_EQ(PathFileExistsW(path.c_str()), 1);
  EXPECT_EQ(PathFileExistsW((path + L"\\").c_str()), 1);
  EXPECT_EQ(PathFileExistsW((path + L"\\a").c_str()), 0);
  const CLSID png = EncoderFor(L"image/png");
  ASSERT_EQ(Bitmap(&section, nullptr).Save((path + L"\\\\a").c_str(), &png), Gdiplus::Ok);
  EXPECT_EQ(PathFileExistsW((path + L"/a").c_str()), 1);
  EXPECT_EQ(PathFileExistsW(L""), 0);
  EXPECT_EQ(PathFileExistsW(nullptr), 0);
}

TEST(LocalTime, IsTheSystemsUntilItIsReplaced) {
  SYSTEMTIME time{};
  // Not std::time, which may lag behind by a tick of the coarse clock.
  const auto now = [] {
    return std::chrono::system_clock::to_time_t(
        std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
  };
  const std::time_t before = now();
  GetLocalTime(&time);
  const std::time_t after = now();
  std::tm fields{time.wSecond,
                 time.wMinute,
                 time.wHour,
                 time.wDay,
                 time.wMonth - 1,
                 time.wYear - 1900,
                 0,
                 0,
                 -1,
                 0,
                 nullptr};
  const std::time_t told = std::mktime(&fields);
  EXPECT_LE(before, told);
  EXPECT_LE(told, after);
  EXPECT_EQ(time.wDayOfWeek, fields.tm_wday);
  EXPECT_LT(time.wMilliseconds, 1000);

  SetLocalTimeSource([] { return SYSTEMTIME{2022, 11, 2, 15, 12, 43, 36, 123}; });
  GetLocalTime(&time);
  SetLocalTimeSource(nullptr);
  EXPECT_EQ(time.wYear, 2022);
  EXPECT_EQ(time.wMilliseconds, 123);
}

}  // namespace
