// libjpeg reports failures by a jump back into our code, and prints nothing.
#pragma once

#include <csetjmp>
#include <cstdio>  // jpeglib.h needs it and does not say so

#include <jpeglib.h>

// The error manager for libjpeg, which sees only `base`. A function that sets `jump` keeps no
// object with a destructor and changes no local variable after it, so a jump out of libjpeg skips
// nothing.
struct JpegErrorManager {
  jpeg_error_mgr base;
  std::jmp_buf jump;
};

// Fills in the manager and returns the pointer for the codec's `err`.
inline jpeg_error_mgr* InitJpegErrors(JpegErrorManager& manager) {
  jpeg_std_error(&manager.base);
  manager.base.error_exit = [](j_common_ptr codec) {
    std::longjmp(reinterpret_cast<JpegErrorManager*>(codec->err)->jump, 1);
  };
  manager.base.emit_message = [](j_common_ptr, int) {};
  manager.base.output_message = [](j_common_ptr) {};
  return &manager.base;
}
