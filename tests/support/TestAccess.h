// The private operations and fields that tests look at.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <parchlet/Parchlet.h>

#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

// Fields are read where no other thread is at work, which the analysis cannot know.

struct ParchletTestAccess {
  // Paints and pushes the current page, as the refresh thread does.
  static int Refresh(Parchlet& engine) {
    return Parchlet::State::Of(engine).UpdateLayeredContent();
  }
  static AnnotationPage* GetPageById(Parchlet& engine, const std::string& docId,
                                     const std::string& pageId) {
    return engine.GetPagePtr(docId, pageId);
  }
};

struct PageTestAccess {
  using Annotations = std::map<std::string, Annotation*>;

  PARCHLET_UNCHECKED static Annotations Pending(const AnnotationPage& page) {
    return page.store.LocalAnnotations();
  }
  PARCHLET_UNCHECKED static std::map<std::string, Annotations> Confirmed(
      const AnnotationPage& page) {
    return page.store.UserAnnotations();
  }
  // The authors and ids of the paint order's entries, in that order.
  PARCHLET_UNCHECKED static std::vector<std::pair<std::string, std::string>> PaintPlaces(
      const AnnotationPage& page) {
    std::vector<std::pair<std::string, std::string>> places;
    for (const PaintOrderEntry& entry : page.store.PaintOrder()) {
      places.emplace_back(entry.userId, entry.annotationId);
    }
    return places;
  }
  PARCHLET_UNCHECKED static void Select(AnnotationPage& page, Annotation* annotation) {
    MarkStore::Marks selected = page.selection.Selected();
    selected[annotation->annotationId] = annotation;
    page.selection.Replace(selected);
  }
  // Null when tips are not painted.
  PARCHLET_UNCHECKED static const NicknameTipStyle* TipStyle(const AnnotationPage& page) {
    return page.tipStyle.get();
  }
  PARCHLET_UNCHECKED static Annotation& RubberBand(AnnotationPage& page) {
    return page.selection.RubberBand();
  }
  // The page owns the picture from then on.
  PARCHLET_UNCHECKED static void SetBackgroundPicture(AnnotationPage& page, Annotation* picture) {
    page.backgroundPicture.reset(picture);
  }
};

struct AnnotationTestAccess {
  PARCHLET_UNCHECKED static RECT FrameOf(const Annotation& annotation) {
    return MarkState::Of(annotation).frame;
  }
  PARCHLET_UNCHECKED static const Gdiplus::Image* PictureOf(const Annotation& annotation) {
    return MarkState::Of(annotation).picture.get();
  }
  PARCHLET_UNCHECKED static long PictureUses(const Annotation& annotation) {
    return MarkState::Of(annotation).picture.use_count();
  }
};
