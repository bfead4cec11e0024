// What the compiler's runtime inside the DLL would leave behind when a host unloads it.
#include <windows.h>

namespace __gnu_cxx {
void __freeres();  // of libstdc++: gives up the memory kept for exceptions when there is no other
}  // namespace __gnu_cxx

// The linker's description of the DLL's thread-local storage.
extern "C" const IMAGE_TLS_DIRECTORY _tls_used;

namespace {

// The runtime keeps a record with two handles of every thread that entered the DLL, and drops it
// when that thread ends. The one that unloads the DLL goes on, but not in here.
void LeaveThread(HINSTANCE library) {
  const auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
  for (; callback != nullptr && *callback != nullptr; ++callback) {
    (*callback)(library, DLL_THREAD_DETACH, nullptr);
  }
}

}  // namespace

// `atExit` is null when the host unloads the DLL, and not when its process ends.
extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void* atExit) {
  if (reason == DLL_PROCESS_DETACH && atExit == nullptr) {
    LeaveThread(library);
    __gnu_cxx::__freeres();
  }
  return TRUE;
}
