#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>
#include <parchlet/AnnotationTypes.h>
#include <parchlet/Mutex.h>

#include "annotation/ReachTable.h"
#include "page/DibSection.h"
#include "page/NicknameTip.h"
#include "page/NicknameTipStyle.h"
#include "page/PaintOrderEntry.h"
#include "page/PictureBox.h"
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
//     while the host thread writes them only under it.
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

  // Creates the surface for `window` and shares `style`, which may be null. 1, or 0: for a
  // page that is ready, a null window or a size below 1, with nothing changed; when the system
  // refuses an object, with the objects made until then released.
  int InitPage(HWND window, AnnotationPageInfo info, std::shared_ptr<const NicknameTipStyle> style)
      PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Takes over the user values and the view rectangle of `info`; with `resize`, its size too, for
  // which the surface is made anew. 0 for a resize to a size below 1 or to the present one, or that
  // leaves the page without a surface; a section or a painter that cannot be had leaves the old
  // surface in use.
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
  // progress and drops the selection. A remote one
  //   - is adopted when its id is new to its author's marks here (a copy, should a page own it);
  //   - else, a fragment or an echo, gives its points to the stored mark's sub-model
  //     `subModelIndex`, and stays the caller's, or the page's own.
  // An echo confirms the drawing, or ends the move, that was pending under its id. The first
  // fragment 0 of a mark gives it its place in the paint order; so does, once more, a fragment 0
  // that finds the mark without a sub-model 0. Fragments may come in any order. The page owns what
  // it adopts until it is destroyed.
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

  // --- Erasing (PageErasing.cpp) ---
  //
  // Searches look at the confirmed marks that are not erased. An empty `userId` stands for all
  // authors, whatever `userSubId` says; else a mark's author must be that one, and, unless
  // `userSubId` is empty, that second identity.

  // The topmost mark that the point hits (with `useFrame`: whose selection frame holds it), or
  // null.
  Annotation* FindAnnotationAtPoint(const std::string& userId, const std::string& userSubId,
                                    const AnnotationPoint& point, bool useFrame)
      PARCHLET_EXCLUDES(mutex);
  // The marks that the segment touches, topmost first.
  std::vector<Annotation*> FindAnnotationsOnSegment(const std::string& userId,
                                                    const std::string& userSubId,
                                                    const AnnotationPoint& from,
                                                    const AnnotationPoint& to)
      PARCHLET_EXCLUDES(mutex);
  // The id of the mark under the eraser, or the empty string. Marks nothing, but drops the
  // selection; a point off the page does not even that.
  std::string EraseAnnotations(const std::string& userId, const std::string& userSubId, POINT point)
      PARCHLET_EXCLUDES(mutex);
  // The same for an eraser that moves, one end of whose way at least lies on the page: the ids,
  // topmost first.
  std::vector<std::string> EraseAnnotations(const std::string& userId, const std::string& userSubId,
                                            POINT from, POINT to) PARCHLET_EXCLUDES(mutex);
  // Marks a confirmed mark erased; 0 for an unknown one or one that is erased already.
  int EraseAnnotation(const std::string& userId, const std::string& annotationId)
      PARCHLET_EXCLUDES(mutex);
  // Gives the ids of the selection, ascending, and drops it; no mark is erased.
  std::vector<std::string> EraseSelectedAnnotations() PARCHLET_EXCLUDES(mutex);

  // --- Selection (PageSelection.cpp) ---

  // Starts a gesture. A press on a selected mark will move the selection; any other selects the
  // topmost mark whose frame is hit, if any, and starts a rubber band. Gives 1.
  int StartSelecting(const std::string& userId, const std::string& userSubId, POINT point)
      PARCHLET_EXCLUDES(mutex);
  // Moves the selection (1; a hidden copy of each mark that has no pending change is kept, for
  // CancelAnnotation) or stretches the rubber band and selects the marks within (0). 0 without a
  // gesture.
  int MoveSelecting(POINT point) PARCHLET_EXCLUDES(mutex);
  // Ends the gesture; 1 when it was a move. The selection stays.
  int EndSelecting() PARCHLET_EXCLUDES(mutex);
  // Adds the author's marks, or everybody's for an empty `userId`, that lie within the rectangle
  // and are not erased. Of two authors' marks with one id the later author's is kept.
  void SelectAnnotations(const std::string& userId, const RECT& rect) PARCHLET_EXCLUDES(mutex);
  // A copy of the selection, by id.
  std::map<std::string, Annotation*> GetSelectedAnnotations() const PARCHLET_EXCLUDES(mutex);

  // --- Looking up and reverting (PageRemote.cpp) ---

  // Reverts the pending change of that id: an unconfirmed drawing is deleted, a moved mark goes
  // back to where it was and is visible. Nothing for any other id.
  void CancelAnnotation(const std::string& annotationId) PARCHLET_EXCLUDES(mutex);
  // The confirmed mark, erased or not, or null.
  Annotation* GetAnnotation(const std::string& userId, const std::string& annotationId) const
      PARCHLET_EXCLUDES(mutex);
  Annotation* FindAnnotation(const std::string& userId, const std::string& annotationId) const
      PARCHLET_EXCLUDES(mutex);
  // The pending mark, a hidden copy of a moved one included, or null. An echo or CancelAnnotation
  // deletes it.
  Annotation* GetLocalAnnotation(const std::string& annotationId) const PARCHLET_EXCLUDES(mutex);
  // 1 when the author has confirmed marks here.
  int IsUserExist(const std::string& userId) const PARCHLET_EXCLUDES(mutex);
  // Replaces `*out` by the author's marks, by id; 0, and `*out` as it was, for null or an unknown
  // author.
  int GetUserAnnotations(const std::string& userId, std::map<std::string, Annotation*>* out) const
      PARCHLET_EXCLUDES(mutex);
  // Replaces `*out` by everybody's marks, by author and id; 0 for null.
  int GetAllAnnotations(std::map<std::string, std::map<std::string, Annotation*>>* out) const
      PARCHLET_EXCLUDES(mutex);
  // Marks erased what the author has here, or, with a `userSubId`, what has that second identity;
  // for an empty `userId` everything. 0 for an unknown author.
  int ClearAnnotations(const std::string& userId, const std::string& userSubId)
      PARCHLET_EXCLUDES(mutex);

  // --- Nickname tips (PageTips.cpp) ---

  // Shares the style; from then on tips are painted. 0 for null, else 1.
  int SetNicknameTip(std::shared_ptr<const NicknameTipStyle> style) PARCHLET_EXCLUDES(mutex);

  // --- Pictures (PagePictures.cpp) ---

  // Gives the annotation a box of the picture's size at the page's origin (half the page's extent
  // where it does not fit), or, for a background, the largest box of its aspect in the page's
  // middle; gives it the picture; and installs a background in place of the one before. 1; or 0,
  // and the annotation as it was, without a surface, for an empty argument, or when the picture
  // cannot be read. Bytes of no picture are accepted for an ordinary one, which then shows nothing.
  // A background is the page's once installed; an ordinary picture's owner does not change.
  int AddPictureFromFile(const std::wstring& filePath, const std::string& pictureProperty,
                         Annotation* annotation, bool isBackground) PARCHLET_EXCLUDES(mutex);
  int AddPictureFromStream(const std::string& pictureData, const std::string& pictureProperty,
                           Annotation* annotation, bool isBackground) PARCHLET_EXCLUDES(mutex);
  // Writes the largest box of the picture's aspect that fits the page, centred; 0 for a size of 0.
  int FitPicture(unsigned int imageWidth, unsigned int imageHeight, PictureBox* box) const;

  // --- Export (PageExport.cpp) ---

  // Writes an image file, JPEG for ".jpg", BMP for ".bmp", else PNG: of what the whole display
  // shows, or what the screen shows where the window is; for an empty name, or null or a handle of
  // no window, of the page's own surface as it was rendered last. 0 when there is nothing to write
  // or it cannot be written; a file that was there is then kept.
  int SavePage(const std::wstring& path, const std::wstring& displayDevice)
      PARCHLET_EXCLUDES(mutex);
  int SavePage(const std::wstring& path, HWND capturedWindow) PARCHLET_EXCLUDES(mutex);

  // --- Rendering (PageRendering.cpp) ---

  // Paints the whole page into its surface, layer by layer; 0 when it has none. Marks drawn here
  // that have outlived their time are erased.
  int DrawPage() PARCHLET_EXCLUDES(mutex);

 private:
  friend struct PageTestAccess;

  using AnnotationMap = std::map<std::string, Annotation*>;

  void AddLocal(Annotation* annotation) PARCHLET_REQUIRES(mutex);
  void AddRemote(Annotation* annotation) PARCHLET_REQUIRES(mutex);
  struct Arrival;  // a remote mark on its way into the store
  void Prepare(Arrival& arrival, Annotation* annotation) PARCHLET_REQUIRES(mutex);
  // Does not throw.
  void Enter(Arrival& arrival) PARCHLET_REQUIRES(mutex);
  void EndPending(const Arrival& arrival) PARCHLET_REQUIRES(mutex);
  std::size_t AddSlot() PARCHLET_REQUIRES(mutex);
  // Whether the fragment that arrives gives its mark a place in the paint order.
  bool GetsPlace(const Arrival& arrival) const PARCHLET_REQUIRES(mutex);
  void InsertPaintEntry(std::list<PaintOrderEntry>& entry) PARCHLET_REQUIRES(mutex);
  void DestroyAnnotations() PARCHLET_REQUIRES(mutex);

  bool CreateMemoryContext() PARCHLET_REQUIRES(surfaceMutex, mutex);
  void CreateGraphics() PARCHLET_REQUIRES(surfaceMutex, mutex);
  void ReleaseSurfaceObjects() PARCHLET_REQUIRES(surfaceMutex, mutex);
  int PushToWindow() PARCHLET_REQUIRES(surfaceMutex);

  bool HasGraphics() const PARCHLET_EXCLUDES(mutex);
  bool PlacePicture(Gdiplus::Image& probe, Annotation& annotation, bool isBackground) const;
  template <class Load>
  int GivePicture(Gdiplus::Image& probe, Annotation& annotation, bool isBackground,
                  const Load& load) PARCHLET_EXCLUDES(mutex);
  void ReplaceBackgroundPicture(Annotation* annotation) PARCHLET_EXCLUDES(mutex);
  int SaveSurface(const std::wstring& path, const CLSID& encoder) PARCHLET_REQUIRES(mutex);

  void DrawBackgroundPicture() PARCHLET_REQUIRES(mutex);
  void DrawConfirmed() PARCHLET_REQUIRES(mutex);
  void DrawTipOf(Annotation& annotation) PARCHLET_REQUIRES(mutex);
  // Whether the author's tip is to be shown beside this annotation now: for 2 s, and not within 5 s
  // of the author's tip before.
  int IsTipVisible(const std::string& userId, const Annotation& annotation)
      PARCHLET_REQUIRES(mutex);
  int DrawNicknameTip(const std::string& nickname, const AnnotationPoint& at)
      PARCHLET_REQUIRES(mutex);
  void DrawPending() PARCHLET_REQUIRES(mutex);
  void DrawRubberBand() PARCHLET_REQUIRES(mutex);
  Annotation* FindConfirmed(const std::string& userId, const std::string& annotationId) const
      PARCHLET_REQUIRES(mutex);

  // The paint entries of the marks in those slots of the reach table that pass the filters, of
  // marks that are not erased, topmost first.
  std::vector<const PaintOrderEntry*> TopmostFirst(const std::vector<std::size_t>& slots,
                                                   const std::string& userId,
                                                   const std::string& userSubId) const
      PARCHLET_REQUIRES(mutex);
  Annotation* FindAtPoint(const std::string& userId, const std::string& userSubId,
                          const AnnotationPoint& point, bool useFrame) const
      PARCHLET_REQUIRES(mutex);
  std::vector<Annotation*> FindOnSegment(const std::string& userId, const std::string& userSubId,
                                         const AnnotationPoint& from,
                                         const AnnotationPoint& to) const PARCHLET_REQUIRES(mutex);
  void MoveSelection(const AnnotationPoint& point) PARCHLET_REQUIRES(mutex);
  void StretchRubberBand(const AnnotationPoint& point) PARCHLET_REQUIRES(mutex);
  void StartRubberBand(Annotation* hit, std::string userId, const AnnotationPoint& anchor)
      PARCHLET_REQUIRES(mutex);
  void Select(const std::string& userId, const RECT& rect, AnnotationMap& selection) const
      PARCHLET_REQUIRES(mutex);

  std::uint32_t clearColor PARCHLET_GUARDED_BY(mutex) = 0xFFFFFFFF;
  AnnotationPageInfo initialInfo = {0,         0, 1, 1, true, {0, 0, 0, 0},
                                    0xFFFFFFFF};  // the host thread's
  AnnotationPageInfo currentInfo = initialInfo;   // the host thread's; size written under `mutex`
  std::int32_t surfaceReady PARCHLET_GUARDED_BY(surfaceMutex) = 0;

  // Confirmed annotations by author and id; nothing leaves while the page lives. Owned.
  std::map<std::string, AnnotationMap> userAnnotations PARCHLET_GUARDED_BY(mutex);
  // Sorted by `order`; equal ones in the order in which they came.
  std::list<PaintOrderEntry> paintOrder PARCHLET_GUARDED_BY(mutex);
  // Where the confirmed annotations are, and by slot their latest entry in `paintOrder`, null for
  // one that has none yet.
  ReachTable reachTable;
  std::vector<const PaintOrderEntry*> latestEntries PARCHLET_GUARDED_BY(mutex);
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
  std::shared_ptr<const NicknameTipStyle> tipStyle PARCHLET_GUARDED_BY(mutex);
  std::map<std::string, TipRecord> tipHistory PARCHLET_GUARDED_BY(mutex);  // by author
};
