#include <parchlet/Parchlet.h>
#include <parchlet/Utils.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

namespace {

// Returns whether the path names a folder, and the folder exists.
bool HasFolder(const std::wstring& path) {
  std::size_t separator = path.rfind(L'\\');
  if (separator == std::wstring::npos) {
    separator = path.rfind(L'/');
  }
  return separator != std::wstring::npos && PathFileExistsW(path.substr(0, separator).c_str()) != 0;
}

template <class Source>
int SaveDocumentFrom(Parchlet::State& state, const std::string& docId, const std::string& folder,
                     const std::string& prefix, const Source& source) {
  return Contain(0, [&] {
    AnnotationDoc* document = state.GetDocById(docId);
    if (document == nullptr) {
      return 0;
    }
    const std::wstring wideFolder = Utils::Utf8ToUnicode(folder);
    if (PathFileExistsW(wideFolder.c_str()) == 0) {
      return 0;
    }
    return document->SaveDocument(wideFolder, Utils::Utf8ToUnicode(prefix), source);
  });
}

template <class Source>
int SavePageFrom(Parchlet::State& state, const std::string& docId, const std::string& pageId,
                 const std::string& path, const Source& source) {
  return Contain(0, [&] {
    AnnotationPage* page = state.GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return 0;
    }
    const std::wstring widePath = Utils::Utf8ToUnicode(path);
    return HasFolder(widePath) && page->SavePage(widePath, source) ? 1 : 0;
  });
}

}  // namespace

int Parchlet::SaveDocument(const std::string& docId, const std::string& folder,
                           const std::string& prefix, const std::wstring& displayDevice) {
  return SaveDocumentFrom(*state, docId, folder, prefix, displayDevice);
}

int Parchlet::SaveDocument(const std::string& docId, const std::string& folder,
                           const std::string& prefix, HWND window) {
  return SaveDocumentFrom(*state, docId, folder, prefix, window);
}

int Parchlet::SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
                       const std::wstring& displayDevice) {
  return SavePageFrom(*state, docId, pageId, path, displayDevice);
}

int Parchlet::SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
                       HWND window) {
  return SavePageFrom(*state, docId, pageId, path, window);
}

int Parchlet::SaveAs(const std::string& /*docId*/, const std::string& /*path*/) {
  return 1;
}
