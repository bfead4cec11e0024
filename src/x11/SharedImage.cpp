#include "x11/SharedImage.h"

#include <sys/mman.h>

#include <fcntl.h>
#include <unistd.h>

#include <string>

namespace {

// Returns a file descriptor of memory of that size; -1 if there is none.
int CreateMemoryFile(std::size_t bytes) {
  const int file = memfd_create("parchlet-x11", MFD_CLOEXEC);
  // Reserved now, so that running out of memory is an error here and no signal on the first write.
  if (file >= 0 && posix_fallocate(file, 0, static_cast<off_t>(bytes)) != 0) {
    close(file);
    return -1;
  }
  return file;
}

}  // namespace

bool SharedImage::CanShare(const Connection& connection) {
  if (!connection.Has(xcb_shm_id)) {
    return false;
  }
  const Reply<xcb_shm_query_version_reply_t> version(xcb_shm_query_version_reply(
      connection.Get(), xcb_shm_query_version(connection.Get()), nullptr));
  // File descriptors came with 1.2.
  return version != nullptr && (version->major_version > 1 ||
                                (version->major_version == 1 && version->minor_version >= 2));
}

std::unique_ptr<SharedImage> SharedImage::Create(const Connection& connection,
                                                 std::size_t pixelCount) {
  const std::size_t bytes = pixelCount * sizeof(std::uint32_t);
  const int file = CreateMemoryFile(bytes);
  if (file < 0) {
    return nullptr;
  }
  void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  if (memory == MAP_FAILED) {
    close(file);
    return nullptr;
  }
  std::unique_ptr<SharedImage> image(new SharedImage(connection, memory, bytes));
  return image->Attach(file) ? std::move(image) : nullptr;
}

// Takes over the file, which XCB closes once it is sent.
bool SharedImage::Attach(int file) {
  const xcb_shm_seg_t newSegment = xcb_generate_id(connection.Get());
  std::string refusal;
  if (!connection.Check(xcb_shm_attach_fd_checked(connection.Get(), newSegment, file, 0),
                        "share memory", refusal)) {
    return false;
  }
  segment = newSegment;
  return true;
}

SharedImage::~SharedImage() {
  if (segment != XCB_NONE) {
    xcb_shm_detach(connection.Get(), segment);
  }
  munmap(memory, bytes);
}
