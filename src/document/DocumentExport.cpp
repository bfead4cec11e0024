#include <array>
#include <chrono>
#include <cstdio>
#include <new>
#include <thread>

#include "document/AnnotationDoc.h"
#include "page/AnnotationPage.h"

namespace {

std::wstring TimeStampedName() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<wchar_t, 256> name{};
  const int written = std::swprintf(name.data(), name.size(), L"%04d%02d%02d_%02d%02d%02d.%03d.png",
                                    int{now.wYear}, int{now.wMonth}, int{now.wDay}, int{now.wHour},
                                    int{now.wMinute}, int{now.wSecond}, int{now.wMilliseconds});
  return written > 0 ? std::wstring(name.data()) : std::wstring();
}

// Writes one page; `start` is what its path begins with. A page for which memory runs out has
// failed like any other, so that the next one is tried.
template <class Source>
int SaveUnderTime(AnnotationPage& page, const std::wstring& start, const Source& source) {
  try {
    return page.SavePage(start + TimeStampedName(), source);
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

}  // namespace

template <class Source>
int AnnotationDoc::SaveEveryPage(const std::wstring& folder, const std::wstring& prefix,
                                 const Source& source) {
  std::wstring start = folder + L'\\';
  if (!prefix.empty()) {
    start += prefix + L'_';
  }
  int result = 0;
  for (const auto& [pageId, page] : pages) {
    result = SaveUnderTime(*page, start, source);
    // The millisecond is over before the next page is named by the time, so no page overwrites
    // another.
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return result;
}

int AnnotationDoc::SaveDocument(const std::wstring& folder, const std::wstring& prefix,
                                const std::wstring& displayDevice) {
  return SaveEveryPage(folder, prefix, displayDevice);
}

int AnnotationDoc::SaveDocument(const std::wstring& folder, const std::wstring& prefix,
                                HWND window) {
  return SaveEveryPage(folder, prefix, window);
}
