// Component services: identifiers, memory blocks and streams over them.
#pragma once

#include <parchlet/Platform.h>

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend bool operator==(const GUID&, const GUID&) = default;
};

using CLSID = GUID;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);

inline bool SUCCEEDED(HRESULT result) {
  return result >= 0;
}

// Writes a random identifier (version 4) from the system's random source. A failure writes nothing.
HRESULT CoCreateGuid(GUID* guid);

// Returns the block's memory, or null for a null handle. Blocks do not move, so GlobalUnlock has
// nothing to do.
void* GlobalLock(HGLOBAL block);
BOOL GlobalUnlock(HGLOBAL block);

// Makes a stream over the whole block, at its start, with one reference for the caller. The last
// release frees the block if `deleteOnRelease` is set. Returns E_FAIL for a null block.
HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream);
