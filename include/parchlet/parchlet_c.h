/* parchlet_c.h - the engine for hosts in C, and in whatever calls C: no C++ type crosses it.
 *
 * What an operation does is told in Parchlet.h and Annotation.h under the same name; here stands
 * what is different.
 *
 * Results: an operation gives one of the codes below, or a number where that is said, which is
 * never negative unless the operation failed. Nothing is thrown.
 *
 * Text is UTF-8 and ends at its first zero. A null text stands for the empty one. Text given is
 * copied; text that comes back is put in a ParchletTexts of the host's, or in its buffer. A null
 * pointer for something to be written asks not to write it. Any other null pointer gives
 * PARCHLET_BAD_ARGUMENT, or null; what frees something ignores null.
 *
 * Ownership: what a function with New or Copy in its name gives is the host's, to be freed once
 * with the function of the same name that ends in Free. What any other function gives is borrowed.
 *
 * On Windows the host starts GDI+ (GdiplusStartup) before it makes a page.
 *
 * Threads: an engine and the marks of its pages are for one thread at a time, the host's, as are
 * marks and texts of the host's own. Windows and loggers may be used from any thread.
 */
#ifndef PARCHLET_C_H
#define PARCHLET_C_H

#include <stddef.h>
#include <stdint.h>

#if !defined(_WIN32)
#define PARCHLET_C_API __attribute__((visibility("default")))
#elif defined(PARCHLET_BUILDING)
#define PARCHLET_C_API __declspec(dllexport)
#else
#define PARCHLET_C_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

enum {
  PARCHLET_YES = 1,           /* done, or it is so */
  PARCHLET_NO = 0,            /* refused, or it is not so: nothing happened unless said otherwise */
  PARCHLET_BAD_ARGUMENT = -1, /* a null pointer where there must be something; nothing happened */
  PARCHLET_NO_MEMORY = -2,    /* memory ran out on the way */
  PARCHLET_FAILED = -3        /* the system refused a thread or a lock */
};

/* An engine with its documents, pages and their marks. */
typedef struct ParchletEngine ParchletEngine;
/* A mark: the host's own (ParchletMarkNew, ParchletMarkCopy) or borrowed from a page, which owns
 * it: until the page is deleted for a confirmed one, until ParchletCancelAnnotation, an echo or the
 * page's end for a pending one. A borrowed mark is never freed by the host. */
typedef struct ParchletMark ParchletMark;
/* A list of texts, for results. */
typedef struct ParchletTexts ParchletTexts;

/* One sampled point: see AnnotationPoint. The fractions count; pixels follow with the drawing. */
typedef struct ParchletPoint {
  int32_t x, y; /* pixels */
  double xRatio, yRatio;
} ParchletPoint;

typedef struct ParchletPixel {
  int32_t x, y;
} ParchletPixel;

typedef struct ParchletRect {
  int32_t left, top, right, bottom;
} ParchletRect;

typedef struct ParchletPen {
  uint32_t color; /* 0xAARRGGBB */
  int32_t width;  /* pixels, 1 to 30 */
  int32_t fill;   /* non-zero: a rectangle is filled */
} ParchletPen;

typedef struct ParchletPageInfo {
  int32_t userValue1, userValue2; /* the host's own */
  int32_t width, height;          /* pixels, at least 1 */
  int32_t transparent;            /* 0 or 1 */
  ParchletRect viewRect;
  uint32_t backgroundColor; /* reported only */
} ParchletPageInfo;

enum { PARCHLET_TYPE_DRAWING = 1, PARCHLET_TYPE_PICTURE = 3 };

enum {
  PARCHLET_PATH = 0,
  PARCHLET_LINE = 10,
  PARCHLET_ELLIPSE = 14,
  PARCHLET_RECTANGLE = 15,
  PARCHLET_TRIANGLE = 19,
  PARCHLET_RIGHT_TRIANGLE = 20,
  PARCHLET_JPEG = 21,
  PARCHLET_PNG = 22,
  PARCHLET_BMP = 23,
  PARCHLET_UNKNOWN = -1
};

/* --- The library --- */

/* The version of the library that is running, such as "1.2.3". Never freed. */
PARCHLET_C_API const char* ParchletVersion(void);
/* A new random identifier; NO when the system has no random numbers to give. */
PARCHLET_C_API int32_t ParchletGenerateGuid(ParchletTexts* guid);
/* Milliseconds of the engine's clock, as ParchletMarkSetTempStartTick takes them. */
PARCHLET_C_API uint64_t ParchletTickCount(void);

/* Takes one record: `line` is valid during the call, which comes on the thread of an engine's call
 * and must not unwind. */
typedef void (*ParchletLogWriter)(void* context, int32_t level, const char* line);
/* Sends the records of that name ("SDK": the engine's) to `write` with `context`, which is the
 * host's and must outlive its last use; a null `write` ends that. Not while an engine call is under
 * way. */
PARCHLET_C_API int32_t ParchletSetLogger(const char* name, ParchletLogWriter write, void* context);

/* --- Texts --- */

/* An empty list; null when memory ran out. Every operation that is given it replaces what it held,
 * by nothing when it fails. */
PARCHLET_C_API ParchletTexts* ParchletTextsNew(void);
PARCHLET_C_API void ParchletTextsFree(ParchletTexts* texts);
PARCHLET_C_API size_t ParchletTextsCount(const ParchletTexts* texts);
/* The text at `index`, from 0, valid until the list is written or freed; null past the end. */
PARCHLET_C_API const char* ParchletTextsAt(const ParchletTexts* texts, size_t index);

/* --- Lifecycle and settings --- */

/* Null when memory ran out. */
PARCHLET_C_API ParchletEngine* ParchletEngineNew(void);
/* Stops repainting, and deletes the engine with every page and mark. */
PARCHLET_C_API void ParchletEngineFree(ParchletEngine* engine);

PARCHLET_C_API int32_t ParchletInit(ParchletEngine* engine);
PARCHLET_C_API int32_t ParchletDestroy(ParchletEngine* engine);
PARCHLET_C_API int32_t ParchletSetPen(ParchletEngine* engine, uint32_t color, uint32_t width);
PARCHLET_C_API int32_t ParchletSetAnnotationType(ParchletEngine* engine, int32_t type,
                                                 int32_t subType);
PARCHLET_C_API int32_t ParchletSetUserInfo(ParchletEngine* engine, const char* userId,
                                           const char* userSubId, const char* nickname);
PARCHLET_C_API int32_t ParchletSetPageBackgroundColor(ParchletEngine* engine, uint32_t color);
PARCHLET_C_API int32_t ParchletSetZoom(ParchletEngine* engine, const char* docId, float zoom,
                                       int32_t x, int32_t y);
PARCHLET_C_API int32_t ParchletSetPageSize(ParchletEngine* engine, const char* docId,
                                           const char* pageId, int32_t width, int32_t height);
PARCHLET_C_API int32_t ParchletSetNicknameTip(ParchletEngine* engine, uint32_t textColor,
                                              uint32_t fontSize, const char* fontName,
                                              uint32_t boxColor);

/* --- Documents --- */

PARCHLET_C_API int32_t ParchletNewDoc(ParchletEngine* engine, const char* creator,
                                      const char* docId);
PARCHLET_C_API int32_t ParchletDelDoc(ParchletEngine* engine, const char* docId);
/* A number. */
PARCHLET_C_API int32_t ParchletGetDocCount(ParchletEngine* engine);
PARCHLET_C_API int32_t ParchletGetDocCreator(ParchletEngine* engine, const char* docId,
                                             ParchletTexts* creator);
PARCHLET_C_API int32_t ParchletIsDocExist(ParchletEngine* engine, const char* docId);
/* Leaves `out` empty. */
PARCHLET_C_API int32_t ParchletIsDocOpened(ParchletEngine* engine, const char* docId,
                                           ParchletTexts* out);

/* --- Pages --- */

/* `window` is a window's handle: on Windows an HWND, elsewhere of ParchletWindowHandle or of
 * RegisterLayeredWindow in LayeredWindow.h. */
PARCHLET_C_API int32_t ParchletNewPage(ParchletEngine* engine, const char* docId,
                                       const char* pageId, const char* creator, void* window,
                                       const ParchletPageInfo* info);
PARCHLET_C_API int32_t ParchletDelPage(ParchletEngine* engine, const char* docId,
                                       const char* pageId);
/* Leaves `newPageId` empty. */
PARCHLET_C_API int32_t ParchletDuplicatePage(ParchletEngine* engine, const char* docId,
                                             const char* pageId, ParchletTexts* newPageId);
/* A number. */
PARCHLET_C_API int32_t ParchletGetPageCount(ParchletEngine* engine, const char* docId);
/* A number from 1; 0 for an unknown page. */
PARCHLET_C_API int32_t ParchletGetPageIndex(ParchletEngine* engine, const char* docId,
                                            const char* pageId);
/* Writes the creator with a closing zero; NO, and nothing but zeros, when `size` bytes are too few
 * for both. */
PARCHLET_C_API int32_t ParchletGetPageCreator(ParchletEngine* engine, const char* docId,
                                              const char* pageId, char* buffer, size_t size);
PARCHLET_C_API int32_t ParchletGetPageSize(ParchletEngine* engine, const char* docId,
                                           const char* pageId, ParchletPageInfo* info,
                                           int32_t initial);
PARCHLET_C_API int32_t ParchletUpdatePage(ParchletEngine* engine, const char* docId,
                                          const char* pageId, const ParchletPageInfo* info,
                                          int32_t resize);
/* Whether there is such a page, in place of GetPagePtr. */
PARCHLET_C_API int32_t ParchletIsPageExist(ParchletEngine* engine, const char* docId,
                                           const char* pageId);

/* --- Current page and navigation --- */

PARCHLET_C_API int32_t ParchletSetCurrentPage(ParchletEngine* engine, const char* docId,
                                              const char* pageId);
/* Each list gets one text, the empty one where there is nothing current. */
PARCHLET_C_API int32_t ParchletGetCurrentPageInfo(ParchletEngine* engine, ParchletTexts* docId,
                                                  ParchletTexts* pageId);
/* These put the id of the page that is now current in `pageId`; NO when nothing changed. */
PARCHLET_C_API int32_t ParchletGotoFirstPage(ParchletEngine* engine, const char* docId,
                                             ParchletTexts* pageId);
PARCHLET_C_API int32_t ParchletGotoLastPage(ParchletEngine* engine, const char* docId,
                                            ParchletTexts* pageId);
PARCHLET_C_API int32_t ParchletGotoNextPage(ParchletEngine* engine, const char* docId,
                                            ParchletTexts* pageId);
PARCHLET_C_API int32_t ParchletGotoPreviousPage(ParchletEngine* engine, const char* docId,
                                                ParchletTexts* pageId);
PARCHLET_C_API int32_t ParchletGotoPageAt(ParchletEngine* engine, const char* docId, int32_t index,
                                          ParchletTexts* pageId);
PARCHLET_C_API int32_t ParchletGotoPage(ParchletEngine* engine, const char* docId,
                                        const char* pageId);

/* --- Drawing --- */

PARCHLET_C_API int32_t ParchletStartDrawing(ParchletEngine* engine, const char* docId,
                                            const char* pageId, int32_t x, int32_t y);
PARCHLET_C_API int32_t ParchletMoveDrawing(ParchletEngine* engine, int32_t x, int32_t y);
PARCHLET_C_API int32_t ParchletEndDrawing(ParchletEngine* engine);
/* NO without a mark in progress; the ids of document and page are written as by
 * ParchletGetCurrentPageInfo, whatever the result. */
PARCHLET_C_API int32_t ParchletGetCurrentAnnotationInfo(ParchletEngine* engine,
                                                        ParchletTexts* annotationId,
                                                        ParchletTexts* docId,
                                                        ParchletTexts* pageId);
PARCHLET_C_API int32_t ParchletIsPointAnnotation(ParchletEngine* engine, const ParchletMark* mark);

/* --- Selecting and moving --- */

PARCHLET_C_API int32_t ParchletStartSelecting(ParchletEngine* engine, const char* docId,
                                              const char* pageId, const char* userId,
                                              const char* userSubId, int32_t x, int32_t y);
PARCHLET_C_API int32_t ParchletMoveSelecting(ParchletEngine* engine, int32_t x, int32_t y);
PARCHLET_C_API int32_t ParchletEndSelecting(ParchletEngine* engine);
/* Gives the number of selected marks, and writes up to `capacity` of them, borrowed, by ascending
 * id. */
PARCHLET_C_API int32_t ParchletGetSelectedAnnotations(ParchletEngine* engine, const char* docId,
                                                      const char* pageId, ParchletMark** marks,
                                                      size_t capacity);

/* --- Erasing --- */

/* Gives the number of ids: of the marks under the eraser, none of them empty. */
PARCHLET_C_API int32_t ParchletEraseAnnotations(ParchletEngine* engine, const char* docId,
                                                const char* pageId, const char* userId,
                                                const char* userSubId, const ParchletPixel* path,
                                                size_t count, ParchletTexts* ids);
PARCHLET_C_API int32_t ParchletEraseAnnotation(ParchletEngine* engine, const char* docId,
                                               const char* pageId, const char* userId,
                                               const char* annotationId);
PARCHLET_C_API int32_t ParchletEraseAnnotationFromRemote(ParchletEngine* engine, const char* docId,
                                                         const char* pageId, const char* userId,
                                                         const char* annotationId);
/* Gives the number of ids. */
PARCHLET_C_API int32_t ParchletEraseSelectedAnnotations(ParchletEngine* engine, const char* docId,
                                                        const char* pageId, ParchletTexts* ids);

/* --- Other participants' marks, looking up, clearing --- */

/* Hands over what arrived. The mark stays the host's whatever the result: the page takes a copy of
 * a mark that is new to it, with the same picture. */
PARCHLET_C_API int32_t ParchletAddAnnotationFromRemote(ParchletEngine* engine, const char* docId,
                                                       const char* pageId,
                                                       const ParchletMark* mark);
PARCHLET_C_API int32_t ParchletCancelAnnotation(ParchletEngine* engine, const char* docId,
                                                const char* pageId, const char* annotationId);
PARCHLET_C_API int32_t ParchletFindAnnotation(ParchletEngine* engine, const char* docId,
                                              const char* pageId, const char* userId,
                                              const char* annotationId);
/* Borrowed, or null. */
PARCHLET_C_API ParchletMark* ParchletGetAnnotation(ParchletEngine* engine, const char* docId,
                                                   const char* pageId, const char* userId,
                                                   const char* annotationId);
PARCHLET_C_API ParchletMark* ParchletGetLocalAnnotation(ParchletEngine* engine, const char* docId,
                                                        const char* pageId,
                                                        const char* annotationId);
PARCHLET_C_API int32_t ParchletClearAnnotations(ParchletEngine* engine, const char* docId,
                                                const char* pageId, const char* userId,
                                                const char* userSubId);

/* --- Pictures and export --- */

/* The mark made is borrowed; null when there is none. */
PARCHLET_C_API ParchletMark* ParchletAddPictureFromFile(ParchletEngine* engine, const char* docId,
                                                        const char* pageId, const char* filePath,
                                                        const char* pictureProperty,
                                                        int32_t isBackground);
PARCHLET_C_API ParchletMark* ParchletAddPictureFromStream(ParchletEngine* engine, const char* docId,
                                                          const char* pageId, const void* data,
                                                          size_t size, const char* pictureProperty,
                                                          int32_t isBackground);
/* As the page was rendered last, or all that the display of that name shows. */
PARCHLET_C_API int32_t ParchletSavePage(ParchletEngine* engine, const char* docId,
                                        const char* pageId, const char* path,
                                        const char* displayDevice);
/* What the screen shows where the window is; as ParchletSavePage for a null window. */
PARCHLET_C_API int32_t ParchletSavePageOfWindow(ParchletEngine* engine, const char* docId,
                                                const char* pageId, const char* path, void* window);
PARCHLET_C_API int32_t ParchletSaveDocument(ParchletEngine* engine, const char* docId,
                                            const char* folder, const char* prefix,
                                            const char* displayDevice);
PARCHLET_C_API int32_t ParchletSaveDocumentOfWindow(ParchletEngine* engine, const char* docId,
                                                    const char* folder, const char* prefix,
                                                    void* window);
PARCHLET_C_API int32_t ParchletSaveAs(ParchletEngine* engine, const char* docId, const char* path);

/* --- Marks ---
 *
 * What changes a mark may be called on one of the host's own; on a borrowed one, nothing but the
 * operations on points, ParchletMarkErase, ParchletMarkSetTempStartTick and the two on moving. */

/* Null when memory ran out. */
PARCHLET_C_API ParchletMark* ParchletMarkNew(void);
/* A mark like this one, all its points and its picture included. */
PARCHLET_C_API ParchletMark* ParchletMarkCopy(const ParchletMark* mark);
/* For the host's own marks only. */
PARCHLET_C_API void ParchletMarkFree(ParchletMark* mark);

PARCHLET_C_API int32_t ParchletMarkInit(ParchletMark* mark, const ParchletPen* pen, int32_t type,
                                        int32_t subType, const char* userId, const char* userSubId,
                                        const char* nickname);
PARCHLET_C_API int32_t ParchletMarkSetAnnotationId(ParchletMark* mark, const char* annotationId);
PARCHLET_C_API int32_t ParchletMarkGetAnnotationId(const ParchletMark* mark,
                                                   ParchletTexts* annotationId);
PARCHLET_C_API int32_t ParchletMarkGetUser(const ParchletMark* mark, ParchletTexts* userId,
                                           ParchletTexts* userSubId, ParchletTexts* nickname);
PARCHLET_C_API int32_t ParchletMarkGetPen(const ParchletMark* mark, ParchletPen* pen);
PARCHLET_C_API int32_t ParchletMarkGetType(const ParchletMark* mark, int32_t* type,
                                           int32_t* subType);
PARCHLET_C_API int32_t ParchletMarkGetPictureProperty(const ParchletMark* mark,
                                                      ParchletTexts* pictureProperty);
/* The paint order. */
PARCHLET_C_API int32_t ParchletMarkSetOrder(ParchletMark* mark, int32_t order);
PARCHLET_C_API int32_t ParchletMarkGetOrder(const ParchletMark* mark, int32_t* order);
/* The sub-model that a fragment's points become. */
PARCHLET_C_API int32_t ParchletMarkSetSubModelIndex(ParchletMark* mark, int32_t index);
PARCHLET_C_API int32_t ParchletMarkGetSubModelIndex(const ParchletMark* mark, int32_t* index);
/* Three numbers of the host's own. */
PARCHLET_C_API int32_t ParchletMarkSetHostData(ParchletMark* mark, int32_t data1, int32_t data2,
                                               int32_t data3);
PARCHLET_C_API int32_t ParchletMarkGetHostData(const ParchletMark* mark, int32_t* data1,
                                               int32_t* data2, int32_t* data3);
/* 0: permanent. Else a time of ParchletTickCount, and the mark is temporary. */
PARCHLET_C_API int32_t ParchletMarkSetTempStartTick(ParchletMark* mark, uint64_t tick);
PARCHLET_C_API int32_t ParchletMarkGetTempStartTick(const ParchletMark* mark, uint64_t* tick);

PARCHLET_C_API int32_t ParchletMarkAddPoint(ParchletMark* mark, const ParchletPoint* point);
PARCHLET_C_API int32_t ParchletMarkInsertPoints(ParchletMark* mark, uint32_t subModel,
                                                const ParchletPoint* points, size_t count);
PARCHLET_C_API int32_t ParchletMarkClearPoints(ParchletMark* mark);
/* Writes up to `capacity` numbers of sub-models, ascending, and how many there are. */
PARCHLET_C_API int32_t ParchletMarkGetSubModels(const ParchletMark* mark, uint32_t* subModels,
                                                size_t capacity, size_t* count);
/* Writes up to `capacity` points of a sub-model, and how many there are. NO, and a count of 0, for
 * one that does not exist. */
PARCHLET_C_API int32_t ParchletMarkGetPoints(const ParchletMark* mark, uint32_t subModel,
                                             ParchletPoint* points, size_t capacity, size_t* count);
PARCHLET_C_API int32_t ParchletMarkIsSubModelExist(const ParchletMark* mark, uint32_t subModel);

PARCHLET_C_API int32_t ParchletMarkErase(ParchletMark* mark, int32_t value);
PARCHLET_C_API int32_t ParchletMarkIsErased(const ParchletMark* mark);
PARCHLET_C_API int32_t ParchletMarkStartMoving(ParchletMark* mark, const ParchletPoint* point);
PARCHLET_C_API int32_t ParchletMarkMoving(ParchletMark* mark, const ParchletPoint* point);

/* NO for an empty path or no bytes; nothing changes then. A picture that cannot be had is told by
 * the sub-type PARCHLET_UNKNOWN. */
PARCHLET_C_API int32_t ParchletMarkSetPictureFromFile(ParchletMark* mark, const char* filePath,
                                                      const char* pictureProperty);
PARCHLET_C_API int32_t ParchletMarkSetPictureFromStream(ParchletMark* mark, const void* data,
                                                        size_t size, const char* pictureProperty);
PARCHLET_C_API int32_t ParchletMarkDestroy(ParchletMark* mark);

/* --- A window in memory, off Windows --- */

#if !defined(_WIN32)

typedef struct ParchletWindow ParchletWindow;

/* Null when memory ran out, or for a null rectangle. */
PARCHLET_C_API ParchletWindow* ParchletWindowNew(const ParchletRect* screenRect);
/* Waits for a frame under way. An engine that paints into it goes on as with a destroyed window. */
PARCHLET_C_API void ParchletWindowFree(ParchletWindow* window);
/* What ParchletNewPage takes; it ends with the window. */
PARCHLET_C_API void* ParchletWindowHandle(const ParchletWindow* window);
PARCHLET_C_API int32_t ParchletWindowSetScreenRect(ParchletWindow* window,
                                                   const ParchletRect* screenRect);
/* Frames pushed so far; 0 for null. */
PARCHLET_C_API uint64_t ParchletWindowPresentCount(const ParchletWindow* window);
/* Waits until that many frames were pushed; NO when `timeoutMs` milliseconds passed before. A frame
 * under way may be older than the host's last call: the one after it is not. */
PARCHLET_C_API int32_t ParchletWindowWaitForPresent(const ParchletWindow* window, uint64_t count,
                                                    int32_t timeoutMs);
/* Writes the size of the last frame, and its pixels, premultiplied 0xAARRGGBB, row by row, top row
 * first. NO, and no pixels, when they are more than `capacity`. */
PARCHLET_C_API int32_t ParchletWindowCopyFrame(const ParchletWindow* window, uint32_t* pixels,
                                               size_t capacity, int32_t* width, int32_t* height);

#endif

#ifdef __cplusplus
}
#endif

#endif
