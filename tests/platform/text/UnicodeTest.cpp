#include "platform/text/Unicode.h"

#include <random>

#include <gtest/gtest.h>

#include "platform/text/CodePage.h"
#include "platform/text/Paths.h"

namespace {

constexpr const char* kLatin = "ISO-8859-1";
constexpr wchar_t kBad = 0xFFFD;

// In a buffer of exactly its size, so that the sanitizers see a read past the end.
std::wstring Decode(const std::string& bytes, const std::string& charset = {}) {
  const std::vector<char> exact(bytes.begin(), bytes.end());
  return DecodeText({exact.data(), exact.size()}, charset);
}

std::wstring Units(std::initializer_list<unsigned> units) {
  std::wstring text;
  for (const unsigned unit : units) {
    text.push_back(static_cast<wchar_t>(unit));
  }
  return text;
}

TEST(UnicodeTest, EveryMalformedRunBecomesOneReplacement) {
  const struct {
    const char* what;
    std::string bytes;
    std::wstring text;
  } cases[] = {
      {"a follower alone", "a\x80z", {L'a', kBad, L'z'}},
      {"two followers alone", "\xBF\x80", {kBad, kBad}},
      {"a lead of two at the end", "a\xC3", {L'a', kBad}},
      {"a lead of two before a letter", "\xC3z", {kBad, L'z'}},
      {"a lead of three and one follower at the end", "\xE5\xBE", {kBad}},
      {"a lead of three and one follower before a letter", "\xE5\xBEz", {kBad, L'z'}},
      {"a lead of four and two followers", "\xF0\x9F\x98z", {kBad, L'z'}},
      {"a lead of four and three, then a good one", "\xF0\x9F\xC3\xA9", {kBad, 0xE9}},
      {"two leads", "\xE5\xE5\xBE\xAE", {kBad, 0x5FAE}},
      {"overlong slash of two", "\xC0\xAF", {kBad, kBad}},
      {"overlong of two, higher", "\xC1\xBF", {kBad, kBad}},
      {"overlong slash of three", "\xE0\x80\xAF", {kBad, kBad, kBad}},
      {"overlong of three, last", "\xE0\x9F\xBF", {kBad, kBad, kBad}},
      {"overlong of four", "\xF0\x8F\xBF\xBF", {kBad, kBad, kBad, kBad}},
      {"a high surrogate", "\xED\xA0\x80", {kBad, kBad, kBad}},
      {"a low surrogate", "\xED\xBF\xBF", {kBad, kBad, kBad}},
      {"past the last plane", "\xF4\x90\x80\x80", {kBad, kBad, kBad, kBad}},
      {"leads that no text has", "\xF5\xF8\xFC\xFE\xFF", {kBad, kBad, kBad, kBad, kBad}},
      {"an obsolete form of five", "\xF8\x88\x80\x80\x80", {kBad, kBad, kBad, kBad, kBad}},
      {"the first of two bytes", "\xC2\x80", {0x80}},
      {"the last of two bytes", "\xDF\xBF", {0x7FF}},
      {"the first of three bytes", "\xE0\xA0\x80", {0x800}},
      {"the last before the surrogates", "\xED\x9F\xBF", {0xD7FF}},
      {"the first after them", "\xEE\x80\x80", {0xE000}},
      {"the last of three bytes", "\xEF\xBF\xBF", {0xFFFF}},
      {"a mark of byte order is kept", "\xEF\xBB\xBFz", {0xFEFF, L'z'}},
  };
  for (const auto& [what, bytes, text] : cases) {
    EXPECT_EQ(text, Decode(bytes)) << what;
  }
  EXPECT_EQ(Units({0xD800, 0xDC00}), Decode("\xF0\x90\x80\x80"));
  EXPECT_EQ(Units({0xDBFF, 0xDFFF}), Decode("\xF4\x8F\xBF\xBF"));
}

TEST(UnicodeTest, EveryCodePointGoesAroundUnchanged) {
  for (unsigned c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) {
      c = 0xE000;
    }
    const std::wstring whole(1, static_cast<wchar_t>(c));
    const std::string bytes = EncodeText(whole, {});
    const std::wstring units = DecodeText(bytes, {});
    ASSERT_EQ(c < 0x10000 ? 1U : 2U, units.size()) << std::hex << c;
    ASSERT_EQ(bytes, EncodeText(units, {})) << std::hex << c;
    ASSERT_EQ(c < 0x80 ? 1U : c < 0x800 ? 2U : c < 0x10000 ? 3U : 4U, bytes.size());
  }
}

TEST(UnicodeTest, HalfASurrogatePairIsReplaced) {
  const std::string bad = "\xEF\xBF\xBD";
  EXPECT_EQ(bad, EncodeText(Units({0xD83D}), {}));
  EXPECT_EQ(bad + "z", EncodeText(Units({0xD83D, 'z'}), {}));
  EXPECT_EQ(bad, EncodeText(Units({0xDE00}), {}));
  EXPECT_EQ(bad + "\xF0\x9F\x98\x80", EncodeText(Units({0xD83D, 0xD83D, 0xDE00}), {}));
  EXPECT_EQ(bad + bad, EncodeText(Units({0xDE00, 0xD83D}), {}));
  EXPECT_EQ(bad + bad + bad, EncodeText(Units({0x110000, 0x80000000, 0xFFFFFFFF}), {}));
}

TEST(UnicodeTest, AnyBytesBecomeTextThatGoesAround) {
  std::mt19937 random(1);
  for (int round = 0; round < 20'000; ++round) {
    std::string bytes(random() % 8, '\0');
    for (char& byte : bytes) {
      // Mostly leads and followers.
      byte = static_cast<char>(random() % 4 == 0 ? random() % 256 : 0x80 + random() % 128);
    }
    const std::wstring text = Decode(bytes);
    ASSERT_LE(text.size(), bytes.size());
    ASSERT_EQ(text, Decode(EncodeText(text, {})));
  }
}

TEST(CodePageTest, LatinBytesAreCodePoints) {
  EXPECT_EQ(L"\xE9t\xE9", Decode("\xE9t\xE9", kLatin));
  EXPECT_EQ("\xE9t\xE9", EncodeText(L"\xE9t\xE9", kLatin));
  EXPECT_EQ("a?b?", EncodeText(L"a\x20AC"
                               L"b\x5FAE",
                               kLatin))
      << "what it lacks";
  EXPECT_EQ("?", EncodeText(Units({0xD83D, 0xDE00}), kLatin)) << "one character, one mark";
  const std::wstring longText(1000, L'\xE9');
  EXPECT_EQ(longText, Decode(std::string(1000, '\xE9'), kLatin));
  EXPECT_EQ(std::string(1000, '\xE9'), EncodeText(longText, kLatin));
}

TEST(CodePageTest, DoubleByteTextIsReplacedWhereItIsCut) {
  EXPECT_EQ(L"\x5FAE", Decode("\xCE\xA2", "GBK"));
  EXPECT_EQ((std::wstring{L'a', kBad}), Decode("a\xCE", "GBK"));
  EXPECT_EQ((std::wstring{kBad, L'z'}), Decode("\xFFz", "GBK"));
  EXPECT_EQ("\xCE\xA2?", EncodeText(L"\x5FAE\x0E01", "GBK"));
}

TEST(CodePageTest, AnUnknownCharacterSetIsUtf8) {
  EXPECT_EQ(L"\x5FAE", Decode("\xE5\xBE\xAE", "NO-SUCH-SET"));
  EXPECT_EQ("\xE5\xBE\xAE", EncodeText(L"\x5FAE", "NO-SUCH-SET"));
}

TEST(CodePageTest, TheConvertersReportWhatTheyNeedAndRefuseWhatDoesNotFit) {
  wchar_t wide[4] = {};
  EXPECT_EQ(3, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, nullptr, 0));
  EXPECT_EQ(3, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, wide, 3));
  EXPECT_EQ(std::wstring(L"a\xE9"), wide);
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9", -1, wide, 2));
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "a", -1, nullptr, 2));
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "a", -1, wide, -1));
  EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, nullptr, -1, wide, 4));
  EXPECT_EQ(0, MultiByteToWideChar(1252, 0, "a", -1, wide, 4));
  char narrow[4] = {};
  EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, L"a\xE9", -1, narrow, 4, nullptr, nullptr));
  EXPECT_EQ(std::string("a\xC3\xA9"), narrow);
  EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, L"a\xE9", -1, narrow, 3, nullptr, nullptr));
}

TEST(PathsTest, BothSeparatorsBecomeSlashes) {
  EXPECT_EQ("/a/b/\xC3\xA9.png", NativePath(L"/a\\b/\xE9.png"));
}

}  // namespace
