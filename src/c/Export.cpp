#include <parchlet/Utils.h>

#include "c/Call.h"

int32_t ParchletSavePage(ParchletEngine* engine, const char* docId, const char* pageId,
                         const char* path, const char* displayDevice) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SavePage(Text(docId), Text(pageId), Text(path),
                             Utils::Utf8ToUnicode(Text(displayDevice)));
  });
}

int32_t ParchletSavePageOfWindow(ParchletEngine* engine, const char* docId, const char* pageId,
                                 const char* path, void* window) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SavePage(Text(docId), Text(pageId), Text(path), static_cast<HWND>(window));
  });
}

int32_t ParchletSaveDocument(ParchletEngine* engine, const char* docId, const char* folder,
                             const char* prefix, const char* displayDevice) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SaveDocument(Text(docId), Text(folder), Text(prefix),
                                 Utils::Utf8ToUnicode(Text(displayDevice)));
  });
}

int32_t ParchletSaveDocumentOfWindow(ParchletEngine* engine, const char* docId, const char* folder,
                                     const char* prefix, void* window) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SaveDocument(Text(docId), Text(folder), Text(prefix),
                                 static_cast<HWND>(window));
  });
}

int32_t ParchletSaveAs(ParchletEngine* engine, const char* docId, const char* path) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.SaveAs(Text(docId), Text(path)); });
}
