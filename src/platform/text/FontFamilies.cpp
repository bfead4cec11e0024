#include "platform/text/FontFamilies.h"

#include <fontconfig/fontconfig.h>
#include "platform/threads/Mutex.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace {

using Families = std::vector<std::string>;

constexpr std::array kDefaultFamily = {"微软雅黑", "Microsoft YaHei"};
// Names of kinds of faces. The first is nobody's name: it has the substitutes of every name.
constexpr std::array kGenericFamilies = {"no family of this name",
                                         "sans-serif",
                                         "serif",
                                         "monospace",
                                         "cursive",
                                         "fantasy",
                                         "system-ui"};

struct DestroyPattern {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
struct DestroyObjects {
  void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
};
struct DestroyFonts {
  void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};
using Pattern = std::unique_ptr<FcPattern, DestroyPattern>;

const FcChar8* Text(const char* text) {
  return reinterpret_cast<const FcChar8*>(text);
}

Pattern MakePattern(const std::string& family) {
  Pattern pattern(FcPatternCreate());
  FcPatternAddString(pattern.get(), FC_FAMILY, Text(family.c_str()));
  return pattern;
}

// Returns the name and the names that the configuration puts before and after it.
Families Substitutes(const std::string& name) {
  const Pattern pattern = MakePattern(name);
  FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
  Families families;
  FcChar8* family = nullptr;
  for (int i = 0; FcPatternGetString(pattern.get(), FC_FAMILY, i, &family) == FcResultMatch; ++i) {
    families.emplace_back(reinterpret_cast<const char*>(family));
  }
  return families;
}

// Returns the same without the substitutes of generic families; empty for a generic name.
Families OwnSubstitutes(const std::string& name) {
  Families own = Substitutes(name);
  for (const char* generic : kGenericFamilies) {
    Families common = Substitutes(generic);
    if (generic == kGenericFamilies[0]) {
      std::erase(common, generic);
    }
    if (!common.empty()) {
      own.erase(std::search(own.begin(), own.end(), common.begin(), common.end()), own.end());
    }
  }
  return own;
}

bool IsInstalled(const std::string& family) {
  const Pattern pattern = MakePattern(family);
  const std::unique_ptr<FcObjectSet, DestroyObjects> objects(FcObjectSetBuild(FC_FAMILY, nullptr));
  const std::unique_ptr<FcFontSet, DestroyFonts> fonts(
      FcFontList(nullptr, pattern.get(), objects.get()));
  return fonts != nullptr && fonts->nfont > 0;
}

// Returns the installed family that the font system picks; nothing if it has no font at all.
std::optional<std::string> Match(const char* family, const char* language) {
  const Pattern pattern = MakePattern(family);
  if (language != nullptr) {
    FcPatternAddString(pattern.get(), FC_LANG, Text(language));
  }
  FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  FcResult result = FcResultNoMatch;
  const Pattern match(FcFontMatch(nullptr, pattern.get(), &result));
  FcChar8* found = nullptr;
  if (match == nullptr || FcPatternGetString(match.get(), FC_FAMILY, 0, &found) != FcResultMatch) {
    return std::nullopt;
  }
  return std::string(reinterpret_cast<const char*>(found));
}

bool IsDefaultFamily(const std::string& name) {
  return std::any_of(kDefaultFamily.begin(), kDefaultFamily.end(), [&name](const char* known) {
    return FcStrCmpIgnoreCase(Text(known), Text(name.c_str())) == 0;
  });
}

std::optional<std::string> LookUp(const std::string& name) {
  const Families own = OwnSubstitutes(name);
  if (own.empty()) {
    return Match(name.c_str(), nullptr);
  }
  const auto installed = std::find_if(own.begin(), own.end(), IsInstalled);
  if (installed != own.end()) {
    return *installed;
  }
  return IsDefaultFamily(name) ? Match("sans-serif", "zh-cn") : std::nullopt;
}

// Remembers the last question and its answer: a page asks the same for every tip of every frame.
class LastAnswer {
 public:
  std::optional<std::string> Find(const std::string& wanted) PARCHLET_EXCLUDES(mutex) {
    MutexLock lock(mutex);
    if (wanted != name) {
      answer = LookUp(wanted);
      name = wanted;
    }
    return answer;
  }

 private:
  Mutex mutex;
  std::string name PARCHLET_GUARDED_BY(mutex);
  std::optional<std::string> answer PARCHLET_GUARDED_BY(mutex);
};

}  // namespace

std::optional<std::string> FindFontFamily(const std::string& name) {
  // Never destroyed: a refresh thread may outlive every static object.
  static LastAnswer& lastAnswer = *new LastAnswer;
  return lastAnswer.Find(name);
}
