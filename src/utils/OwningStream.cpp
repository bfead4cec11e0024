#include "utils/OwningStream.h"

#include <parchlet/Utils.h>

#include <limits>

#include "platform/Platform.h"

IStream* MakeOwningStream(const std::string& bytes) {
  if (bytes.empty() || bytes.size() > std::numeric_limits<unsigned int>::max()) {
    return nullptr;
  }
  HGLOBAL block = GlobalAlloc(0, bytes.size());
  if (block == nullptr) {
    return nullptr;
  }
  // Copies the bytes into the block; the stream it makes does not own them.
  IStream* filled = Utils::GetPictureStream(bytes, block, static_cast<unsigned int>(bytes.size()));
  IStream* owning = nullptr;
  if (filled == nullptr || !SUCCEEDED(CreateStreamOnHGlobal(block, 1, &owning))) {
    GlobalFree(block);
    owning = nullptr;
  }
  if (filled != nullptr) {
    filled->Release();
  }
  return owning;
}
