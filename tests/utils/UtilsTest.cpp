#include <parchlet/Utils.h>

#include <cstring>
#include <memory>
#include <regex>
#include <set>

#include <gmock/gmock.h>

#include "platform/Platform.h"

namespace {

TEST(UtilsTest, TextIsReadUpToItsFirstZero) {
  for (const auto& [text, read] : {std::pair(std::string("ab\0cd", 5), "ab"), {"", ""}}) {
    const std::wstring wide(text.begin(), text.end());
    const std::wstring wideRead = Utils::Utf8ToUnicode(read);
    EXPECT_EQ(wideRead, Utils::Utf8ToUnicode(text));
    EXPECT_EQ(wideRead, Utils::AsciiToUnicode(text));
    EXPECT_EQ(read, Utils::UnicodeToUtf8(wide));
    EXPECT_EQ(read, Utils::UnicodeToAscii(wide));
    EXPECT_EQ(read, Utils::AsciiToUtf8(text));
    EXPECT_EQ(read, Utils::Utf8ToAscii(text));
  }
  EXPECT_EQ(L"\x5FAE", Utils::Utf8ToUnicode("\xE5\xBE\xAE"));
  EXPECT_EQ("\xE5\xBE\xAE", Utils::UnicodeToUtf8(L"\x5FAE"));
}

TEST(UtilsTest, AnIdentifierHasItsFormAndIsNeverRepeated) {
  // Version 4 in the third group, the variant's two bits in the fourth.
  const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9a-f]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  std::set<std::string> seen;
  for (int i = 0; i < 500; ++i) {
    const std::string id = Utils::GenerateGuid();
    ASSERT_TRUE(std::regex_match(id, form)) << id;
    EXPECT_TRUE(seen.insert(id).second) << id;
  }
}

using Block = std::unique_ptr<std::remove_pointer_t<HGLOBAL>, decltype(&GlobalFree)>;

Block Allocate(std::size_t size) {
  Block block(GlobalAlloc(0, size), &GlobalFree);
  std::memset(GlobalLock(block.get()), '#', size);
  return block;
}

std::string BytesOf(const Block& block, std::size_t size) {
  return {static_cast<const char*>(GlobalLock(block.get())), size};
}

TEST(PictureStreamTest, NoStreamIsMadeOfNothingOrOfTooMuch) {
  const Block block = Allocate(12);
  EXPECT_EQ(nullptr, Utils::GetPictureStream("data", nullptr, 4));
  EXPECT_EQ(nullptr, Utils::GetPictureStream("", block.get(), 4));
  EXPECT_EQ(nullptr, Utils::MakePictureStream(""));
  EXPECT_EQ(nullptr, Utils::GetPictureStream("data", block.get(), 0));
  EXPECT_EQ("############", BytesOf(block, 12)) << "untouched";
  EXPECT_EQ(nullptr, Utils::GetPictureStream("0123456789", block.get(), 9));
  EXPECT_EQ(std::string(9, '\0') + "###", BytesOf(block, 12)) << "cleared";
}

TEST(PictureStreamTest, TheStreamGivesTheDataAndLeavesTheBlockToTheCaller) {
  const std::string data("0123\0abcde", 10);
  const Block block = Allocate(10);
  IStream* stream = Utils::GetPictureStream(data, block.get(), 10);
  ASSERT_NE(nullptr, stream);
  char buffer[16] = {};
  ULONG read = 0;
  EXPECT_TRUE(SUCCEEDED(stream->Read(buffer, 4, &read)));
  EXPECT_EQ(4U, read);
  EXPECT_TRUE(SUCCEEDED(stream->Read(buffer + 4, 12, &read)));
  EXPECT_EQ(6U, read) << "fewer than asked for: the end";
  EXPECT_EQ(data, std::string(buffer, 10));
  EXPECT_EQ(0U, stream->Release());
  EXPECT_EQ(data, BytesOf(block, 10)) << "still the caller's";
}

}  // namespace
