#include "platform/com/Com.h"

#include <sys/random.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <new>

struct MemoryBlock {
  std::size_t size = 0;
  std::unique_ptr<std::byte[]> bytes;
};

namespace {

// A stream over the bytes of a block. One thread at a time may use it; references may be added and
// released on any thread.
class BlockStream final : public IStream {
 public:
  BlockStream(HGLOBAL block, bool ownsBlock) : block(block), ownsBlock(ownsBlock) {}

  ULONG AddRef() override { return ++references; }

  ULONG Release() override {
    const ULONG left = --references;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  HRESULT Read(void* buffer, ULONG size, ULONG* read) override {
    const std::size_t length = std::min<std::size_t>(size, block->size - position);
    if (length > 0) {
      std::memcpy(buffer, block->bytes.get() + position, length);
    }
    position += length;
    if (read != nullptr) {
      *read = static_cast<ULONG>(length);
    }
    return S_OK;
  }

  HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override {
    std::size_t base = 0;
    if (origin == STREAM_SEEK_CUR) {
      base = position;
    } else if (origin == STREAM_SEEK_END) {
      base = block->size;
    } else if (origin != STREAM_SEEK_SET) {
      return E_FAIL;
    }
    // Positions past the block are refused, so Read need not check its own.
    const std::int64_t offset = move.QuadPart;
    if (offset < -static_cast<std::int64_t>(base) ||
        offset > static_cast<std::int64_t>(block->size - base)) {
      return E_FAIL;
    }
    position = static_cast<std::size_t>(static_cast<std::int64_t>(base) + offset);
    if (newPosition != nullptr) {
      newPosition->QuadPart = position;
    }
    return S_OK;
  }

 private:
  ~BlockStream() {
    if (ownsBlock) {
      GlobalFree(block);
    }
  }

  HGLOBAL block;
  bool ownsBlock;
  std::size_t position = 0;
  std::atomic<ULONG> references{1};
};

}  // namespace

HRESULT CoCreateGuid(GUID* guid) {
  GUID random{};
  static_assert(sizeof(random) == 16, "the random bytes fill the identifier exactly");
  if (getrandom(&random, sizeof(random), 0) != static_cast<ssize_t>(sizeof(random))) {
    return E_FAIL;
  }
  constexpr std::uint16_t kVersion4 = 0x4000;
  constexpr std::uint8_t kVariant = 0x80;
  random.Data3 = static_cast<std::uint16_t>((random.Data3 & 0x0FFF) | kVersion4);
  random.Data4[0] = static_cast<std::uint8_t>((random.Data4[0] & 0x3F) | kVariant);
  *guid = random;
  return S_OK;
}

HGLOBAL GlobalAlloc(UINT /*flags*/, std::size_t size) {
  std::unique_ptr<MemoryBlock> block(new (std::nothrow) MemoryBlock);
  if (block == nullptr) {
    return nullptr;
  }
  block->bytes.reset(new (std::nothrow) std::byte[size]());
  block->size = size;
  return block->bytes != nullptr ? block.release() : nullptr;
}

HGLOBAL GlobalFree(HGLOBAL block) {
  delete block;
  return nullptr;
}

void* GlobalLock(HGLOBAL block) {
  return block != nullptr ? block->bytes.get() : nullptr;
}

BOOL GlobalUnlock(HGLOBAL block) {
  return block != nullptr ? 1 : 0;
}

HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream) {
  *stream =
      block != nullptr ? new (std::nothrow) BlockStream(block, deleteOnRelease != 0) : nullptr;
  return *stream != nullptr ? S_OK : E_FAIL;
}
