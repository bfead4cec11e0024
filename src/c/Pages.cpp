#include <algorithm>
#include <climits>

#include "c/Call.h"

namespace {

AnnotationPageInfo InfoOf(const ParchletPageInfo& info) {
  AnnotationPageInfo result{};
  result.userValue1 = info.userValue1;
  result.userValue2 = info.userValue2;
  result.width = info.width;
  result.height = info.height;
  result.transparent = info.transparent != 0;
  result.viewRect = {info.viewRect.left, info.viewRect.top, info.viewRect.right,
                     info.viewRect.bottom};
  result.backgroundColor = info.backgroundColor;
  return result;
}

ParchletPageInfo InfoOf(const AnnotationPageInfo& info) {
  return {info.userValue1,
          info.userValue2,
          info.width,
          info.height,
          info.transparent ? 1 : 0,
          {static_cast<int32_t>(info.viewRect.left), static_cast<int32_t>(info.viewRect.top),
           static_cast<int32_t>(info.viewRect.right), static_cast<int32_t>(info.viewRect.bottom)},
          info.backgroundColor};
}

}  // namespace

int32_t ParchletNewPage(ParchletEngine* engine, const char* docId, const char* pageId,
                        const char* creator, void* window, const ParchletPageInfo* info) {
  if (info == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.NewPage(Text(docId), Text(pageId), Text(creator), static_cast<HWND>(window),
                            InfoOf(*info));
  });
}

int32_t ParchletDelPage(ParchletEngine* engine, const char* docId, const char* pageId) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.DelPage(Text(docId), Text(pageId)); });
}

int32_t ParchletDuplicatePage(ParchletEngine* engine, const char* docId, const char* pageId,
                              ParchletTexts* newPageId) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::string unused;
                    const int result = parchlet.DuplicatePage(Text(docId), Text(pageId), unused);
                    Empty({newPageId});
                    return result;
                  },
                  {newPageId});
}

int32_t ParchletGetPageCount(ParchletEngine* engine, const char* docId) {
  return OnEngine(engine, [&](Parchlet& parchlet) { return parchlet.GetPageCount(Text(docId)); });
}

int32_t ParchletGetPageIndex(ParchletEngine* engine, const char* docId, const char* pageId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return std::max(parchlet.GetPageIndex(Text(docId), Text(pageId)), 0);
  });
}

int32_t ParchletGetPageCreator(ParchletEngine* engine, const char* docId, const char* pageId,
                               char* buffer, size_t size) {
  if (buffer == nullptr || size == 0) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnEngine(engine, [&](Parchlet& parchlet) {
    // Copied first, as the arguments may lie in the buffer.
    const std::string doc = Text(docId);
    const std::string page = Text(pageId);
    std::fill_n(buffer, size, '\0');
    const auto room = static_cast<int>(std::min<std::size_t>(size - 1, INT_MAX));
    return parchlet.GetPageCreator(doc, page, buffer, room);
  });
}

int32_t ParchletGetPageSize(ParchletEngine* engine, const char* docId, const char* pageId,
                            ParchletPageInfo* info, int32_t initial) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    AnnotationPageInfo found{};
    if (parchlet.GetPageSize(Text(docId), Text(pageId), found, initial != 0) == 0) {
      return PARCHLET_NO;
    }
    Write(info, InfoOf(found));
    return PARCHLET_YES;
  });
}

int32_t ParchletUpdatePage(ParchletEngine* engine, const char* docId, const char* pageId,
                           const ParchletPageInfo* info, int32_t resize) {
  if (info == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.UpdatePage(Text(docId), Text(pageId), InfoOf(*info), resize != 0);
  });
}

int32_t ParchletIsPageExist(ParchletEngine* engine, const char* docId, const char* pageId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.GetPagePtr(Text(docId), Text(pageId)) != nullptr ? PARCHLET_YES : PARCHLET_NO;
  });
}
