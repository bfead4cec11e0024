// Parchlet.h - the engine object: an annotation engine for shared whiteboards and documents.
//
//     Parchlet engine;
//     engine.SetUserInfo("u-17", "desk", "Ada");
//     engine.Init();                                          // repaints 25 times a second
//     engine.NewDoc("u-17", "doc");
//     engine.NewPage("doc", "page-1", "u-17", window, info);  // the current page from here on
//     engine.StartDrawing("doc", "page-1", {10, 10});
//     engine.MoveDrawing({40, 25});
//     engine.EndDrawing();
//     engine.Destroy();
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>
#include <parchlet/AnnotationTypes.h>
#include <parchlet/Mutex.h>
#include <parchlet/Platform.h>

class AnnotationDoc;
class AnnotationPage;
class PeriodicTimer;
struct NicknameTipStyle;

// The one object that a host creates.
//
// Results: 1 for success and 0 for failure unless said otherwise. Failed look-ups of documents and
// pages leave a record at the logger named "SDK" (ILogger.h). Nothing is thrown, with two
// exceptions: Init, when the system refuses a thread, and std::system_error when a mutex cannot be
// locked.
//
// Text is UTF-8. Identifiers are compared byte by byte; the empty one is an identifier like any
// other. Points are pixels of the page's surface.
//
// Ownership: the engine owns its documents, a document its pages, a page its annotations. Pointers
// handed out stay owned by the page.
//
// Threads: one host thread makes every call. Between Init and Destroy the engine's own refresh
// thread paints the current page and pushes it to the page's window.
class PARCHLET_API Parchlet {
 public:
  Parchlet();
  // Stops the refresh thread and deletes every document, page and annotation.
  ~Parchlet();
  Parchlet(const Parchlet&) = delete;
  Parchlet& operator=(const Parchlet&) = delete;

  // --- Lifecycle and settings ---

  // Starts repainting every 40 ms. 0 when it runs already or memory runs out. Throws
  // std::system_error when the system refuses the thread; the engine is then as it was before.
  int Init();
  // Stops repainting, waiting for a frame under way, and deletes every document. Pen, type,
  // identity and background colour are kept. Does nothing when the engine does not run.
  void Destroy();

  // Sets the pen of marks drawn from now on: ARGB colour, width in pixels, brought into 1..30.
  void SetPen(unsigned long color, unsigned int width);
  // Sets the kind of marks drawn from now on. A type outside 1..4 or a sub-type outside 0..23 is
  // ignored, each by itself.
  void SetAnnotationType(AnnotationType type, AnnotationSubType subType);
  // Sets the local user's identity; an empty `userId` keeps the previous one.
  void SetUserInfo(const std::string& userId, const std::string& userSubId,
                   const std::string& nickname);
  // Sets the background (ARGB) of the current page, unless that is transparent, and of pages
  // created from now on. 0 when there is no current page.
  int SetPageBackgroundColor(unsigned int color);
  // Accepted, without effect; gives 1.
  int SetZoom(const std::string& docId, float zoom, int x, int y);
  // Accepted, without effect; gives 1. UpdatePage resizes a page.
  int SetPageSize(const std::string& docId, const std::string& pageId, int width, int height);

  // --- Documents ---

  // Creates a document and makes it the current one. 1 also when it exists already; nothing changes
  // then.
  int NewDoc(const std::string& creator, const std::string& docId);
  // Deletes a document with its pages; when it was the current one there is none until NewDoc.
  int DelDoc(const std::string& docId);
  // How many documents there are.
  int GetDocCount();
  // Writes the creator given to NewDoc.
  int GetDocCreator(const std::string& docId, std::string& creator);
  // 1 when the document exists.
  int IsDocExist(const std::string& docId);
  // Accepted, without effect; gives 1.
  int IsDocOpened(const std::string& docId, std::string& out);

  // --- Pages ---

  // Creates a page that paints into `window` and makes it its document's current page. 1 also when
  // it exists already; nothing changes then. 0 for a null window, a size below 1, an unknown
  // document, or when the page's surface cannot be had. `info.backgroundColor` is not used: see
  // SetPageBackgroundColor.
  int NewPage(const std::string& docId, const std::string& pageId, const std::string& creator,
              HWND window, AnnotationPageInfo info);
  // Deletes a page; the pages after it move up by one. When it was its document's current page,
  // page 1 becomes current.
  int DelPage(const std::string& docId, const std::string& pageId);
  // Accepted, without effect; gives 1.
  int DuplicatePage(const std::string& docId, const std::string& pageId, std::string& newPageId);
  // How many pages the document has; 0 for an unknown one.
  int GetPageCount(const std::string& docId);
  // The page's position in its document, from 1; -1 for an unknown page.
  int GetPageIndex(const std::string& docId, const std::string& pageId);
  // Copies the bytes of the page's creator, without a closing zero. 0 for an unknown page, a null
  // or empty buffer, an empty creator, or one longer than `size` (the buffer is then zeroed).
  int GetPageCreator(const std::string& docId, const std::string& pageId, char* buffer, int size);
  // Writes the page's geometry: as it was created (`initial`) or as it is.
  int GetPageSize(const std::string& docId, const std::string& pageId, AnnotationPageInfo& info,
                  bool initial);
  // Takes over `userValue1`, `userValue2` and `viewRect`, and resizes the surface to `width` x
  // `height` when `resize` says so. 0 for a resize to a size below 1 or to the present size, or
  // when the page is left without a surface; the other values are taken over whatever the result.
  int UpdatePage(const std::string& docId, const std::string& pageId, AnnotationPageInfo info,
                 bool resize);
  // The page, or null. Owned by its document; an opaque pointer to a host.
  AnnotationPage* GetPagePtr(const std::string& docId, const std::string& pageId);

  // --- Current page and navigation ---

  // Makes the page the current one of its document; which document is current does not change.
  int SetCurrentPage(const std::string& docId, const std::string& pageId);
  // Writes the ids of the current document and page; what there is none of is left unchanged.
  void GetCurrentPageInfo(std::string& docId, std::string& pageId);
  // These move within the current document, whatever `docId` says, and give the id of the page that
  // they made current, or the empty string when there is no such page and nothing changed.
  std::string GotoFirstPage(const std::string& docId);
  std::string GotoLastPage(const std::string& docId);
  std::string GotoNextPage(const std::string& docId);
  std::string GotoPreviousPage(const std::string& docId);
  // `index` counts from 1 and is brought into the document's range.
  std::string GotoPage(const std::string& docId, int index);
  // 1 when the page is in the current document.
  int GotoPage(const std::string& docId, const std::string& pageId);

  // --- Drawing ---

  // Starts a mark at a point on the page, edges included, with the pen, type and identity set
  // before. 0 unless the engine's type is AnnotationTypeDrawing. The mark in progress before stays
  // as it is.
  int StartDrawing(const std::string& docId, const std::string& pageId, POINT point);
  // Adds a point to the current page's mark in progress; it may lie off the page. 0 when there is
  // none.
  int MoveDrawing(POINT point);
  // Ends the current page's mark in progress; it stays on the page until its echo or
  // CancelAnnotation.
  int EndDrawing();
  // The id of the current page's mark in progress, or the empty string. Writes the ids as
  // GetCurrentPageInfo does.
  std::string GetCurrentAnnotationInfo(std::string& docId, std::string& pageId);
  // 1 when all points of the mark's sub-model 0 fall on one pixel: a press without a movement. 0
  // for null and for a mark without that sub-model.
  int IsPointAnnotation(Annotation* annotation);

  // --- Selecting and moving ---
  //
  // An empty `userId` stands for all authors; else the author must be that one, and, unless
  // `userSubId` is empty, that second identity. Only confirmed marks that are not erased are found.

  // Starts a gesture at a point on the page. A press on a selected mark will move the selection;
  // any other selects the topmost mark whose frame it hits, if any, and starts a rubber band.
  int StartSelecting(const std::string& docId, const std::string& pageId, const std::string& userId,
                     const std::string& userSubId, POINT point);
  // Continues the current page's gesture: 1 when it moved the selection, 0 when it selected the
  // marks of `userId` within the rubber band, or without a gesture.
  int MoveSelecting(POINT point);
  // Ends the current page's gesture; 1 when it was a move. The selection stays, and
  // CancelAnnotation can take each mark back to where it was until its echo arrives.
  int EndSelecting();
  // The selection by annotation id; the page owns the annotations. Empty for an unknown page.
  std::map<std::string, Annotation*> GetSelectedAnnotations(const std::string& docId,
                                                            const std::string& pageId);

  // --- Erasing: first ask what a gesture would erase, then erase each by author and id ---

  // The ids of the marks under the eraser; the selection is dropped. For one point a list of one:
  // the topmost mark's id, or the empty string. For more, the marks that the way from the first
  // point to the second touches, topmost first; later points are ignored. An empty list before the
  // first NewPage, for an empty path or an unknown page.
  std::vector<std::string> EraseAnnotations(const std::string& docId, const std::string& pageId,
                                            const std::string& userId, const std::string& userSubId,
                                            const std::vector<POINT>& path);
  // Erases a confirmed mark; 0 when there is none or it is erased already. Annotation::Erase(0)
  // restores it.
  int EraseAnnotation(const std::string& docId, const std::string& pageId,
                      const std::string& userId, const std::string& annotationId);
  // The same, for a peer's decision.
  int EraseAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                                const std::string& userId, const std::string& annotationId);
  // The ids of the selection, ascending; the selection is dropped. No mark is erased.
  std::vector<std::string> EraseSelectedAnnotations(const std::string& docId,
                                                    const std::string& pageId);

  // --- Other participants' marks, looking up, clearing ---

  // Hands over a mark that arrived, the local user's own included (those get the local nickname).
  // When its id is new to its author's marks on the page, the page takes the object over, for the
  // rest of the object's life. Else it is a fragment or an echo: its points become the known mark's
  // sub-model `subModelIndex`, and the object stays the caller's. The echo of a drawing confirms
  // it: the object drawn here is painted at the echo's `order` from then on. GetLocalAnnotation and
  // GetAnnotation tell beforehand whether the id is known. 0 for null or an unknown page.
  int AddAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                              Annotation* annotation);
  // Takes back a pending change: deletes an unconfirmed drawing, returns a moved mark to its place.
  void CancelAnnotation(const std::string& docId, const std::string& pageId,
                        const std::string& annotationId);
  // 1 when the page has a confirmed mark, erased or not, of that author and id.
  int FindAnnotation(const std::string& docId, const std::string& pageId, const std::string& userId,
                     const std::string& annotationId);
  // That mark, or null. The page owns it; it stays valid until the page is deleted.
  Annotation* GetAnnotation(const std::string& docId, const std::string& pageId,
                            const std::string& userId, const std::string& annotationId);
  // The pending mark of that id, or null: a drawing not confirmed yet, or the hidden copy of a
  // moved mark. The page owns it; CancelAnnotation deletes it, and so does the echo of a move.
  Annotation* GetLocalAnnotation(const std::string& docId, const std::string& pageId,
                                 const std::string& annotationId);
  // Erases the author's confirmed marks on the page, or, with a `userSubId`, those with that second
  // identity; for an empty `userId` everybody's. 0 before the first NewPage, for an unknown page or
  // an author without marks.
  int ClearAnnotations(const std::string& docId, const std::string& pageId,
                       const std::string& userId, const std::string& userSubId);

  // --- Pictures ---

  // Places a picture (PNG, JPEG, BMP or GIF, told by its content) from a file at the page's top
  // left corner: in its own size, or half the page's width or height where it does not fit. It is a
  // pending mark of the local user, like a drawing. As background it is fitted into the page's
  // middle, under all marks, in place of the background before. `pictureProperty` is kept with it.
  // Gives the annotation, owned by the page. Null for an unknown page or a picture that cannot be
  // read: the background before then stays, an ordinary picture leaves an empty pending mark.
  Annotation* AddPictureFromFile(const std::string& docId, const std::string& pageId,
                                 const std::string& filePath, const std::string& pictureProperty,
                                 bool isBackground);
  // The same from the bytes of an image file. An ordinary picture of bytes that cannot be decoded
  // is placed, and shows nothing.
  Annotation* AddPictureFromStream(const std::string& docId, const std::string& pageId,
                                   const std::string& pictureData,
                                   const std::string& pictureProperty, bool isBackground);

  // --- Nickname tips ---

  // Makes every page, and every page to come, show authors' names beside fresh confirmed marks: for
  // two seconds, an author at most once in five. Colours are ARGB; a size of 0 stands for 18
  // pixels, an empty font name for the default Chinese family.
  int SetNicknameTip(unsigned int textColor, unsigned int fontSize, const std::string& fontName,
                     unsigned int boxColor);

  // --- Export ---

  // Writes the page to an image file: JPEG for ".jpg", BMP for ".bmp", PNG for any other name. The
  // path must name a folder that is there: "./page.png", not "page.png". What is written is
  //
  // - for an empty display name, or a window that is null or gone, the page's surface as it was
  //   rendered last;
  // - for the name of a display, all of what that shows. Off Windows it is a DisplayMonitor's
  //   (Display.h), as Utils::Utf8ToUnicode gives it; on Windows one of EnumDisplayDevices;
  // - for a window, what the screen shows where it is.
  //
  // 0 when it cannot be written, or for an unknown page or display; a file that was there is then
  // kept.
  int SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
               const std::wstring& displayDevice);
  int SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
               HWND window);
  // Writes every page, in the order of their ids, as PNG into the folder, which must be there,
  // under names made of the local time: [prefix_]YYYYMMDD_hhmmss.mmm.png. Gives the last page's
  // result.
  int SaveDocument(const std::string& docId, const std::string& folder, const std::string& prefix,
                   const std::wstring& displayDevice);
  int SaveDocument(const std::string& docId, const std::string& folder, const std::string& prefix,
                   HWND window);
  // Accepted, without effect; gives 1.
  int SaveAs(const std::string& docId, const std::string& path);

 private:
  friend struct ParchletTestAccess;

  template <class AddToPage>
  Annotation* AddPicture(const std::string& docId, const std::string& pageId, bool isBackground,
                         const AddToPage& addToPage);
  template <class Source>
  int SaveDocumentFrom(const std::string& docId, const std::string& folder,
                       const std::string& prefix, const Source& source);
  template <class Source>
  int SavePageFrom(const std::string& docId, const std::string& pageId, const std::string& path,
                   const Source& source);

  int UpdateLayeredContent() PARCHLET_EXCLUDES(handOverMutex);
  void TearDown() PARCHLET_EXCLUDES(handOverMutex);
  void ClearDocs();
  int CreatePage(const std::string& docId, const std::string& pageId, const std::string& creator,
                 HWND window, AnnotationPageInfo info);
  AnnotationDoc* GetDocById(const std::string& docId);
  AnnotationPage* GetPageById(const std::string& docId, const std::string& pageId);
  AnnotationPage* GetCurrentPage();
  Annotation* GetCurrentAnnotation();
  Annotation* GetDrawingInProgress();
  std::string MakeCurrent(AnnotationPage* page) PARCHLET_EXCLUDES(handOverMutex);
  // Hands the page that is current now to the refresh thread, waiting for a frame under way.
  void PublishCurrentPage() PARCHLET_EXCLUDES(handOverMutex);
  // Takes the current page away from the refresh thread, waiting for a frame under way.
  void WithdrawCurrentPage() PARCHLET_EXCLUDES(handOverMutex);

  int initialised = 0;
  std::map<std::string, AnnotationDoc*> documents;  // owned
  std::string userId;
  std::string nickname;
  std::string userSubId;
  HWND activeWindow = nullptr;  // of the latest NewPage that got as far as the page's surface
  AnnotationDoc* currentDocument = nullptr;  // not owned: the one most recently created
  AnnotationPen pen = {0xFF000000, 6, 0};
  AnnotationType annotationType = AnnotationTypeDrawing;
  AnnotationSubType annotationSubType = AnnotationSubTypePath;
  std::shared_ptr<const NicknameTipStyle> tipStyle;
  std::unique_ptr<PeriodicTimer> refreshTimer;
  std::uint32_t pageBackgroundColor = 0xFFFFFFFF;

  // The hand-over to the refresh thread, which holds the lock for its whole tick: every field above
  // is the host thread's alone, and this one pointer is all that the refresh thread sees.
  Mutex handOverMutex;
  AnnotationPage* refreshPage PARCHLET_GUARDED_BY(handOverMutex) = nullptr;
};
