#include "c/Call.h"

namespace {

// Runs an operation that gives the id of the page that it made current, or the empty one.
template <class Operation>
int32_t Goto(ParchletEngine* engine, ParchletTexts* pageId, const Operation& operation) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::string id = operation(parchlet);
                    if (id.empty()) {
                      Empty({pageId});
                      return PARCHLET_NO;
                    }
                    Replace(pageId, std::move(id));
                    return PARCHLET_YES;
                  },
                  {pageId});
}

}  // namespace

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
                    return PARCHLET_YES;
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
