#include "platform/text/FontFamilies.h"

#include <gtest/gtest.h>

namespace {

TEST(FontFamilies, AFamilyAnswersToItsNameInAnySpelling) {
  EXPECT_EQ(FindFontFamily("DejaVu Sans"), "DejaVu Sans");
  EXPECT_TRUE(FindFontFamily("dejavu SANS").has_value());
  // The home platform's default family, installed or not.
  EXPECT_TRUE(FindFontFamily("\xE5\xBE\xAE\xE8\xBD\xAF\xE9\x9B\x85\xE9\xBB\x91").has_value());
  EXPECT_EQ(FindFontFamily("microsoft yahei"), FindFontFamily("Microsoft YaHei"));
  for (const std::string& unknown : {std::string("No Such Face"), std::string(),
                                     std::string(40, 'x'), std::string("@DejaVu Sans")}) {
    EXPECT_EQ(FindFontFamily(unknown), std::nullopt);
  }
}

}  // namespace
