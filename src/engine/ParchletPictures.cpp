#include <memory>
#include <new>

#include <parchlet/Parchlet.h>
#include <parchlet/Utils.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "page/AnnotationPage.h"
#include "page/NicknameTipStyle.h"

namespace {

constexpr unsigned int kDefaultTipFontSize = 18;
// The Simplified Chinese name of the default family.
constexpr const wchar_t* kDefaultTipFont = L"\u5FAE\u8F6F\u96C5\u9ED1";

// The folder in front of the last separator of a file's path is there.
bool HasFolder(const std::wstring& path) {
  std::size_t separator = path.rfind(L'\\');
  if (separator == std::wstring::npos) {
    separator = path.rfind(L'/');
  }
  return separator != std::wstring::npos && PathFileExistsW(path.substr(0, separator).c_str()) != 0;
}

}  // namespace

// `addToPage` takes the page and the annotation and gives the page's result.
template <class AddToPage>
Annotation* Parchlet::AddPicture(const std::string& docId, const std::string& pageId,
                                 bool isBackground, const AddToPage& addToPage) {
  return Contain(static_cast<Annotation*>(nullptr), [&]() -> Annotation* {
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return nullptr;
    }
    auto made = std::make_unique<Annotation>();
    made->Init(pen, AnnotationTypePicture, AnnotationSubTypeUnknown, userId, userSubId, nickname);
    Annotation* annotation = made.get();
    if (!isBackground) {
      page->AddAnnotation(annotation, false);
      static_cast<void>(made.release());
    }
    if (addToPage(*page, annotation) == 0) {
      return nullptr;
    }
    static_cast<void>(made.release());
    return annotation;
  });
}

Annotation* Parchlet::AddPictureFromFile(const std::string& docId, const std::string& pageId,
                                         const std::string& filePath,
                                         const std::string& pictureProperty, bool isBackground) {
  return AddPicture(docId, pageId, isBackground, [&](AnnotationPage& page, Annotation* annotation) {
    return page.AddPictureFromFile(Utils::Utf8ToUnicode(filePath), pictureProperty, annotation,
                                   isBackground);
  });
}

Annotation* Parchlet::AddPictureFromStream(const std::string& docId, const std::string& pageId,
                                           const std::string& pictureData,
                                           const std::string& pictureProperty, bool isBackground) {
  return AddPicture(docId, pageId, isBackground, [&](AnnotationPage& page, Annotation* annotation) {
    return page.AddPictureFromStream(pictureData, pictureProperty, annotation, isBackground);
  });
}

int Parchlet::SetNicknameTip(unsigned int textColor, unsigned int fontSize,
                             const std::string& fontName, unsigned int boxColor) {
  return Contain(0, [&] {
    auto style = std::make_shared<NicknameTipStyle>();
    style->boxColor = boxColor;
    style->textColor = textColor;
    style->fontSize = fontSize != 0 ? fontSize : kDefaultTipFontSize;
    style->fontFamily = fontName.empty() ? kDefaultTipFont : Utils::Utf8ToUnicode(fontName);
    std::vector<AnnotationPage*> pages;
    for (const auto& [docId, document] : documents) {
      for (const auto& [pageId, page] : document->GetPages()) {
        pages.push_back(page);
      }
    }
    // No step that could fail from here on: all pages have the style or none.
    tipStyle = std::move(style);
    for (AnnotationPage* page : pages) {
      page->SetNicknameTip(tipStyle);
    }
    return 1;
  });
}

template <class Source>
int Parchlet::SaveDocumentFrom(const std::string& docId, const std::string& folder,
                               const std::string& prefix, const Source& source) {
  return Contain(0, [&] {
    AnnotationDoc* document = GetDocById(docId);
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
int Parchlet::SavePageFrom(const std::string& docId, const std::string& pageId,
                           const std::string& path, const Source& source) {
  return Contain(0, [&] {
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return 0;
    }
    const std::wstring widePath = Utils::Utf8ToUnicode(path);
    return HasFolder(widePath) ? page->SavePage(widePath, source) : 0;
  });
}

int Parchlet::SaveDocument(const std::string& docId, const std::string& folder,
                           const std::string& prefix, const std::wstring& displayDevice) {
  return SaveDocumentFrom(docId, folder, prefix, displayDevice);
}

int Parchlet::SaveDocument(const std::string& docId, const std::string& folder,
                           const std::string& prefix, HWND window) {
  return SaveDocumentFrom(docId, folder, prefix, window);
}

int Parchlet::SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
                       const std::wstring& displayDevice) {
  return SavePageFrom(docId, pageId, path, displayDevice);
}

int Parchlet::SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
                       HWND window) {
  return SavePageFrom(docId, pageId, path, window);
}

int Parchlet::SaveAs(const std::string& /*docId*/, const std::string& /*path*/) {
  return 1;
}
