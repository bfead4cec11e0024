#include <parchlet/Utils.h>

#include "c/Call.h"
#include "utils/OwningStream.h"

int32_t ParchletMarkSetPictureFromFile(ParchletMark* mark, const char* filePath,
                                       const char* pictureProperty) {
  return OnMark(mark, [&](Annotation& annotation) {
    const std::wstring path = Utils::Utf8ToUnicode(Text(filePath));
    annotation.SetPicture(path, Text(pictureProperty));
    return path.empty() ? PARCHLET_NO : PARCHLET_YES;
  });
}

int32_t ParchletMarkSetPictureFromStream(ParchletMark* mark, const void* data, size_t size,
                                         const char* pictureProperty) {
  if (data == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnMark(mark, [&](Annotation& annotation) {
    if (size == 0) {
      return PARCHLET_NO;
    }
    const std::string property = Text(pictureProperty);
    IStream* stream = MakeOwningStream(std::string(static_cast<const char*>(data), size));
    annotation.SetPicture(stream, property);
    return stream != nullptr ? PARCHLET_YES : PARCHLET_NO_MEMORY;
  });
}
