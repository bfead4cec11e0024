#include <gtest/gtest.h>
#include <parchlet/Pictures.h>

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "ImageFiles.h"
#include "platform/image/Picture.h"
#include "platform/image/ReplacingFile.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr int kSide = 64;

bool Save(PictureEncoder encoder, const std::string& path, std::uint32_t pixel = 0xFF336699) {
  const std::vector<std::uint32_t> pixels(std::size_t{kSide} * kSide, pixel);
  return SavePicture({pixels.data(), kSide, kSide, std::ptrdiff_t{kSide} * 4}, encoder, path);
}

Picture Load(const std::string& path) {
  return DecodePicture(ReadWholeFile(path));
}

class SavePictureTest : public testing::Test {
 protected:
  const TemporaryFolder folder;
  const std::string path = folder.File(std::string(255, 'n'));  // the longest name there is
};

TEST_F(SavePictureTest, APngKeepsEveryPremultipliedColor) {
  std::vector<std::uint32_t> pixels;
  for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
    for (std::uint32_t channel = 0; channel < 256; ++channel) {
      const std::uint32_t value = std::min(alpha, channel);
      pixels.push_back(alpha << 24 | value << 16 | value / 2 << 8 | (alpha - value));
    }
  }
  ASSERT_TRUE(SavePicture({pixels.data(), 256, 256, 1024}, PictureEncoder::kPng, path));
  EXPECT_EQ(Load(path).format, PictureFormat::kPng);
  EXPECT_EQ(Load(path).pixels, pixels);
}

TEST_F(SavePictureTest, JpegAndBmpAreComposedOverWhite) {
  const std::pair<std::uint32_t, std::uint32_t> cases[] = {
      {0x00000000, 0xFFFFFFFF}, {0x80800000, 0xFFFF7F7F}, {0xFF123456, 0xFF123456}};
  for (const auto& [stored, shown] : cases) {
    ASSERT_TRUE(Save(PictureEncoder::kBmp, path, stored));
    EXPECT_EQ(Load(path).pixels, std::vector(std::size_t{kSide} * kSide, shown));
    ASSERT_TRUE(Save(PictureEncoder::kJpeg, path, stored));
    const std::uint32_t seen = Load(path).pixels.at(0);
    for (const int shift : {0, 8, 16}) {
      // Quality 90 keeps the mean of a block in steps of 3 / 8, and two colour conversions round.
      EXPECT_NEAR(seen >> shift & 0xFF, shown >> shift & 0xFF, 3) << std::hex << shown;
    }
  }
  const std::uint32_t pixels[] = {0xFFFF0000, 0xFFAAAAAA, 0xFF0000FF};  // rows may lie apart
  ASSERT_TRUE(SavePicture({pixels, 1, 2, 8}, PictureEncoder::kBmp, path));
  Bytes expected = ReadSeed("bmp/BottomUp");
  expected[2] = std::byte{62};  // the size of the whole file, which the seed leaves out
  EXPECT_EQ(ReadWholeFile(path), expected);
}

constexpr PictureEncoder kEncoders[] = {PictureEncoder::kPng, PictureEncoder::kJpeg,
                                        PictureEncoder::kBmp};

TEST_F(SavePictureTest, AFullDiskLeavesTheFileThatWasThereAndNothingBesideIt) {
  for (const PictureEncoder encoder : kEncoders) {
    ASSERT_TRUE(Save(encoder, path));
    const std::size_t size = ReadWholeFile(path).size();
    std::ofstream(path) << "old";
    for (const std::size_t room : {std::size_t{0}, size / 2, size - 1, size}) {
      bool saved = true;
      {
        const SmallDisk disk(room);
        saved = Save(encoder, path);
      }
      EXPECT_EQ(saved, room == size) << "with room for " << room << " of " << size << " bytes";
      EXPECT_EQ(std::filesystem::file_size(path), saved ? size : 3U);
      EXPECT_EQ(folder.FileCount(), 1U);
    }
  }
}

TEST_F(SavePictureTest, WhatNoFileCanStandAtOrNoFormatHoldsFails) {
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {std::string(), folder.File("missing/board"),
                                  folder.Path().string(), folder.File({"bo\0ard", 6}), pipe}) {
    EXPECT_FALSE(Save(PictureEncoder::kBmp, path)) << path;
  }
  const std::uint32_t pixel = 0;
  for (const PictureEncoder encoder : kEncoders) {
    EXPECT_FALSE(SavePicture({}, encoder, path));
    // Every row is the same one pixel: no format holds so many rows of it.
    EXPECT_FALSE(SavePicture({&pixel, 1, 0x7FFFFFFF, 0}, encoder, path));
  }
  EXPECT_FALSE(parchlet::SavePicture({2, 2, {pixel, pixel, pixel}}, folder.File("board")));
  EXPECT_FALSE(ReplacingFile(pipe).Commit());
  EXPECT_TRUE(std::filesystem::is_fifo(pipe) && folder.FileCount() == 1);
}

TEST_F(SavePictureTest, ALinkIsFollowedToItsTargetWhichKeepsItsMode) {
  namespace fs = std::filesystem;
  const fs::path target = folder.File("real/board");
  fs::create_directory(folder.File("real"));
  std::ofstream(target).close();
  fs::permissions(target, static_cast<fs::perms>(0604));
  fs::create_symlink("real/board", folder.File("near"));
  fs::create_symlink(folder.File("near"), folder.File("far"));
  ASSERT_TRUE(Save(PictureEncoder::kBmp, folder.File("far")));
  EXPECT_TRUE(fs::is_symlink(folder.File("far")) && fs::is_symlink(folder.File("near")));
  EXPECT_EQ(Load(target).width, kSide);
  EXPECT_EQ(fs::status(target).permissions(), static_cast<fs::perms>(0604));

  fs::create_symlink("real/new", folder.File("dangling"));
  ASSERT_TRUE(Save(PictureEncoder::kBmp, folder.File("dangling")));
  EXPECT_TRUE(fs::is_regular_file(folder.File("real/new")));
  fs::create_symlink("circle", folder.File("circle"));
  EXPECT_FALSE(Save(PictureEncoder::kBmp, folder.File("circle")));
  EXPECT_EQ(folder.FileCount(), 5U);
}

TEST_F(SavePictureTest, AFileThatMayNotBeWrittenStays) {
  std::ofstream(path) << "";
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  // The superuser may write everything, so that it takes another one.
  constexpr uid_t kNobody = 65534;
  const uid_t user = geteuid();
  ASSERT_EQ(seteuid(user == 0 ? kNobody : user), 0);
  const bool isReplaced = Save(PictureEncoder::kBmp, path);
  const bool isNewSaved = Save(PictureEncoder::kBmp, folder.File("new"));
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_FALSE(isReplaced);
  EXPECT_TRUE(isNewSaved) << "in the same folder";
  EXPECT_EQ(std::filesystem::file_size(path), 0U);
  EXPECT_EQ(folder.FileCount(), 2U);
}

}  // namespace
