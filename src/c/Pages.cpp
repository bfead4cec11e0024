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

// Runs an operation that returns the id of the page it made current, or an empty id.
template <class Operation>
int32_t Goto(ParchletEngine* engine, ParchletTexts* pageId, const Operation& operation) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return ReplaceIfAny(pageId, operation(parchlet)); },
                  {pageId});
}

}  // namespace

int32_t ParchletNewDoc(ParchletEngine* engine, const char* creator, const char* docId) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.NewDoc(Text(creator), Text(docId)); });
}

int32_t ParchletDelDoc(ParchletEngine* engine, const char* docId) {
  return OnEngine(engine, [&](Parchlet& parchlet) { return parchlet.DelDoc(Text(docId)); });
}

int32_t ParchletGetDocCount(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) { return parchlet.GetDocCount(); });
}

int32_t ParchletGetDocCreator(ParchletEngine* engine, const char* docId, ParchletTexts* creator) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::string found;
                    if (parchlet.GetDocCreator(Text(docId), found) == 0) {
                      Empty({creator});
                      return PARCHLET_NO;
                    }
                    Replace(creator, std::move(found));
                    return PARCHLET_YES;
                  },
                  {creator});
}

int32_t ParchletIsDocExist(ParchletEngine* engine, const char* docId) {
  return OnEngine(engine, [&](Parchlet& parchlet) { return parchlet.IsDocExist(Text(docId)); });
}

int32_t ParchletIsDocOpened(ParchletEngine* engine, const char* docId, ParchletTexts* out) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::string unused;
                    const int result = parchlet.IsDocOpened(Text(docId), unused);
                    Empty({out});
                    return result;
                  },
                  {out});
}

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
    // Copied before the buffer is cleared: the arguments may point into it.
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

int32_t ParchletSetCurrentPage(ParchletEngine* engine, const char* docId, const char* pageId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SetCurrentPage(Text(docId), Text(pageId));
  });
}

int32_t ParchletGetCurrentPageInfo(ParchletEngine* engine, ParchletTexts* docId,
                                   ParchletTexts* pageId) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::string doc;
                    std::string page;
                    parchlet.GetCurrentPageInfo(doc, page);
                    Replace(docId, std::move(doc));
                    Replace(pageId, std::move(page));
                  },
                  {docId, pageId});
}

int32_t ParchletGotoFirstPage(ParchletEngine* engine, const char* docId, ParchletTexts* pageId) {
  return Goto(engine, pageId,
              [&](Parchlet& parchlet) { return parchlet.GotoFirstPage(Text(docId)); });
}

int32_t ParchletGotoLastPage(ParchletEngine* engine, const char* docId, ParchletTexts* pageId) {
  return Goto(engine, pageId,
              [&](Parchlet& parchlet) { return parchlet.GotoLastPage(Text(docId)); });
}

int32_t ParchletGotoNextPage(ParchletEngine* engine, const char* docId, ParchletTexts* pageId) {
  return Goto(engine, pageId,
              [&](Parchlet& parchlet) { return parchlet.GotoNextPage(Text(docId)); });
}

int32_t ParchletGotoPreviousPage(ParchletEngine* engine, const char* docId, ParchletTexts* pageId) {
  return Goto(engine, pageId,
              [&](Parchlet& parchlet) { return parchlet.GotoPreviousPage(Text(docId)); });
}

int32_t ParchletGotoPageAt(ParchletEngine* engine, const char* docId, int32_t index,
                           ParchletTexts* pageId) {
  return Goto(engine, pageId,
              [&](Parchlet& parchlet) { return parchlet.GotoPage(Text(docId), index); });
}

int32_t ParchletGotoPage(ParchletEngine* engine, const char* docId, const char* pageId) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.GotoPage(Text(docId), Text(pageId)); });
}
