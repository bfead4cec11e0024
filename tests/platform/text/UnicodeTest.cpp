#include "platform/text/Charset.h"

#include <gtest/gtest.h>

#include "platform/text/CodePage.h"

namespace {

constexpr wchar_t kBad = 0xFFFD;

std::wstring Units(std::initializer_list<unsigned> units) {
  return {units.begin(), units.end()};
}

TEST(UnicodeTest, EveryMalformedRunBecomesOneReplacement) {
  const struct {
    const char* what;
    std::string bytes;
    std::wstring text;
  } cases[] = {
      {"followers alone", "a\x80\xBFz", {L'a', kBad, kBad, L'z'}},
      {"a lead of three and one follower at the end", "\xE5\xBE", {kBad}},
      {"a lead of four and one follower, then a good one", "\xF0\x9F\xC3\xA9", {kBad, 0xE9}},
      {"an overlong form of four", "\xF0\x8F\xBF\xBF", {kBad, kBad, kBad, kBad}},
      {"surrogates", "\xED\xA0\x80\xED\xBF\xBF", {kBad, kBad, kBad, kBad, kBad, kBad}},
      {"past the last plane", "\xF4\x90\x80\x80", {kBad, kBad, kBad, kBad}},
      {"a mark of byte order is kept", "\xEF\xBB\xBFz", {0xFEFF, L'z'}},
  };
  for (const auto& [what, bytes, text] : cases) {
    EXPECT_EQ(text, DecodeText(bytes, {})) << what;
  }
  const std::string bad = "\xEF\xBF\xBD";
  EXPECT_EQ(bad + bad + "z", EncodeText(Units({0xDE00, 0xD83D, 'z'}), {}));
  EXPECT_EQ(bad + "\xF0\x9F\x98\x80", EncodeText(Units({0xD83D, 0xD83D, 0xDE00}), {}));
  EXPECT_EQ(bad + bad, EncodeText(Units({0x110000, 0xFFFFFFFF}), {}));
}

TEST(UnicodeTest, EveryCodePointGoesAroundUnchanged) {
  for (unsigned c = 0; c <= 0x10FFFF; c += c == 0xD7FF ? 0x801 : 1) {
    const std::string bytes = EncodeText(Units({c}), {});
    const std::wstring units = DecodeText(bytes, {});
    ASSERT_EQ(c < 0x80 ? 1U : c < 0x800 ? 2U : c < 0x10000 ? 3U : 4U, bytes.size()) << c;
    ASSERT_EQ(c < 0x10000 ? 1U : 2U, units.size()) << c;
    ASSERT_EQ(bytes, EncodeText(units, {})) << c;
  }
}

TEST(CodePageTest, OtherCharacterSetsAreConvertedOrCountAsUtf8) {
  EXPECT_EQ(std::wstring(1000, L'\xE9'), DecodeText(std::string(1000, '\xE9'), "ISO-8859-1"));
  EXPECT_EQ(std::string(1000, '\xE9'), EncodeText(std::wstring(1000, L'\xE9'), "ISO-8859-1"));
  EXPECT_EQ("a?b?", EncodeText(Units({'a', 0x20AC, 'b', 0xD83D, 0xDE00}), "ISO-8859-1"));
  EXPECT_EQ(Units({'a', 0x5FAE, kBad}), DecodeText("a\xCE\xA2\xCE", "GBK")) << "cut in a character";
  // A set whose accents are characters: the last letter may be waiting for one.
  EXPECT_EQ(Units({'a', 'b', 'c'}), DecodeText("abc", "TCVN5712-1"));
  EXPECT_EQ("a\x88\x66", EncodeText(Units({'a', 0xCA}), "BIG5-HKSCS"));
  EXPECT_EQ(Units({0x5FAE}), DecodeText("\xE5\xBE\xAE", "NO-SUCH-SET"));
}

TEST(CodePageTest, WhatIsNotKnownAndAResultThatDoesNotFitAreRefused) {
  EXPECT_EQ(0, MultiByteToWideChar(437, 0, "a", -1, nullptr, 0));
  EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, nullptr, -1, nullptr, 0, nullptr, nullptr));
  wchar_t wide[3] = {};
  EXPECT_EQ(3, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, wide, 3));
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, wide, 2));
  char narrow[4] = {};
  EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, L"a\xE9", -1, narrow, 4, nullptr, nullptr));
  EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, L"a\xE9", -1, narrow, 3, nullptr, nullptr));
}

}  // namespace
