#include "c/Call.h"

ParchletMark* ParchletAddPictureFromFile(ParchletEngine* engine, const char* docId,
                                         const char* pageId, const char* filePath,
                                         const char* pictureProperty, int32_t isBackground) {
  return FindMark(engine, [&](Parchlet& parchlet) {
    return parchlet.AddPictureFromFile(Text(docId), Text(pageId), Text(filePath),
                                       Text(pictureProperty), isBackground != 0);
  });
}

ParchletMark* ParchletAddPictureFromStream(ParchletEngine* engine, const char* docId,
                                           const char* pageId, const void* data, size_t size,
                                           const char* pictureProperty, int32_t isBackground) {
  if (data == nullptr) {
    return nullptr;
  }
  return FindMark(engine, [&](Parchlet& parchlet) {
    const std::string bytes(static_cast<const char*>(data), size);
    return parchlet.AddPictureFromStream(Text(docId), Text(pageId), bytes, Text(pictureProperty),
                                         isBackground != 0);
  });
}
