#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>
#include <parchlet/AnnotationTypes.h>

#include "page/MarkStore.h"
#include "page/NicknameTip.h"
#include "page/PageSurface.h"
#include "page/Selection.h"
#include "platform/Platform.h"
#include "platform/threads/Mutex.h"

// Where a picture lies on a page, in surface pixels.
struct PictureBox {
  std::int32_t x;
  std::int32_t y;
  std::int32_t width;
  std::int32_t height;
};

// One page of a document. Coordinates its parts and holds their locks: the store of marks, the
// selection, the schedule of tips, and the surface that they are painted on. Owned by its document
// (by its maker until AddPage). Its operations are spread over one source file a theme.
//
// Threads: the host thread calls everything; the refresh thread calls UpdateLayeredContent alone,
// and only while the engine keeps the page alive for it. Three kinds of fields:
//   - guarded by `mutex`, the page lock: what painting reads. A frame holds it while it is painted.
//   - guarded by `surfaceMutex`, taken before `mutex`: what a frame is painted on and pushed from.
//     A frame holds it to its end, so the surface is neither resized nor released meanwhile.
//   - the host thread's own, which it writes under the lock that the refresh thread reads it under.
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

  // --- Surface (AnnotationPage.cpp) ---

  // Creates the surface for `window` and shares `style`, which may be null. Returns false and
  // changes nothing for a page that is ready, a null window or a size below 1. Returns false when
  // the system refuses an object; what was made until then is released.
  bool InitPage(HWND window, AnnotationPageInfo info, std::shared_ptr<const NicknameTipStyle> style)
      PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Takes over the user values and the view rectangle of `info`. With `resize` it takes its size as
  // well and makes the surface anew; marks keep their fractions of the page. Returns false for a
  // resize to a size below 1 or to the present size, and when the page is left without a surface.
  // If the new section or painter cannot be created, the old surface stays in use.
  bool UpdatePage(AnnotationPageInfo info, bool resize) PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Paints the page and pushes it to its window, at the window's present place and size. Returns
  // what the push returned; false without a surface or with a window that is gone. A frame that
  // runs out of memory is pushed as it is. The refresh thread.
  bool UpdateLayeredContent() PARCHLET_EXCLUDES(surfaceMutex, mutex);
  // Sets what the page is cleared to, unless it is transparent.
  void SetPageBackgroundColor(unsigned int color) PARCHLET_EXCLUDES(mutex);
  // Releases the surface and every annotation; nothing for a page that is not ready.
  void ReleaseSurface() PARCHLET_EXCLUDES(surfaceMutex, mutex);

  // The geometry given at creation, and the present one. Host thread.
  const AnnotationPageInfo& GetInitialInfo() const { return initialInfo; }
  const AnnotationPageInfo& GetCurrentInfo() const { return currentInfo; }
  CurrentAnnotPageSize GetSize() const { return {currentInfo.width, currentInfo.height}; }

  // --- Merging, looking up, reverting (PageMerging.cpp) ---

  // Enters an annotation; null is ignored. A local one gets a fresh id, becomes the annotation in
  // progress and clears the selection. A remote one
  //   - is adopted if its id is new to its author's marks here (as a copy if a page owns it);
  //   - changes no points if it is this page's own object;
  //   - otherwise is a fragment or an echo: its points become the stored mark's sub-model
  //     `subModelIndex`.
  // An echo confirms the drawing, or ends the move, that is pending under its id. Fragment 0 puts a
  // mark into the paint order, once and for good; so does a pending drawing's own object. Fragments
  // may come in any order. The page owns what it adopts until it is destroyed. Returns whether it
  // adopted the object itself; if not, the object's owner does not change.
  bool AddAnnotation(Annotation* annotation, bool fromRemote) PARCHLET_EXCLUDES(mutex);

  // Reverts the pending change of that id: an unconfirmed drawing is deleted, a moved mark goes
  // back to where it was and is visible. Nothing for any other id.
  void CancelAnnotation(const std::string& annotationId) PARCHLET_EXCLUDES(mutex);
  // The confirmed mark, erased or not, or null.
  Annotation* GetAnnotation(const std::string& userId, const std::string& annotationId) const
      PARCHLET_EXCLUDES(mutex);
  Annotation* FindAnnotation(const std::string& userId, const std::string& annotationId) const
      PARCHLET_EXCLUDES(mutex);
  // The pending mark, the backup copy of a moved one included, or null. An echo or CancelAnnotation
  // deletes it.
  Annotation* GetLocalAnnotation(const std::string& annotationId) const PARCHLET_EXCLUDES(mutex);
  // Whether the author has confirmed marks here.
  bool IsUserExist(const std::string& userId) const PARCHLET_EXCLUDES(mutex);
  // Replaces `*out` with the author's marks, by id. Returns false and changes nothing for null or
  // an unknown author.
  bool GetUserAnnotations(const std::string& userId, std::map<std::string, Annotation*>* out) const
      PARCHLET_EXCLUDES(mutex);
  // Replaces `*out` with everybody's marks, by author and id. Returns false for null.
  bool GetAllAnnotations(std::map<std::string, std::map<std::string, Annotation*>>* out) const
      PARCHLET_EXCLUDES(mutex);
  // Erases the author's confirmed marks, or, with a `userSubId`, those with that second identity;
  // for an empty `userId` everybody's. Returns false for an unknown author.
  bool ClearAnnotations(const std::string& userId, const std::string& userSubId)
      PARCHLET_EXCLUDES(mutex);

  // --- Drawing (AnnotationPage.cpp) ---
  //
  // Host thread; without a lock, so that a pointer event waits for nothing.

  // The mark being drawn here, or null.
  Annotation* GetCurrentAnnotation() const { return currentAnnotation; }
  void SetCurrentAnnotation(Annotation* annotation) { currentAnnotation = annotation; }
  // Whether the point lies on the page, its right and bottom edge (width, height) included.
  bool IsPointInPage(POINT point) const;
  // The annotation point of a pixel of the surface.
  AnnotationPoint ToPagePoint(POINT pixel) const;

  // --- Erasing (PageErasing.cpp) ---
  //
  // Searches look at the confirmed marks that are not erased; for the two ids see AuthorFilter.

  // Returns the topmost mark that the point hits, or with `useFrame` whose selection frame holds
  // it; or null.
  Annotation* FindAnnotationAtPoint(const std::string& userId, const std::string& userSubId,
                                    const AnnotationPoint& point, bool useFrame)
      PARCHLET_EXCLUDES(mutex);
  // Returns the marks that the segment touches, topmost first.
  std::vector<Annotation*> FindAnnotationsOnSegment(const std::string& userId,
                                                    const std::string& userSubId,
                                                    const AnnotationPoint& from,
                                                    const AnnotationPoint& to)
      PARCHLET_EXCLUDES(mutex);
  // Returns the id of the topmost mark under the eraser, or an empty string. Does not erase. Clears
  // the selection, unless the point is off the page.
  std::string EraseAnnotations(const std::string& userId, const std::string& userSubId, POINT point)
      PARCHLET_EXCLUDES(mutex);
  // The same for an eraser that moves: the ids, topmost first. At least one end must lie on the
  // page.
  std::vector<std::string> EraseAnnotations(const std::string& userId, const std::string& userSubId,
                                            POINT from, POINT to) PARCHLET_EXCLUDES(mutex);
  // Erases a confirmed mark. Returns false for an unknown one and one that is erased already.
  bool EraseAnnotation(const std::string& userId, const std::string& annotationId)
      PARCHLET_EXCLUDES(mutex);
  // Returns the ids of the selection, ascending, and clears it. Does not erase.
  std::vector<std::string> EraseSelectedAnnotations() PARCHLET_EXCLUDES(mutex);

  // --- Selection (PageSelecting.cpp) ---

  // Starts a gesture. A press on a selected mark will move the selection; any other selects the
  // topmost mark whose frame is hit, if any, and starts a rubber band.
  void StartSelecting(const std::string& userId, const std::string& userSubId, POINT point)
      PARCHLET_EXCLUDES(mutex);
  // Moves the selection and returns true; each mark without a pending change leaves a backup copy
  // for CancelAnnotation. Or stretches the rubber band, selects the marks within it and returns
  // false. Without a gesture only returns false.
  bool MoveSelecting(POINT point) PARCHLET_EXCLUDES(mutex);
  // Ends the gesture; returns whether it was a move. The selection stays.
  bool EndSelecting() PARCHLET_EXCLUDES(mutex);
  // Adds the author's marks, or everybody's for an empty `userId`, that lie within the rectangle
  // and are not erased. Of two authors' marks with one id the later author's is kept.
  void SelectAnnotations(const std::string& userId, const RECT& rect) PARCHLET_EXCLUDES(mutex);
  // A copy of the selection, by id.
  std::map<std::string, Annotation*> GetSelectedAnnotations() const PARCHLET_EXCLUDES(mutex);

  // --- Nickname tips (AnnotationPage.cpp) ---

  // Shares the style; from then on tips are painted. Returns false for null.
  bool SetNicknameTip(std::shared_ptr<const NicknameTipStyle> style) PARCHLET_EXCLUDES(mutex);

  // --- Pictures (PagePictures.cpp) ---

  // Places a picture: sets the annotation's two points and loads its image. An ordinary picture's
  // box has the picture's size and starts at the page's origin; an extent that does not fit becomes
  // half the page's. A background gets the largest box of its aspect in the page's middle and
  // replaces the background before; the page owns it from then on. Returns false, and leaves the
  // annotation as it was, without a surface, for an empty argument, or if the picture cannot be
  // read. Bytes that are no picture are accepted for an ordinary one, which then shows nothing.
  bool AddPictureFromFile(const std::wstring& filePath, const std::string& pictureProperty,
                          Annotation* annotation, bool isBackground) PARCHLET_EXCLUDES(mutex);
  bool AddPictureFromStream(const std::string& pictureData, const std::string& pictureProperty,
                            Annotation* annotation, bool isBackground) PARCHLET_EXCLUDES(mutex);
  // Writes the largest box of the picture's aspect that fits the page, centred. Returns false for a
  // size of 0.
  bool FitPicture(unsigned int imageWidth, unsigned int imageHeight, PictureBox* box) const;

  // --- Export (PageExport.cpp) ---

  // Writes an image file: JPEG for ".jpg", BMP for ".bmp", otherwise PNG. The image is all that the
  // display shows, or what the screen shows where the window is. For an empty name, null or a dead
  // handle it is the page's own surface as it was painted last. Returns false if there is nothing
  // to write or it cannot be written; an existing file is then kept.
  bool SavePage(const std::wstring& path, const std::wstring& displayDevice)
      PARCHLET_EXCLUDES(mutex);
  bool SavePage(const std::wstring& path, HWND capturedWindow) PARCHLET_EXCLUDES(mutex);

 private:
  friend struct PageTestAccess;

  bool PlacePicture(Gdiplus::Image& probe, Annotation& annotation, bool isBackground) const;
  template <class Load>
  bool GivePicture(Gdiplus::Image& probe, Annotation& annotation, bool isBackground,
                   const Load& load) PARCHLET_EXCLUDES(mutex);
  void ReplaceBackgroundPicture(Annotation* annotation) PARCHLET_EXCLUDES(mutex);
  bool SaveSurface(const std::wstring& path, const CLSID& encoder) const PARCHLET_REQUIRES(mutex);
  // The surface for whoever holds the page lock. It changes under both locks only, so either one is
  // enough to read it; an export need not wait for a push under way.
  const PageSurface& ReadableSurface() const PARCHLET_REQUIRES(mutex) PARCHLET_UNCHECKED {
    return surface;
  }

  // Paints the whole page into its surface, layer by layer, if it has one. Marks drawn
  // here that have outlived their time are erased.
  void DrawPage() PARCHLET_REQUIRES(surfaceMutex) PARCHLET_EXCLUDES(mutex);
  void DrawConfirmed(Gdiplus::Graphics& graphics) PARCHLET_REQUIRES(mutex);
  void DrawTipOf(Annotation& annotation, Gdiplus::Graphics& graphics) PARCHLET_REQUIRES(mutex);
  void DrawPending(Gdiplus::Graphics& graphics) PARCHLET_REQUIRES(mutex);

  Mutex surfaceMutex;
  mutable Mutex mutex PARCHLET_ACQUIRED_AFTER(surfaceMutex);

  // The host thread's own: geometry and readiness are written under both locks.
  AnnotationPageInfo initialInfo = {0, 0, 1, 1, true, {0, 0, 0, 0}, 0xFFFFFFFF};
  AnnotationPageInfo currentInfo = initialInfo;
  bool surfaceReady = false;
  Annotation* currentAnnotation = nullptr;  // not owned

  std::uint32_t clearColor PARCHLET_GUARDED_BY(mutex) = 0xFFFFFFFF;
  MarkStore store PARCHLET_GUARDED_BY(mutex);
  Selection selection PARCHLET_GUARDED_BY(mutex);
  TipSchedule tips PARCHLET_GUARDED_BY(mutex);
  std::shared_ptr<const NicknameTipStyle> tipStyle PARCHLET_GUARDED_BY(mutex);  // null: no tips
  std::unique_ptr<Annotation> backgroundPicture PARCHLET_GUARDED_BY(mutex);

  PageSurface surface PARCHLET_GUARDED_BY(surfaceMutex);
};
