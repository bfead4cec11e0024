// Files as Windows knows them: locked, read-only, or no files at all.
#include <gtest/gtest.h>

#include <windows.h>

#include "platform/files/RegularFile.h"
#include "tests/platform/image/SavedPicture.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A file, open with these rights and shared as told.
class OpenFileHandle {
 public:
  OpenFileHandle(const std::string& path, DWORD access, DWORD shared)
      : handle(CreateFileA(path.c_str(), access, shared, nullptr, OPEN_ALWAYS, 0, nullptr)) {}
  ~OpenFileHandle() { CloseHandle(handle); }
  OpenFileHandle(const OpenFileHandle&) = delete;
  OpenFileHandle& operator=(const OpenFileHandle&) = delete;

 private:
  HANDLE handle;
};

TEST(WindowsFiles, AFailedSaveKeepsTheFileThatIsLockedOrReadOnlyAndNoDeviceIsReplaced) {
  const TemporaryFolder folder;
  const std::string path = folder.File("board");
  for (const PictureEncoder encoder : kEncoders) {
    std::ofstream(path) << "old";
    for (const DWORD shared :
         {DWORD{0}, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
      const OpenFileHandle locked(path, GENERIC_READ, shared);
      EXPECT_FALSE(Save(encoder, path)) << shared;
    }
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Save(encoder, path));
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(std::filesystem::file_size(path), 3U);
    EXPECT_TRUE(Save(encoder, path));
    EXPECT_NE(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U) << "is taken over";
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    for (const char* device : {"NUL", "\\\\.\\NUL", "\\\\.\\pipe\\no-such-pipe"}) {
      EXPECT_FALSE(Save(encoder, device)) << device;
    }
    EXPECT_EQ(folder.FileCount(), 1U);
  }
}

TEST(WindowsFiles, NamesAreUtf8AndEitherSeparatorWill) {
  const TemporaryFolder folder;
  const std::wstring wide = folder.Path().wstring() + L"\\\x677F \xE9.png";
  const std::string path = folder.Path().string() + "/\xE6\x9D\xBF \xC3\xA9.png";
  ASSERT_TRUE(Save(PictureEncoder::kPng, path));
  EXPECT_NE(GetFileAttributesW(wide.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_NE(OpenRegularFile(wide.c_str()), nullptr);
  const std::string broken = folder.Path().string() + "/\xE6\x9D.png";
  EXPECT_FALSE(Save(PictureEncoder::kPng, broken)) << "no UTF-8";
  EXPECT_EQ(folder.FileCount(), 1U);
}

TEST(WindowsFiles, AnOpenFileIsNotLockedAndNothingButAFileIsOpened) {
  const TemporaryFolder folder;
  const std::string path = folder.File("board.bmp");
  ASSERT_TRUE(Save(PictureEncoder::kBmp, path));
  const std::wstring wide(path.begin(), path.end());
  const OwnedFile file = OpenRegularFile(wide.c_str());
  ASSERT_NE(file, nullptr);
  { const OpenFileHandle writer(path, GENERIC_READ | GENERIC_WRITE, kShareAll); }
  EXPECT_EQ(std::fgetc(file.get()), 'B');
  EXPECT_NE(DeleteFileA(path.c_str()), FALSE) << "while it is open";
  for (const wchar_t* other : {L"", L"NUL", L"no such file", L"\\\\.\\pipe\\no-such-pipe"}) {
    EXPECT_EQ(OpenRegularFile(other), nullptr) << other;
  }
  EXPECT_EQ(OpenRegularFile(folder.Path().c_str()), nullptr);
  const HANDLE pipe =
      CreateNamedPipeW(L"\\\\.\\pipe\\parchlet-test", PIPE_ACCESS_DUPLEX, 0, 1, 64, 64, 0, nullptr);
  EXPECT_EQ(OpenRegularFile(L"\\\\.\\pipe\\parchlet-test"), nullptr);
  CloseHandle(pipe);
}

}  // namespace
