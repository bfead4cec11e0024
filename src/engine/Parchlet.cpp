#include <parchlet/Parchlet.h>

#include <algorithm>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/LogRecord.h"
#include "engine/PeriodicTimer.h"
#include "page/AnnotationPage.h"
#include "page/NicknameTipStyle.h"

namespace {

constexpr int kRefreshIntervalMs = 40;
constexpr unsigned int kMaxPenWidth = 30;
constexpr unsigned int kLastSubType = 23;

// Logging must not keep an engine from being made or destroyed.
void LogLifetime(const char* function, int line, const char* text) {
  Contain(0, [&] {
    LogRecord(kLogLifetime, "", __FILE__, line, function, "SDK").Text() << text;
    return 1;
  });
}

}  // namespace

Parchlet::Parchlet() : refreshTimer(std::make_unique<PeriodicTimer>()) {
  LogLifetime("Parchlet::Parchlet", __LINE__, "constructor");
}

Parchlet::~Parchlet() {
  LogLifetime("Parchlet::~Parchlet", __LINE__, "destructor");
  TearDown();
}

int Parchlet::Init() {
  if (initialised == 1) {
    return 0;
  }
  return Contain(0, [this] {
    refreshTimer->Start(kRefreshIntervalMs, [this] { UpdateLayeredContent(); });
    initialised = 1;
    return 1;
  });
}

void Parchlet::Destroy() {
  if (initialised == 1) {
    TearDown();
  }
}

void Parchlet::TearDown() {
  refreshTimer->Stop();
  activeWindow = nullptr;
  currentDocument = nullptr;
  PublishCurrentPage();
  tipStyle.reset();
  ClearDocs();
  initialised = 0;
}

// A frame that fails, a window's own code that throws included, must not end the host's process: it
// is given up, and the next one tries again.
int Parchlet::UpdateLayeredContent() {
  try {
    MutexLock lock(handOverMutex);
    return refreshPage != nullptr ? refreshPage->UpdateLayeredContent() : 0;
  } catch (...) {
    return 0;
  }
}

void Parchlet::PublishCurrentPage() {
  MutexLock lock(handOverMutex);
  refreshPage = GetCurrentPage();
}

void Parchlet::WithdrawCurrentPage() {
  MutexLock lock(handOverMutex);
  refreshPage = nullptr;
}

void Parchlet::SetPen(unsigned long color, unsigned int width) {
  pen.color = static_cast<std::uint32_t>(color);
  pen.width = static_cast<std::int32_t>(std::clamp(width, 1U, kMaxPenWidth));
}

void Parchlet::SetAnnotationType(AnnotationType type, AnnotationSubType subType) {
  if (type >= AnnotationTypeDrawing && type <= AnnotationTypeReserved4) {
    annotationType = type;
  }
  if (static_cast<unsigned int>(subType) <= kLastSubType) {
    annotationSubType = subType;
  }
}

void Parchlet::SetUserInfo(const std::string& newUserId, const std::string& newUserSubId,
                           const std::string& newNickname) {
  Contain(0, [&] {
    // Copied first: identity changes whole or not at all.
    std::string id = newUserId.empty() ? userId : newUserId;
    std::string subId = newUserSubId;
    std::string name = newNickname;
    userId.swap(id);
    userSubId.swap(subId);
    nickname.swap(name);
    return 1;
  });
}

int Parchlet::SetPageBackgroundColor(unsigned int color) {
  pageBackgroundColor = color;
  AnnotationPage* page = GetCurrentPage();
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
