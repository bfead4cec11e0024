// The system's imaging component, as a library uses it: one call at a time, nothing kept.
#pragma once

#include <windows.h>

#include <wincodec.h>

// COM, for as long as it lives, on this thread. A host that set the thread up in another way keeps
// it so: the component works in either.
class ComUse {
 public:
  ComUse() : result(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
  ~ComUse() {
    if (SUCCEEDED(result)) {
      CoUninitialize();
    }
  }
  ComUse(const ComUse&) = delete;
  ComUse& operator=(const ComUse&) = delete;

  bool IsReady() const { return SUCCEEDED(result) || result == RPC_E_CHANGED_MODE; }

 private:
  HRESULT result;
};

// Owns one reference.
template <class Object>
class ComPointer {
 public:
  ComPointer() = default;
  ~ComPointer() {
    if (object != nullptr) {
      object->Release();
    }
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;

  Object* get() const { return object; }
  Object* operator->() const { return object; }
  // Where a call puts the reference; it is still null.
  Object** Out() { return &object; }

 private:
  Object* object = nullptr;
};

// The component's factory and the use of COM that it needs, which ends after everything that came
// from the factory.
class Wic {
 public:
  Wic() {
    isReady = com.IsReady() && SUCCEEDED(CoCreateInstance(
                                   CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_IWICImagingFactory, reinterpret_cast<void**>(made.Out())));
  }

  bool IsReady() const { return isReady; }
  IWICImagingFactory* Factory() const { return made.get(); }

 private:
  ComUse com;
  ComPointer<IWICImagingFactory> made;
  bool isReady = false;
};
