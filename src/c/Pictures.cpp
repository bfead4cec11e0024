#include "c/Call.h"

ParchletMark* ParchletAddPictureFromFile(ParchletEngine* engine, const char* docId,
                                         const char* pageId, const char* filePath,
                                         const char* pictureProperty, int32_t isBackground) {
  Annotation* made = nullptr;
  OnEngine(engine, [&](Parchlet& parchlet) {
    made = parchlet.AddPictureFromFile(Text(docId), Text(pageId), Text(filePath),
                                       Text(pictureProperty), isBackground != 0);
    return PARCHLET_YES;
  });
  return HandleOf(made);
}

ParchletMark* ParchletAddPictureFromStream(ParchletEngine* engine, const char* docId,
                                           const char* pageId, const void* data, size_t size,
                                           const char* pictureProperty, int32_t isBackground) {
  if (data == nullptr) {
    return nullptr;
  }
  Annotation* made = nullptr;
  OnEngine(engine, [&](Parchlet& parchlet) {
    const std::string bytes(static_cast<const char*>(data), size);
    made = parchlet.AddPictureFromStream(Text(docId), Text(pageId), bytes, Text(pictureProperty),
                                         isBackground != 0);
    return PARCHLET_YES;
  });
  return HandleOf(made);
}
