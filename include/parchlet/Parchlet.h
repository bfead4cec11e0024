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
#include <parchlet/Platform.h>

class AnnotationPage;

// The one object that a host creates.
//
// Results: unless said otherwise an operation returns 1 on success and 0 on failure, and changes
// nothing when it fails. A document or page that is not found also leaves a record with the logger
// named "SDK" (ILogger.h). Running out of memory is a failure like any other. Two things are
// thrown, both std::system_error: by Init if the system refuses a thread, and by any operation if a
// mutex cannot be locked.
//
// Units: points are pixels of the page's surface; the origin is its top left corner. Text is UTF-8.
// Identifiers are compared byte by byte; the empty string is an identifier like any other.
//
// Owner: the engine owns its documents, a document its pages, a page its annotations. A pointer
// that an operation returns stays owned by the page.
//
// Threads: one host thread makes every call. From Init to Destroy the engine's own refresh thread
// paints the current page and pushes it to the page's window.
class PARCHLET_API Parchlet {
 public:
  Parchlet();
  // Stops the refresh thread and deletes every document, page and annotation.
  ~Parchlet();
  Parchlet(const Parchlet&) = delete;
  Parchlet& operator=(const Parchlet&) = delete;

  // --- Lifecycle and settings ---

  // Starts repainting every 40 ms. Returns 0 if the engine already runs or memory runs out. Throws
  // std::system_error if the system refuses the thread; nothing has changed then.
  int Init();
  // Stops repainting, waits for a frame under way, joins the refresh thread and deletes every
  // document. Keeps pen, type, identity and background colour. Does nothing if the engine does not
  // run.
  void Destroy();

  // Sets the pen of marks drawn from now on: an ARGB colour and a width in pixels, clamped to
  // 1..30.
  void SetPen(unsigned long color, unsigned int width);
  // Sets the kind of marks drawn from now on. Ignores a type outside 1..4, and separately a
  // sub-type outside 0..23.
  void SetAnnotationType(AnnotationType type, AnnotationSubType subType);
  // Sets the local user's identity. An empty `userId` keeps the previous one; the other two are
  // always replaced.
  void SetUserInfo(const std::string& userId, const std::string& userSubId,
                   const std::string& nickname);
  // Sets the ARGB background of the current page, unless that page is transparent, and of pages
  // created from now on. Returns 0 if there is no current page; later pages get the colour anyway.
  int SetPageBackgroundColor(unsigned int color);
  // Does nothing. Returns 1.
  int SetZoom(const std::string& docId, float zoom, int x, int y);
  // Does nothing. Returns 1. UpdatePage resizes a page.
  int SetPageSize(const std::string& docId, const std::string& pageId, int width, int height);

  // --- Documents ---

  // Creates a document and makes it the current one. If it exists already, returns 1 and changes
  // nothing.
  int NewDoc(const std::string& creator, const std::string& docId);
  // Deletes a document with its pages. If it was the current one, there is no current document
  // until the next NewDoc that creates one. Returns 0 for an unknown document.
  int DelDoc(const std::string& docId);
  // Returns the number of documents.
  int GetDocCount();
  // Writes the creator given to NewDoc. Returns 0 for an unknown document.
  int GetDocCreator(const std::string& docId, std::string& creator);
  // Returns 1 if the document exists, else 0.
  int IsDocExist(const std::string& docId);
  // Does nothing; `out` is left unchanged. Returns 1.
  int IsDocOpened(const std::string& docId, std::string& out);

  // --- Pages ---

  // Creates a page that is painted into `window`, and makes it its document's current page. If it
  // exists already, returns 1 and changes nothing. Returns 0 for a null window, a size below 1, an
  // unknown document, or if the page's surface cannot be created. Ignores `info.backgroundColor`:
  // see SetPageBackgroundColor. The host owns the window; it may end before the page.
  int NewPage(const std::string& docId, const std::string& pageId, const std::string& creator,
              HWND window, AnnotationPageInfo info);
  // Deletes a page with its annotations; the pages after it move up by one. If it was its
  // document's current page, page 1 becomes current. Returns 0 for an unknown page.
  int DelPage(const std::string& docId, const std::string& pageId);
  // Does nothing; `newPageId` is left unchanged. Returns 1.
  int DuplicatePage(const std::string& docId, const std::string& pageId, std::string& newPageId);
  // Returns the number of the document's pages, 0 for an unknown document.
  int GetPageCount(const std::string& docId);
  // Returns the page's position in its document, counted from 1, or -1 for an unknown page.
  int GetPageIndex(const std::string& docId, const std::string& pageId);
  // Copies the bytes of the page's creator into `buffer` of `size` bytes, without a closing zero.
  // Returns 0 for an unknown page, a null or empty buffer, an empty creator, or a creator longer
  // than `size`; in the last case the buffer is filled with zeros.
  int GetPageCreator(const std::string& docId, const std::string& pageId, char* buffer, int size);
  // Writes the page's geometry: as it was created if `initial` is set, else as it is now. Returns 0
  // for an unknown page.
  int GetPageSize(const std::string& docId, const std::string& pageId, AnnotationPageInfo& info,
                  bool initial);
  // Sets `userValue1`, `userValue2` and `viewRect`; if `resize` is set, also resizes the surface to
  // `width` x `height`. Returns 0 for an unknown page, for a resize to a size below 1 or to the
  // present size, and if the page is left without a surface; the three values are set even then. If
  // the new surface cannot be created, the old one stays in use.
  int UpdatePage(const std::string& docId, const std::string& pageId, AnnotationPageInfo info,
                 bool resize);
  // Returns the page, or null. Its document owns it; to a host the pointer is opaque.
  AnnotationPage* GetPagePtr(const std::string& docId, const std::string& pageId);

  // --- Current page and navigation ---

  // Makes the page the current one of its document. Does not change which document is current.
  // Returns 0 for an unknown page.
  int SetCurrentPage(const std::string& docId, const std::string& pageId);
  // Writes the ids of the current document and its current page. Leaves an id unchanged if there is
  // none.
  void GetCurrentPageInfo(std::string& docId, std::string& pageId);
  // The Goto operations move within the current document, whatever `docId` says. Those that return
  // a string return the id of the page that is current now, or an empty string if there is no such
  // page; then nothing changes.
  std::string GotoFirstPage(const std::string& docId);
  std::string GotoLastPage(const std::string& docId);
  std::string GotoNextPage(const std::string& docId);
  std::string GotoPreviousPage(const std::string& docId);
  // `index` counts from 1 and is clamped to the document's pages.
  std::string GotoPage(const std::string& docId, int index);
  // Returns 1 if the page is in the current document, else 0.
  int GotoPage(const std::string& docId, const std::string& pageId);

  // --- Drawing ---

  // Starts a mark at `point`, with the pen, kind and identity set before. Returns 0 for an unknown
  // page, a point off the page (its edges belong to it), or if the type set before is not
  // AnnotationTypeDrawing. A mark in progress stays on the page as it is.
  int StartDrawing(const std::string& docId, const std::string& pageId, POINT point);
  // Adds a point to the current page's mark in progress; it may lie off the page. Returns 0 if
  // there is no such mark.
  int MoveDrawing(POINT point);
  // Ends the current page's mark in progress. The mark stays pending until its echo arrives or
  // CancelAnnotation deletes it. Returns 0 if there is no such mark.
  int EndDrawing();
  // Returns the id of the current page's mark in progress, or an empty string. Writes the ids as
  // GetCurrentPageInfo does.
  std::string GetCurrentAnnotationInfo(std::string& docId, std::string& pageId);
  // Returns 1 if all points of the mark's sub-model 0 fall on one pixel: a press without a
  // movement. Returns 0 for null and for a mark without sub-model 0.
  int IsPointAnnotation(Annotation* annotation);

  // --- Selecting and moving ---
  //
  // Only confirmed marks that are not erased can be selected. An empty `userId` means all authors,
  // whatever `userSubId` says. Otherwise the author must match, and `userSubId` too unless it is
  // empty.

  // Starts a gesture at `point`. A press on a selected mark starts a move of the selection. Any
  // other press selects the topmost mark whose frame it hits, if any, and starts a rubber band.
  // Returns 0 for an unknown page.
  int StartSelecting(const std::string& docId, const std::string& pageId, const std::string& userId,
                     const std::string& userSubId, POINT point);
  // Continues the current page's gesture. Returns 1 if it moved the selection. Returns 0 if it
  // selected the marks within the rubber band, whose authors are filtered by `userId` alone, and
  // without a gesture.
  int MoveSelecting(POINT point);
  // Ends the current page's gesture. Returns 1 if it was a move, else 0. The selection stays. Until
  // a moved mark's echo arrives, CancelAnnotation returns it to where it was.
  int EndSelecting();
  // Returns the selection by annotation id, empty for an unknown page. The page owns the
  // annotations.
  std::map<std::string, Annotation*> GetSelectedAnnotations(const std::string& docId,
                                                            const std::string& pageId);

  // --- Erasing: first ask what a gesture would erase, then erase each by author and id ---

  // Returns the ids of the marks under the eraser and clears the selection. Erases nothing. The two
  // ids filter as for selecting. A path of one point returns a list of one: the topmost mark's id,
  // or an empty string. A longer path returns the marks that the segment from its first point to
  // its second touches, topmost first; later points are ignored. Returns an empty list before the
  // first NewPage, for an empty path and for an unknown page. If the whole path is off the page,
  // no mark is found and the selection stays.
  std::vector<std::string> EraseAnnotations(const std::string& docId, const std::string& pageId,
                                            const std::string& userId, const std::string& userSubId,
                                            const std::vector<POINT>& path);
  // Erases a confirmed mark. Returns 0 for an unknown page or mark, and for one that is erased
  // already. Annotation::Erase(0) restores it.
  int EraseAnnotation(const std::string& docId, const std::string& pageId,
                      const std::string& userId, const std::string& annotationId);
  // Does what EraseAnnotation does; for erasures that arrive from other participants.
  int EraseAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                                const std::string& userId, const std::string& annotationId);
  // Returns the ids of the selection in ascending order and clears the selection. Erases nothing.
  std::vector<std::string> EraseSelectedAnnotations(const std::string& docId,
                                                    const std::string& pageId);

  // --- Other participants' marks, looking up, clearing ---

  // Merges a mark that arrived, the local user's own included; those get the local nickname. If its
  // id is new to its author's marks on the page, the page keeps the object until the page is
  // deleted. Otherwise it is a fragment or an echo: its points become the known mark's sub-model
  // `subModelIndex`, and the object is deleted. An echo confirms the pending drawing of its id,
  // which is painted at the echo's `order` from then on. Returns 0 for null, for an unknown page,
  // or if memory runs out; nothing has changed then, and the object is deleted.
  int AddAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                              std::unique_ptr<Annotation> annotation);
  // Does the same for an object that has an owner already: a page (the object came from
  // GetAnnotation or the like) or the host. The page takes over a host's object if its id is new to
  // its author's marks; GetLocalAnnotation and GetAnnotation tell beforehand. In every other case
  // the owner stays the same. A mark of another page is copied with everything it has. The page's
  // own object changes no points; a pending drawing that is handed back is confirmed as it is.
  int AddAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                              Annotation* annotation);
  // Reverts the pending change of that id: deletes an unconfirmed drawing, or returns a moved mark
  // to its place. Does nothing for any other id.
  void CancelAnnotation(const std::string& docId, const std::string& pageId,
                        const std::string& annotationId);
  // Returns 1 if the page has a confirmed mark of that author and id, erased or not, else 0.
  int FindAnnotation(const std::string& docId, const std::string& pageId, const std::string& userId,
                     const std::string& annotationId);
  // Returns the confirmed mark of that author and id, erased or not, or null. The page owns it; it
  // stays valid until the page is deleted.
  Annotation* GetAnnotation(const std::string& docId, const std::string& pageId,
                            const std::string& userId, const std::string& annotationId);
  // Returns the pending mark of that id, or null: a drawing that is not confirmed yet, or the
  // backup copy of a moved mark. The page owns it. CancelAnnotation deletes it; the echo of a move
  // deletes the backup copy.
  Annotation* GetLocalAnnotation(const std::string& docId, const std::string& pageId,
                                 const std::string& annotationId);
  // Erases the author's confirmed marks on the page; with a `userSubId`, only those with that
  // second identity; for an empty `userId`, everybody's. Returns 0 before the first NewPage, for an
  // unknown page, and for an author without marks.
  int ClearAnnotations(const std::string& docId, const std::string& pageId,
                       const std::string& userId, const std::string& userSubId);

  // --- Pictures ---

  // Places a picture from a file at the page's top left corner. The content decides the format:
  // PNG, JPEG, BMP or GIF. A width smaller than the page's is kept, any other becomes half the
  // page's; the same for the height. The picture is a pending mark of the local user, like a
  // drawing. A background is fitted into the middle of the page instead, lies under all marks, and
  // replaces the background before. `pictureProperty` is kept with the annotation.
  //
  // Returns the annotation, which the page owns. Returns null for an unknown page or a picture that
  // cannot be read. The previous background stays then; for an ordinary picture an empty pending
  // mark is left.
  Annotation* AddPictureFromFile(const std::string& docId, const std::string& pageId,
                                 const std::string& filePath, const std::string& pictureProperty,
                                 bool isBackground);
  // Does the same with the bytes of an image file. Bytes that cannot be decoded are accepted for an
  // ordinary picture, which then shows nothing.
  Annotation* AddPictureFromStream(const std::string& docId, const std::string& pageId,
                                   const std::string& pictureData,
                                   const std::string& pictureProperty, bool isBackground);

  // --- Nickname tips ---

  // Shows authors' names beside fresh confirmed marks, on all present and future pages: for two
  // seconds, and for each author at most once in five seconds. Colours are ARGB, `fontSize` is in
  // pixels; 0 means 18. An empty font name means the default Chinese family.
  int SetNicknameTip(unsigned int textColor, unsigned int fontSize, const std::string& fontName,
                     unsigned int boxColor);

  // --- Export ---

  // Writes the page to an image file: JPEG for ".jpg", BMP for ".bmp", PNG for any other name. The
  // path must name an existing folder: "./page.png", not "page.png". The image is
  //
  // - for an empty display name, and for a window that is null or gone: the page's surface as it
  //   was painted last;
  // - for a display name: all that the display shows. Off Windows the name is a
  //   DisplayMonitor::name (Display.h), converted by Utils::Utf8ToUnicode; on Windows it is one of
  //   EnumDisplayDevices;
  // - for a window: what the screen shows where the window is.
  //
  // Returns 0 for an unknown page or display, and if the file cannot be written; an existing file
  // is then kept.
  int SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
               const std::wstring& displayDevice);
  int SavePage(const std::string& docId, const std::string& pageId, const std::string& path,
               HWND window);
  // Writes every page of the document, in the order of their ids, as PNG into an existing folder.
  // File names are made of the local time: [prefix_]YYYYMMDD_hhmmss.mmm.png. Tries every page,
  // whatever happens to another. Returns the last page's result, 0 for an unknown document or
  // folder.
  int SaveDocument(const std::string& docId, const std::string& folder, const std::string& prefix,
                   const std::wstring& displayDevice);
  int SaveDocument(const std::string& docId, const std::string& folder, const std::string& prefix,
                   HWND window);
  // Does nothing. Returns 1.
  int SaveAs(const std::string& docId, const std::string& path);

  class PARCHLET_PRIVATE State;  // the library's own

 private:
  std::unique_ptr<State> state;
};
