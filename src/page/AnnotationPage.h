#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>

#include <parchlet/Annotation.h>
#include <parchlet/AnnotationTypes.h>
#include <parchlet/Mutex.h>

#include "page/DibSection.h"
#include "page/NicknameTipStyle.h"
#include "page/PaintOrderEntry.h"
#include "platform/Platform.h"

// One page of a document: its annotations, the gestures on them, and the surface that they are
// painted on and pushed to the host's window from. Owned by its document (by its maker until
// AddPage). Its operations are spread over one source file a theme.
//
// Threads: the host thread calls everything; the refresh thread calls UpdateLayeredContent alone,
// and only while the engine keeps the page alive for it. Three kinds of fields:
//   - guarded by `mutex`, the page lock: what rendering reads; held for the whole of a rendering;
//   - guarded by `surfaceMutex`, taken before `mutex`: what pushing reads after the page lock is
//     released, so that the surface is neither resized nor released while it is pushed;
//   - the host thread's own, which the refresh thread never touches, or touches only under `mutex`
//   while
//     the host thread writes them only under it.
class AnnotationPage {
 public:
  AnnotationPage();
  // Deletes the surface and every annotation; the window stays as it is.
  ~AnnotationPage();
  AnnotationPage(const AnnotationPage&) = delete;
  AnnotationPage& operator=(const AnnotationPage&) = delete;

  std::string pageId;
  std::string creator;          // the user who created the page
  std::int32_t pageIndex = -1;  // position from 1; maintained by the document alone

  // --- Surface (PageSurface.cpp) ---

  // Creates the surface for `window` and takes a copy of `style`, which may be null. 1, or 0: for a
  // page that is ready, a null window or a size below 1, with nothing changed; when the system
  // refuses an object, with the objects made until then released.
  int InitPage(HWND window, AnnotationPageInfo info, const NicknameTipStyle* style)
      PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Takes over the user values and the view rectangle of `info`; with `resize`, its size too, for
  // which the surface is made anew. 0 for a resize to a size below 1 or to the present one, or that
  // leaves the page without a surface; a section that cannot be had leaves the old surface in use.
  // Annotations keep their fractions of the page.
  int UpdatePage(AnnotationPageInfo info, bool resize) PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Renders the page and pushes it to its window at the window's present size and place; what the
  // push gave, or 0 without a surface or with a window that is gone. The refresh thread.
  int UpdateLayeredContent() PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Sets what the page is cleared to, unless it is transparent.
  void SetPageBackgroundColor(unsigned int color) PARCHLET_EXCLUDES(mutex);
  // Releases the surface and every annotation; nothing for a page that is not ready.
  void ReleaseSurface() PARCHLET_EXCLUDES(surfaceMutex, mutex);

  // The geometry given at creation, and the present one. Host thread.
  const AnnotationPageInfo& GetInitialInfo() const { return initialInfo; }
  const AnnotationPageInfo& GetCurrentInfo() const { return currentInfo; }
  CurrentAnnotPageSize GetSize() const { return {currentInfo.width, currentInfo.height}; }

  // --- Store (PageStore.cpp) ---

  // Enters an annotation; null is ignored. A local one gets a fresh id, becomes the annotation in
  // progress and drops the selection. A remote one is adopted when its id is new to its author's
  // marks here; otherwise its points become the stored mark's sub-model `subModelIndex`, and the
  // object stays the caller's. The page owns what it adopts until it is destroyed.
  void AddAnnotation(Annotation* annotation, bool fromRemote) PARCHLET_EXCLUDES(mutex);

  // The mark being drawn here, or null. Host thread; no lock, so that a pointer event waits for
  // nothing.
  Annotation* GetCurrentAnnotation() const { return currentAnnotation; }
  void SetCurrentAnnotation(Annotation* annotation) { currentAnnotation = annotation; }

  // --- Drawing (PageDrawing.cpp) ---

  // 1 when the point lies on the page, its right and bottom edge (width, height) included. Host
  // thread.
  int IsPointInPage(POINT point) const;
  // The annotation point of a pixel of the surface. Host thread.
  AnnotationPoint ToPagePoint(POINT pixel) const;

  // --- Rendering (PageRendering.cpp) ---

  // Paints the whole page into its surface, layer by layer; 0 when it has none. Marks drawn here
  // that have outlived their time are erased.
  int DrawPage() PARCHLET_EXCLUDES(mutex);

 private:
  friend struct PageTestAccess;

  using AnnotationMap = std::map<std::string, Annotation*>;

  void AddLocal(Annotation* annotation) PARCHLET_REQUIRES(mutex);
  void AddRemote(Annotation* annotation) PARCHLET_REQUIRES(mutex);
  void InsertPaintEntry(PaintOrderEntry entry) PARCHLET_REQUIRES(mutex);
  void DestroyAnnotations() PARCHLET_REQUIRES(mutex);

  void CopyTipStyle(const NicknameTipStyle* style) PARCHLET_REQUIRES(mutex);
  bool CreateMemoryContext() PARCHLET_REQUIRES(surfaceMutex, mutex);
  void CreateGraphics() PARCHLET_REQUIRES(surfaceMutex, mutex);
  void ReleaseSurfaceObjects() PARCHLET_REQUIRES(surfaceMutex, mutex);
  int PushToWindow() PARCHLET_REQUIRES(surfaceMutex);

  void DrawBackgroundPicture() PARCHLET_REQUIRES(mutex);
  void DrawConfirmed() PARCHLET_REQUIRES(mutex);
  void DrawPending() PARCHLET_REQUIRES(mutex);
  void DrawRubberBand() PARCHLET_REQUIRES(mutex);
  Annotation* FindConfirmed(const PaintOrderEntry& entry) const PARCHLET_REQUIRES(mutex);

  std::uint32_t clearColor PARCHLET_GUARDED_BY(mutex) = 0xFFFFFFFF;
  AnnotationPageInfo initialInfo = {0,         0, 1, 1, true, {0, 0, 0, 0},
                                    0xFFFFFFFF};  // the host thread's
  AnnotationPageInfo currentInfo = initialInfo;   // the host thread's; size written under `mutex`
  std::int32_t surfaceReady PARCHLET_GUARDED_BY(surfaceMutex) = 0;

  // Confirmed annotations by author and id; nothing leaves while the page lives. Owned.
  std::map<std::string, AnnotationMap> userAnnotations PARCHLET_GUARDED_BY(mutex);
  // Sorted by `order`; equal ones in the order in which they came.
  std::list<PaintOrderEntry> paintOrder PARCHLET_GUARDED_BY(mutex);
  AnnotationMap localAnnotations PARCHLET_GUARDED_BY(mutex);  // pending ones; owned
  Mutex surfaceMutex;
  mutable Mutex mutex PARCHLET_ACQUIRED_AFTER(surfaceMutex);
  AnnotationMap selectedAnnotations PARCHLET_GUARDED_BY(mutex);  // not owned
  Annotation selectRect PARCHLET_GUARDED_BY(mutex);  // the rubber band; erased when hidden
  std::int32_t movingSelection = 0;                  // the host thread's
  Annotation* currentAnnotation = nullptr;           // the host thread's; not owned

  Annotation* backgroundPicture PARCHLET_GUARDED_BY(mutex) = nullptr;  // owned
  std::unique_ptr<Gdiplus::Graphics> graphics PARCHLET_GUARDED_BY(mutex);
  DibSection surface PARCHLET_GUARDED_BY(mutex);
  HDC memoryDC PARCHLET_GUARDED_BY(surfaceMutex) = nullptr;
  HGDIOBJ previousBitmap PARCHLET_GUARDED_BY(surfaceMutex) = nullptr;
  HWND window PARCHLET_GUARDED_BY(surfaceMutex) = nullptr;  // the host's
  std::unique_ptr<NicknameTipStyle> tipStyle PARCHLET_GUARDED_BY(mutex);
};
