// SharedImage.h - memory for images that this process and the X server share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <xcb/shm.h>

#include "x11/Connection.h"

// Owned by the object that sends or fetches images; the connection outlives it. The memory has no
// name in the system, so nothing is left of it whichever side dies first.
class SharedImage {
 public:
  // Returns whether the server has the extension. Create finds out whether it is on this machine.
  static bool CanShare(const Connection& connection);

  // Returns null if there is no memory, or if the server cannot map it: a connection to another
  // machine does not pass file descriptors.
  static std::unique_ptr<SharedImage> Create(const Connection& connection, std::size_t pixelCount);
  ~SharedImage();
  SharedImage(const SharedImage&) = delete;
  SharedImage& operator=(const SharedImage&) = delete;

  std::uint32_t* Pixels() const { return static_cast<std::uint32_t*>(memory); }
  std::size_t PixelCount() const { return bytes / sizeof(std::uint32_t); }
  xcb_shm_seg_t Segment() const { return segment; }

 private:
  SharedImage(const Connection& connection, void* memory, std::size_t bytes)
      : connection(connection), memory(memory), bytes(bytes) {}
  bool Attach(int file);

  const Connection& connection;
  void* memory;
  std::size_t bytes;
  xcb_shm_seg_t segment = XCB_NONE;
};
