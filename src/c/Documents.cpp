#include "c/Call.h"

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
