#include "platform/text/Unicode.h"

#include <vector>

#include <gtest/gtest.h>

#include "platform/text/CodePage.h"
#include "platform/text/Paths.h"

namespace {

constexpr wchar_t kBad = 0xFFFD;

// In a buffer of exactly its size, so that the sanitizers see a read past the end.
std::wstring Decode(const std::string& bytes, const std::string& charset = {}) {
  const std::vector<char> exact(bytes.begin(), bytes.end());
  return DecodeText({exact.data(), exact.size()}, charset);
}

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
      {"a lead of two at the end", "a\xC3", {L'a', kBad}},
      {"a lead of two before a letter", "\xC3z", {kBad, L'z'}},
      {"a lead of three and one follower at the end", "\xE5\xBE", {kBad}},
      {"a lead of three and one follower before a letter", "\xE5\xBEz", {kBad, L'z'}},
      {"a lead of four and one follower, then a good one", "\xF0\x9F\xC3\xA9", {kBad, 0xE9}},
      {"a lead of four and two followers", "\xF0\x9F\x98z", {kBad, L'z'}},
      {"two leads", "\xE5\xE5\xBE\xAE", {kBad, 0x5FAE}},
      {"overlong forms of two", "\xC0\xAF\xC1\xBF", {kBad, kBad, kBad, kBad}},
      {"an overlong form of three", "\xE0\x9F\xBF", {kBad, kBad, kBad}},
      {"an overlong form of four", "\xF0\x8F\xBF\xBF", {kBad, kBad, kBad, kBad}},
      {"surrogates", "\xED\xA0\x80\xED\xBF\xBF", {kBad, kBad, kBad, kBad, kBad, kBad}},
      {"past the last plane", "\xF4\x90\x80\x80", {kBad, kBad, kBad, kBad}},
      {"leads that no text has", "\xF5\xF8\xFC\xFE\xFF", {kBad, kBad, kBad, kBad, kBad}},
      {"the first of two and of three bytes", "\xC2\x80\xE0\xA0\x80", {0x80, 0x800}},
      {"the ends of the gap of surrogates", "\xED\x9F\xBF\xEE\x80\x80", {0xD7FF, 0xE000}},
      {"a mark of byte order is kept", "\xEF\xBB\xBFz", {0xFEFF, L'z'}},
      {"pairs", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", Units({0xD800, 0xDC00, 0xDBFF, 0xDFFF})},
  };
  for (const auto& [what, bytes, text] : cases) {
    EXPECT_EQ(text, Decode(bytes)) << what;
  }
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

TEST(UnicodeTest, HalfASurrogatePairIsReplaced) {
  const std::string bad = "\xEF\xBF\xBD";
  EXPECT_EQ(bad, EncodeText(Units({0xD83D}), {}));
  EXPECT_EQ(bad + "z", EncodeText(Units({0xD83D, 'z'}), {}));
  EXPECT_EQ(bad + bad, EncodeText(Units({0xDE00, 0xD83D}), {}));
  EXPECT_EQ(bad + "\xF0\x9F\x98\x80", EncodeText(Units({0xD83D, 0xD83D, 0xDE00}), {}));
  EXPECT_EQ(bad + bad + bad, EncodeText(Units({0x110000, 0x80000000, 0xFFFFFFFF}), {}));
}

TEST(CodePageTest, OtherCharacterSetsAreConvertedOrCountAsUtf8) {
  EXPECT_EQ(std::wstring(1000, L'\xE9'), Decode(std::string(1000, '\xE9'), "ISO-8859-1"));
  EXPECT_EQ(std::string(1000, '\xE9'), EncodeText(std::wstring(1000, L'\xE9'), "ISO-8859-1"));
  EXPECT_EQ("a?b?", EncodeText(Units({'a', 0x20AC, 'b', 0xD83D, 0xDE00}), "ISO-8859-1"));
  EXPECT_EQ(Units({'a', 0x5FAE, kBad}), Decode("a\xCE\xA2\xCE", "GBK")) << "cut in a character";
  EXPECT_EQ("\xCE\xA2?", EncodeText(Units({0x5FAE, 0x0E01}), "GBK"));
  // Sets whose accents are characters: the last letter may be waiting for one.
  EXPECT_EQ(Units({'a', 'b', 'c'}), Decode("abc", "TCVN5712-1"));
  EXPECT_EQ(Units({'a', kBad, 'x'}), Decode("a\x8Ax", "CP1258"));
  EXPECT_EQ("a\x88\x66", EncodeText(Units({'a', 0xCA}), "BIG5-HKSCS"));
  EXPECT_EQ("\x88\x66?a", EncodeText(Units({0xCA, 0x0E01, 'a'}), "BIG5-HKSCS"));
  EXPECT_EQ(Units({0x5FAE}), Decode("\xE5\xBE\xAE", "NO-SUCH-SET"));
  EXPECT_EQ("\xE5\xBE\xAE", EncodeText(Units({0x5FAE}), "NO-SUCH-SET"));
}

TEST(CodePageTest, WhatIsNotKnownAndAResultThatDoesNotFitAreRefused) {
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, nullptr, -1, nullptr, 0));
  EXPECT_EQ(0, MultiByteToWideChar(437, 0, "a", -1, nullptr, 0));
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 8, "a", -1, nullptr, 0));
  EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, L"a", 1, nullptr, 0, nullptr, nullptr));
  wchar_t wide[3] = {};
  EXPECT_EQ(3, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, nullptr, 0));
  EXPECT_EQ(3, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, wide, 3));
  EXPECT_EQ(Units({'a', 0xE9}), wide);
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, wide, 2));
  char narrow[4] = {};
  EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, L"a\xE9", -1, narrow, 4, nullptr, nullptr));
  EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, L"a\xE9", -1, narrow, 3, nullptr, nullptr));
}

TEST(PathsTest, BothSeparatorsBecomeSlashes) {
  EXPECT_EQ("/a/b/\xC3\xA9.png", NativePath(L"/a\\b/\xE9.png"));
}

}  // namespace
