// The objects of GDI that drawing text needs, owned.
#pragma once

#include <windows.h>

// A device context without a device; what is selected into it is put back at its end.
class MemoryDc {
 public:
  MemoryDc() : context(CreateCompatibleDC(nullptr)), state(SaveDC(context)) {}
  ~MemoryDc() {
    RestoreDC(context, state);
    DeleteDC(context);
  }
  MemoryDc(const MemoryDc&) = delete;
  MemoryDc& operator=(const MemoryDc&) = delete;

  HDC Get() const { return context; }

 private:
  HDC context;
  int state;
};

// A font, a bitmap and the like; outlives the context that it is selected into.
class GdiObject {
 public:
  explicit GdiObject(HGDIOBJ object) : object(object) {}
  ~GdiObject() { DeleteObject(object); }
  GdiObject(const GdiObject&) = delete;
  GdiObject& operator=(const GdiObject&) = delete;

  HGDIOBJ Get() const { return object; }

 private:
  HGDIOBJ object;
};
