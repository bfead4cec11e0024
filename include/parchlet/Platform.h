// Platform.h - the platform types and functions that Parchlet's interface uses.
//
// On Windows they are the system's own. Elsewhere this header declares the same names with the same
// meaning, and no more than the interface needs.
#pragma once

#if defined(_WIN32)

#include <windows.h>

#include <objidl.h>

#if defined(PARCHLET_BUILDING)
#define PARCHLET_API __declspec(dllexport)
#else
#define PARCHLET_API __declspec(dllimport)
#endif
#define PARCHLET_PRIVATE

#else

#include <cstddef>
#include <cstdint>

#define PARCHLET_API __attribute__((visibility("default")))
// Hides a nested class of an exported class.
#define PARCHLET_PRIVATE __attribute__((visibility("hidden")))

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

// Where a RECT is an area of the screen, right and bottom are one past the last pixel.
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

// A window handle, from RegisterLayeredWindow (LayeredWindow.h) or MemoryWindow::Handle
// (MemoryWindow.h). It is never dereferenced, and no value is used twice in a process.
using HWND = struct WindowHandle*;

// The handle of a block of memory; see GlobalAlloc.
using HGLOBAL = struct MemoryBlock*;

union LARGE_INTEGER {
  std::int64_t QuadPart;
};

union ULARGE_INTEGER {
  std::uint64_t QuadPart;
};

// Where IStream::Seek counts from.
enum : DWORD { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

// A reference-counted stream of bytes, reduced to what loading a picture needs. A host may
// implement it; Utils::MakePictureStream returns one over a copy of bytes. One thread uses a stream
// at a time.
class PARCHLET_API IStream {
 public:
  // Adds a reference. Returns the new count.
  virtual ULONG AddRef() = 0;
  // Removes a reference; the last one deletes the stream. Returns the new count.
  virtual ULONG Release() = 0;
  // Reads up to `size` bytes into `buffer`, and stores the number read in `*read` unless that is
  // null. Fewer bytes than requested mean the end of the stream. Returns a negative value on
  // failure.
  virtual HRESULT Read(void* buffer, ULONG size, ULONG* read) = 0;
  // Sets the position to `origin` plus `move` bytes, and stores it in `*position` unless that is
  // null. Returns a negative value on failure.
  virtual HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;

 protected:
  ~IStream() = default;
};

// Allocates a block of `size` bytes. Returns its handle, or null if memory runs out. `flags` is 0.
// The caller frees the block with GlobalFree. Any thread.
PARCHLET_API HGLOBAL GlobalAlloc(UINT flags, std::size_t size);

// Frees a block that no stream uses any more. Does nothing for null. Returns null. Any thread.
PARCHLET_API HGLOBAL GlobalFree(HGLOBAL block);

// Returns the engine's clock in milliseconds. It never goes back; only differences mean anything. A
// host uses it for AnnotationHeader::tempStartTick. Any thread.
PARCHLET_API ULONGLONG GetTickCount64();

#endif

// The interface only names the painter; hosts do not use it.
#if defined(PARCHLET_PAINTER_GDIPLUS)

// The library that was built to paint by GDI+: the host's own GDI+ objects are the painter's.
namespace Gdiplus {
class Graphics;
}  // namespace Gdiplus
namespace parchlet {
namespace graphics = ::Gdiplus;
}  // namespace parchlet

#else

namespace parchlet::graphics {
class Graphics;
}  // namespace parchlet::graphics
#if !defined(_WIN32)
namespace Gdiplus = parchlet::graphics;  // its former name
#endif

#endif
