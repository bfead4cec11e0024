// Platform.h - the few platform names that Parchlet's interface is written in.
//
// On Windows they are the system's own. Everywhere else this header declares the same names with
// the same meaning, only as many as the interface needs.
#pragma once

#if defined(_WIN32)

#include <windows.h>

#include <objidl.h>

#if defined(PARCHLET_BUILDING)
#define PARCHLET_API __declspec(dllexport)
#else
#define PARCHLET_API __declspec(dllimport)
#endif

#else

#include <cstddef>
#include <cstdint>

#define PARCHLET_API __attribute__((visibility("default")))

using BOOL = int;
using BYTE = std::uint8_t;
using DWORD = std::uint32_t;
using HRESULT = std::int32_t;
using INT = int;
using LONG = std::int32_t;
using UINT = unsigned int;
using ULONG = std::uint32_t;
using ULONGLONG = std::uint64_t;
using WORD = std::uint16_t;

struct POINT {
  LONG x;
  LONG y;
};

// right and bottom lie one past the last pixel wherever a RECT names an area of the screen.
struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

struct SIZE {
  LONG cx;
  LONG cy;
};

// A window handle: made by RegisterLayeredWindow (LayeredWindow.h) or MemoryWindow::Handle
// (MemoryWindow.h), never dereferenced, never made twice in one process.
using HWND = struct WindowHandle*;

// A block of memory known by a handle; see GlobalAlloc.
using HGLOBAL = struct MemoryBlock*;

union LARGE_INTEGER {
  std::int64_t QuadPart;
};

union ULARGE_INTEGER {
  std::uint64_t QuadPart;
};

// Where IStream::Seek counts from.
enum : DWORD { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

// A reference-counted stream of bytes, as much of it as picture loading reads. A host may implement
// it; Utils::GetPictureStream makes one over a block of memory.
class PARCHLET_API IStream {
 public:
  // Adds a reference; gives the new count.
  virtual ULONG AddRef() = 0;
  // Drops a reference and deletes the stream with the last one; gives the new count.
  virtual ULONG Release() = 0;
  // Reads up to `size` bytes into `buffer` and stores the number read in `*read` when that is not
  // null. A negative result is a failure; fewer bytes than asked for is the stream's end.
  virtual HRESULT Read(void* buffer, ULONG size, ULONG* read) = 0;
  // Moves the position by `move` from `origin`; stores the new one in `*position` when that is not
  // null. A negative result is a failure.
  virtual HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;

 protected:
  ~IStream() = default;
};

// Allocates `size` bytes under a handle; null when they cannot be had. `flags` is 0. The caller
// frees the block with GlobalFree. Any thread.
PARCHLET_API HGLOBAL GlobalAlloc(UINT flags, std::size_t size);

// Frees a block that no stream reads any more; gives null. Null is ignored. Any thread.
PARCHLET_API HGLOBAL GlobalFree(HGLOBAL block);

// Milliseconds of the engine's clock: never set back, no meaning but their difference. A host
// stamps AnnotationHeader::tempStartTick with it. Any thread.
PARCHLET_API ULONGLONG GetTickCount64();

#endif

// The painter's classes, known to the interface by name only.
namespace Gdiplus {
class Graphics;
class Image;
class Point;
}  // namespace Gdiplus
