#include "platform/text/FontFamilies.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

// All tests of this program see the machine's fonts through the configuration beside this file.
class FontConfiguration : public testing::Environment {
 public:
  void SetUp() override { setenv("FONTCONFIG_FILE", PARCHLET_FONTS_CONFIGURATION, 1); }
};

[[maybe_unused]] const auto* const kConfiguration =
    testing::AddGlobalTestEnvironment(new FontConfiguration);

bool HasCharacter(const std::string& family, FcChar32 character) {
  FcPattern* pattern = FcPatternCreate();
  FcCharSet* characters = FcCharSetCreate();
  FcCharSetAddChar(characters, character);
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddCharSet(pattern, FC_CHARSET, characters);
  FcObjectSet* objects = FcObjectSetBuild(FC_FAMILY, nullptr);
  FcFontSet* fonts = FcFontList(nullptr, pattern, objects);
  const bool found = fonts->nfont > 0;
  FcFontSetDestroy(fonts);
  FcObjectSetDestroy(objects);
  FcCharSetDestroy(characters);
  FcPatternDestroy(pattern);
  return found;
}

TEST(FontFamilies, AFamilyAnswersToItsNameInAnySpellingAndToItsAliases) {
  EXPECT_EQ(FindFontFamily("DejaVu Sans"), "DejaVu Sans");
  EXPECT_TRUE(FindFontFamily("dejavu SANS").has_value());
  EXPECT_EQ(FindFontFamily("House Face"), "DejaVu Sans Mono");
  EXPECT_TRUE(FindFontFamily("sans-serif").has_value());
  for (const char* fallback : {"No Such Face", "Ruined House Face", "", "没有这种字体"}) {
    EXPECT_EQ(FindFontFamily(fallback), std::nullopt) << "what any name falls back to";
  }
}

TEST(FontFamilies, TheDefaultFamilyIsTheSystemsChineseSansSerifInBothLanguages) {
  const auto family = FindFontFamily("微软雅黑");
  ASSERT_TRUE(family.has_value());
  EXPECT_EQ(FindFontFamily("microsoft yahei"), family);
  EXPECT_TRUE(HasCharacter(*family, U'雅')) << *family;
}

}  // namespace
