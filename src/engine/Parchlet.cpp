#include <parchlet/Parchlet.h>

#include <algorithm>
#include <vector>

#include <parchlet/Utils.h>

#include "annotation/MarkKind.h"
#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "engine/LogRecord.h"
#include "page/AnnotationPage.h"

namespace {

constexpr int kRefreshIntervalMs = 40;
constexpr unsigned int kLastSubType = 23;
constexpr unsigned int kDefaultTipFontSize = 18;
// The default font family, by its Simplified Chinese name.
constexpr const wchar_t* kDefaultTipFont = L"\u5FAE\u8F6F\u96C5\u9ED1";

// A record that cannot be written must not stop an engine from being created or destroyed.
void LogLifetime(const char* function, int line, const char* text) {
  Contain([&] { LogRecord(kLogLifetime, "", __FILE__, line, function, "SDK").Text() << text; });
}

}  // namespace

Parchlet::Parchlet() : state(std::make_unique<State>()) {
  LogLifetime("Parchlet::Parchlet", __LINE__, "constructor");
}

Parchlet::~Parchlet() {
  LogLifetime("Parchlet::~Parchlet", __LINE__, "destructor");
  state->TearDown();
}

int Parchlet::Init() {
  if (state->initialised == 1) {
    return 0;
  }
  return Contain(0, [this] {
    state->refreshTimer.Start(kRefreshIntervalMs, [this] { state->UpdateLayeredContent(); });
    state->initialised = 1;
    return 1;
  });
}

void Parchlet::Destroy() {
  if (state->initialised == 1) {
    state->TearDown();
  }
}

void Parchlet::SetPen(unsigned long color, unsigned int width) {
  state->pen.color = static_cast<std::uint32_t>(color);
  state->pen.width =
      static_cast<std::int32_t>(std::clamp<unsigned int>(width, kMinPenWidth, kMaxPenWidth));
}

void Parchlet::SetAnnotationType(AnnotationType type, AnnotationSubType subType) {
  if (type >= AnnotationTypeDrawing && type <= AnnotationTypeReserved4) {
    state->annotationType = type;
  }
  if (static_cast<unsigned int>(subType) <= kLastSubType) {
    state->annotationSubType = subType;
  }
}

void Parchlet::SetUserInfo(const std::string& newUserId, const std::string& newUserSubId,
                           const std::string& newNickname) {
  Contain([&] {
    // Copy first, then swap, which cannot fail: the identity changes as a whole or not at all.
    std::string id = newUserId.empty() ? state->userId : newUserId;
    std::string subId = newUserSubId;
    std::string name = newNickname;
    state->userId.swap(id);
    state->userSubId.swap(subId);
    state->nickname.swap(name);
  });
}

int Parchlet::SetPageBackgroundColor(unsigned int color) {
  state->pageBackgroundColor = color;
  AnnotationPage* page = state->GetCurrentPage();
  if (page == nullptr) {
    return 0;
  }
  page->SetPageBackgroundColor(color);
  return 1;
}

int Parchlet::SetZoom(const std::string& /*docId*/, float /*zoom*/, int /*x*/, int /*y*/) {
  return 1;
}

int Parchlet::SetPageSize(const std::string& /*docId*/, const std::string& /*pageId*/,
                          int /*width*/, int /*height*/) {
  return 1;
}

int Parchlet::SetNicknameTip(unsigned int textColor, unsigned int fontSize,
                             const std::string& fontName, unsigned int boxColor) {
  return Contain(0, [&] {
    auto style = std::make_shared<NicknameTipStyle>();
    style->boxColor = boxColor;
    style->textColor = textColor;
    style->fontSize = fontSize != 0 ? fontSize : kDefaultTipFontSize;
    style->fontFamily = fontName.empty() ? kDefaultTipFont : Utils::Utf8ToUnicode(fontName);
    std::vector<AnnotationPage*> pages;
    for (const auto& [docId, document] : state->documents) {
      for (const auto& [pageId, page] : document->GetPages()) {
        pages.push_back(page);
      }
    }
    // Nothing below can fail: either all pages get the style or none does.
    state->tipStyle = std::move(style);
    for (AnnotationPage* page : pages) {
      page->SetNicknameTip(state->tipStyle);
    }
    return 1;
  });
}
