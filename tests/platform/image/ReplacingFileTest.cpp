// What stands at the target of a save, as the systems with modes and links know it.
#include <gtest/gtest.h>
#include <parchlet/Pictures.h>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/image/ReplacingFile.h"
#include "SavedPicture.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(FailedSaveTest, AFullDiskLeavesTheFileThatWasThereAndNothingBesideIt) {
  const TemporaryFolder folder;
  const std::string path = folder.File(std::string(255, 'n'));  // the longest name there is
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

TEST(FailedSaveTest, APipeStaysAndTooFewPixelsLeaveNoFile) {
  const TemporaryFolder folder;
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(Save(PictureEncoder::kBmp, pipe));
  EXPECT_FALSE(ReplacingFile(pipe).Commit());
  EXPECT_FALSE(parchlet::SavePicture({2, 2, {1, 2, 3}}, folder.File("board")));
  EXPECT_TRUE(std::filesystem::is_fifo(pipe) && folder.FileCount() == 1);
}

TEST(ReplacedFileTest, ALinkIsFollowedToItsTargetWhichKeepsItsMode) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
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

TEST(ReplacedFileTest, AFileThatMayNotBeWrittenStays) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("board")) << "";
  ASSERT_EQ(chmod(folder.File("board").c_str(), 0444), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  // The superuser may write everything, so that it takes another one.
  constexpr uid_t kNobody = 65534;
  const uid_t user = geteuid();
  ASSERT_EQ(seteuid(user == 0 ? kNobody : user), 0);
  const bool isReplaced = Save(PictureEncoder::kBmp, folder.File("board"));
  const bool isNewSaved = Save(PictureEncoder::kBmp, folder.File("new"));
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_FALSE(isReplaced);
  EXPECT_TRUE(isNewSaved) << "in the same folder";
  EXPECT_EQ(std::filesystem::file_size(folder.File("board")), 0U);
  EXPECT_EQ(folder.FileCount(), 2U);
}

}  // namespace
