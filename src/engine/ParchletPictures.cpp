#include <memory>

#include <parchlet/Parchlet.h>
#include <parchlet/Utils.h>

#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

namespace {

// Places a picture. `addToPage` takes the page and the annotation, and returns the page's result.
// Returns the annotation, or null.
template <class AddToPage>
Annotation* AddPicture(Parchlet::State* state, const std::string& docId, const std::string& pageId,
                       bool isBackground, const AddToPage& addToPage) {
  return Contain(static_cast<Annotation*>(nullptr), [&]() -> Annotation* {
    AnnotationPage* page = state->GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return nullptr;
    }
    auto made = std::make_unique<Annotation>();
    made->Init(state->pen, AnnotationTypePicture, AnnotationSubTypeUnknown, state->userId,
               state->userSubId, state->nickname);
    Annotation* annotation = made.get();
    if (!isBackground) {
      page->AddAnnotation(annotation, false);
      static_cast<void>(made.release());
    }
    if (!addToPage(*page, annotation)) {
      return nullptr;
    }
    static_cast<void>(made.release());
    return annotation;
  });
}

}  // namespace

Annotation* Parchlet::AddPictureFromFile(const std::string& docId, const std::string& pageId,
                                         const std::string& filePath,
                                         const std::string& pictureProperty, bool isBackground) {
  return AddPicture(state.get(), docId, pageId, isBackground,
                    [&](AnnotationPage& page, Annotation* annotation) {
                      return page.AddPictureFromFile(Utils::Utf8ToUnicode(filePath),
                                                     pictureProperty, annotation, isBackground);
                    });
}

Annotation* Parchlet::AddPictureFromStream(const std::string& docId, const std::string& pageId,
                                           const std::string& pictureData,
                                           const std::string& pictureProperty, bool isBackground) {
  return AddPicture(
      state.get(), docId, pageId, isBackground, [&](AnnotationPage& page, Annotation* annotation) {
        return page.AddPictureFromStream(pictureData, pictureProperty, annotation, isBackground);
      });
}
