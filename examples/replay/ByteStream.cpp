#include "ByteStream.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <utility>

namespace replay {

namespace {

constexpr HRESULT kDone = 0;
constexpr HRESULT kInvalid = -1;

// Counted by whoever holds it: the annotation that loads from it may be painted, copied and deleted
// on different threads.
class ByteStream final : public IStream {
 public:
  explicit ByteStream(PictureBytes bytes) : bytes(std::move(bytes)) {}
  ByteStream(const ByteStream&) = delete;
  ByteStream& operator=(const ByteStream&) = delete;

  ULONG AddRef() override { return ++references; }

  ULONG Release() override {
    const ULONG left = --references;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  HRESULT Read(void* buffer, ULONG size, ULONG* read) override {
    const std::size_t count = std::min<std::size_t>(size, bytes->size() - position);
    std::memcpy(buffer, bytes->data() + position, count);
    position += count;
    if (read != nullptr) {
      *read = static_cast<ULONG>(count);
    }
    return kDone;
  }

  HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override {
    const auto size = static_cast<std::int64_t>(bytes->size());
    std::int64_t base = 0;
    if (origin == STREAM_SEEK_CUR) {
      base = static_cast<std::int64_t>(position);
    } else if (origin == STREAM_SEEK_END) {
      base = size;
    }
    if (move.QuadPart < -base || move.QuadPart > size - base) {
      return kInvalid;
    }
    position = static_cast<std::size_t>(base + move.QuadPart);
    if (newPosition != nullptr) {
      newPosition->QuadPart = position;
    }
    return kDone;
  }

 private:
  ~ByteStream() = default;

  PictureBytes bytes;
  std::size_t position = 0;  // at most the number of bytes
  std::atomic<ULONG> references{1};
};

}  // namespace

IStream* MakeByteStream(PictureBytes bytes) {
  return new ByteStream(std::move(bytes));
}

}  // namespace replay
