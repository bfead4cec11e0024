#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include <parchlet/Parchlet.h>

#include "engine/PeriodicTimer.h"
#include "platform/threads/Mutex.h"

class AnnotationDoc;
class AnnotationPage;
struct NicknameTipStyle;

// The state of an engine, behind Parchlet's interface. Owned by its Parchlet.
//
// Threads: the refresh thread calls UpdateLayeredContent only. The host thread does everything
// else.
class Parchlet::State {
 public:
  static State& Of(Parchlet& engine) { return *engine.state; }

  // Paints the current page and pushes it to its window. Returns 1 if the push succeeded, 0 if it
  // failed or there is no page. The refresh timer's task; never throws.
  int UpdateLayeredContent() PARCHLET_EXCLUDES(handOverMutex);
  // Stops the refresh thread and deletes every document.
  void TearDown() PARCHLET_EXCLUDES(handOverMutex);
  // Deletes every document. The refresh thread must not have a page any more.
  void ClearDocs();

  // Each returns the document or page. If there is none, writes a log record and returns null.
  AnnotationDoc* GetDocById(const std::string& docId);
  AnnotationPage* GetPagePtr(const std::string& docId, const std::string& pageId);

  // The current page, or null.
  AnnotationPage* GetCurrentPage() const;
  // The current page's mark in progress, a picture included, or null.
  Annotation* GetCurrentAnnotation() const;
  // The same if it is a drawing, which MoveDrawing extends and EndDrawing ends; else null.
  Annotation* GetDrawingInProgress() const;

  // Makes the refresh thread paint the page that is current now. Waits for a frame under way.
  void PublishCurrentPage() PARCHLET_EXCLUDES(handOverMutex);
  // Makes the refresh thread paint nothing. Waits for a frame under way.
  void WithdrawCurrentPage() PARCHLET_EXCLUDES(handOverMutex);

  int initialised = 0;
  std::map<std::string, AnnotationDoc*> documents;  // owned
  std::string userId;
  std::string nickname;
  std::string userSubId;
  HWND activeWindow = nullptr;  // of the latest page that NewPage tried to create; null before
  AnnotationDoc* currentDocument = nullptr;  // one of `documents`: the latest one created, or null
  AnnotationPen pen = {0xFF000000, 6, 0};
  AnnotationType annotationType = AnnotationTypeDrawing;
  AnnotationSubType annotationSubType = AnnotationSubTypePath;
  std::shared_ptr<const NicknameTipStyle> tipStyle;
  PeriodicTimer refreshTimer;
  std::uint32_t pageBackgroundColor = 0xFFFFFFFF;

 private:
  // The refresh thread holds this lock for its whole tick. It reads no other field than this page.
  Mutex handOverMutex;
  AnnotationPage* refreshPage PARCHLET_GUARDED_BY(handOverMutex) = nullptr;
};
