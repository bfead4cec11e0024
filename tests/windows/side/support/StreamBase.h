// A stream's part that the engine never calls.
#pragma once

#include <parchlet/Platform.h>

class StreamBase : public IStream {
 public:
  HRESULT QueryInterface(REFIID /*id*/, void** /*object*/) override { return E_NOINTERFACE; }
  HRESULT Write(const void* /*from*/, ULONG /*size*/, ULONG* /*written*/) override {
    return E_NOTIMPL;
  }
  HRESULT SetSize(ULARGE_INTEGER /*size*/) override { return E_NOTIMPL; }
  HRESULT CopyTo(IStream* /*to*/, ULARGE_INTEGER /*size*/, ULARGE_INTEGER* /*read*/,
                 ULARGE_INTEGER* /*written*/) override {
    return E_NOTIMPL;
  }
  HRESULT Commit(DWORD /*flags*/) override { return E_NOTIMPL; }
  HRESULT Revert() override { return E_NOTIMPL; }
  HRESULT LockRegion(ULARGE_INTEGER /*at*/, ULARGE_INTEGER /*size*/, DWORD /*kind*/) override {
    return E_NOTIMPL;
  }
  HRESULT UnlockRegion(ULARGE_INTEGER /*at*/, ULARGE_INTEGER /*size*/, DWORD /*kind*/) override {
    return E_NOTIMPL;
  }
  HRESULT Stat(STATSTG* /*told*/, DWORD /*flags*/) override { return E_NOTIMPL; }
  HRESULT Clone(IStream** /*clone*/) override { return E_NOTIMPL; }

 protected:
  ~StreamBase() = default;
};
