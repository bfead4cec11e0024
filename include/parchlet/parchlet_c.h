/* parchlet_c.h - the engine for hosts in C and in languages that call C. No C++ type appears here.
 *
 * Parchlet.h and Annotation.h document each operation under the same name. The comments here say
 * only what differs.
 *
 * Results: an operation returns one of the codes below, or a number where its comment says so. A
 * number is never negative unless the operation failed. No function throws.
 *
 * Text is UTF-8 and ends at its first zero byte. A null text counts as an empty one. Text arguments
 * are copied; returned text goes into a ParchletTexts or a buffer of the host's. Where a result
 * would be written through a pointer, null means that it is not wanted. Any other null pointer
 * makes the function return PARCHLET_BAD_ARGUMENT, or null; a Free function ignores null.
 *
 * Ownership: what a function with New or Copy in its name returns belongs to the host, which frees
 * it once with the Free function of the same prefix. What any other function returns is borrowed.
 *
 * On Windows a host of a library that was built to paint by GDI+ starts it (GdiplusStartup) before
 * it makes a page.
 *
 * Threads: an engine, the marks of its pages, and the host's own marks and texts are for one thread
 * at a time. Windows and loggers may be used from any thread.
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
  PARCHLET_YES = 1,           /* done, or true */
  PARCHLET_NO = 0,            /* refused, or false; nothing changed unless said otherwise */
  PARCHLET_BAD_ARGUMENT = -1, /* a null pointer that is not allowed; nothing changed */
  PARCHLET_NO_MEMORY = -2,    /* memory ran out */
  PARCHLET_FAILED = -3        /* the system refused a thread or a lock */
};

/* An engine with its documents, pages and their marks. */
typedef struct ParchletEngine ParchletEngine;
/* A mark. It is the host's own (from a function with New or Copy in its name) or borrowed from the
 * page that owns it. A borrowed confirmed mark is valid until its page is deleted; a borrowed
 * pending mark until ParchletCancelAnnotation, its echo, or the end of its page. The host never
 * frees a borrowed mark. */
typedef struct ParchletMark ParchletMark;
/* A list of texts that an operation returns. */
typedef struct ParchletTexts ParchletTexts;

/* One sampled point, as AnnotationPoint. The ratios decide; drawing computes x and y from them. */
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
  int32_t userValue1, userValue2; /* for the host's use */
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
/* Makes a new random identifier. NO if the system has no random numbers. */
PARCHLET_C_API int32_t ParchletGenerateGuid(ParchletTexts* guid);
/* The engine's clock in milliseconds, for ParchletMarkSetTempStartTick. */
PARCHLET_C_API uint64_t ParchletTickCount(void);

/* Receives one log record, on the thread that called the engine. `line` is valid during the call
 * only. The function must not throw or longjmp. */
typedef void (*ParchletLogWriter)(void* context, int32_t level, const char* line);
/* Sends the log records of that name to `write` with `context`; the engine's name is "SDK". Both
 * must stay valid until a call with a null `write` ends it. Not during a call of an engine. */
PARCHLET_C_API int32_t ParchletSetLogger(const char* name, ParchletLogWriter write, void* context);

/* --- Texts --- */

/* Returns an empty list, or null if memory ran out. An operation that takes a list replaces its
 * texts; if the operation fails, the list is empty. */
PARCHLET_C_API ParchletTexts* ParchletTextsNew(void);
PARCHLET_C_API void ParchletTextsFree(ParchletTexts* texts);
PARCHLET_C_API size_t ParchletTextsCount(const ParchletTexts* texts);
/* Returns the text at `index`, counted from 0; null past the end. It is valid until the list is
 * written or freed. */
PARCHLET_C_API const char* ParchletTextsAt(const ParchletTexts* texts, size_t index);

/* --- Lifecycle and settings --- */

/* Null if memory ran out. */
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
/* Returns a number. */
PARCHLET_C_API int32_t ParchletGetDocCount(ParchletEngine* engine);
PARCHLET_C_API int32_t ParchletGetDocCreator(ParchletEngine* engine, const char* docId,
                                             ParchletTexts* creator);
PARCHLET_C_API int32_t ParchletIsDocExist(ParchletEngine* engine, const char* docId);
/* Leaves `out` empty. */
PARCHLET_C_API int32_t ParchletIsDocOpened(ParchletEngine* engine, const char* docId,
                                           ParchletTexts* out);

/* --- Pages --- */

/* `window` is a window's handle: an HWND on Windows, elsewhere from ParchletWindowHandle or
 * RegisterLayeredWindow (LayeredWindow.h). */
PARCHLET_C_API int32_t ParchletNewPage(ParchletEngine* engine, const char* docId,
                                       const char* pageId, const char* creator, void* window,
                                       const ParchletPageInfo* info);
PARCHLET_C_API int32_t ParchletDelPage(ParchletEngine* engine, const char* docId,
                                       const char* pageId);
/* Leaves `newPageId` empty. */
PARCHLET_C_API int32_t ParchletDuplicatePage(ParchletEngine* engine, const char* docId,
                                             const char* pageId, ParchletTexts* newPageId);
/* Returns a number. */
PARCHLET_C_API int32_t ParchletGetPageCount(ParchletEngine* engine, const char* docId);
/* Returns a number from 1, or 0 for an unknown page. */
PARCHLET_C_API int32_t ParchletGetPageIndex(ParchletEngine* engine, const char* docId,
                                            const char* pageId);
/* Writes the creator and a closing zero. NO if `size` bytes are too few for both; the buffer is
 * then all zeros. */
PARCHLET_C_API int32_t ParchletGetPageCreator(ParchletEngine* engine, const char* docId,
                                              const char* pageId, char* buffer, size_t size);
PARCHLET_C_API int32_t ParchletGetPageSize(ParchletEngine* engine, const char* docId,
                                           const char* pageId, ParchletPageInfo* info,
                                           int32_t initial);
PARCHLET_C_API int32_t ParchletUpdatePage(ParchletEngine* engine, const char* docId,
                                          const char* pageId, const ParchletPageInfo* info,
                                          int32_t resize);
/* Whether the page exists. Takes the place of GetPagePtr. */
PARCHLET_C_API int32_t ParchletIsPageExist(ParchletEngine* engine, const char* docId,
                                           const char* pageId);

/* --- Current page and navigation --- */

PARCHLET_C_API int32_t ParchletSetCurrentPage(ParchletEngine* engine, const char* docId,
                                              const char* pageId);
/* Each list gets one text, an empty one if no page is current. */
PARCHLET_C_API int32_t ParchletGetCurrentPageInfo(ParchletEngine* engine, ParchletTexts* docId,
                                                  ParchletTexts* pageId);
/* These put the id of the page that is now current in `pageId`. NO if it did not change. */
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
/* NO if no mark is in progress. The ids of document and page are written in either case, as by
 * ParchletGetCurrentPageInfo. */
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
/* Returns the number of selected marks. Writes up to `capacity` of them, borrowed, by ascending id.
 */
PARCHLET_C_API int32_t ParchletGetSelectedAnnotations(ParchletEngine* engine, const char* docId,
                                                      const char* pageId, ParchletMark** marks,
                                                      size_t capacity);

/* --- Erasing --- */

/* Returns the number of ids: those of the marks under the eraser. No id is empty. */
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
/* Returns the number of ids. */
PARCHLET_C_API int32_t ParchletEraseSelectedAnnotations(ParchletEngine* engine, const char* docId,
                                                        const char* pageId, ParchletTexts* ids);

/* --- Other participants' marks, looking up, clearing --- */

/* Hands over what arrived. The mark stays the host's in every case: the page takes a copy of a mark
 * that is new to it, with the same picture. A mark borrowed from this page changes no points; a
 * pending one is confirmed with the points that it has. */
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

/* Returns the new mark, borrowed, or null. */
PARCHLET_C_API ParchletMark* ParchletAddPictureFromFile(ParchletEngine* engine, const char* docId,
                                                        const char* pageId, const char* filePath,
                                                        const char* pictureProperty,
                                                        int32_t isBackground);
PARCHLET_C_API ParchletMark* ParchletAddPictureFromStream(ParchletEngine* engine, const char* docId,
                                                          const char* pageId, const void* data,
                                                          size_t size, const char* pictureProperty,
                                                          int32_t isBackground);
/* Saves the page as last painted; with a display's name, all that this display shows. */
PARCHLET_C_API int32_t ParchletSavePage(ParchletEngine* engine, const char* docId,
                                        const char* pageId, const char* path,
                                        const char* displayDevice);
/* Saves what the screen shows where the window is; with a null window, as ParchletSavePage. */
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
 * Any operation may be called on a mark of the host's own. On a borrowed mark a host may call what
 * reads, the operations on points, ParchletMarkErase, ParchletMarkSetTempStartTick,
 * ParchletMarkStartMoving and ParchletMarkMoving. */

/* Null if memory ran out. */
PARCHLET_C_API ParchletMark* ParchletMarkNew(void);
/* Returns a copy with all points and the picture. */
PARCHLET_C_API ParchletMark* ParchletMarkCopy(const ParchletMark* mark);
/* For the host's own marks only. */
PARCHLET_C_API void ParchletMarkFree(ParchletMark* mark);
/* Splits a mark into fragments for sending: see SplitMark in Fragments.h. Writes up to `capacity`
 * of them, each to be freed by the host, and in `count` how many there are. */
PARCHLET_C_API int32_t ParchletMarkCopyFragments(const ParchletMark* mark, int32_t order,
                                                 ParchletMark** fragments, size_t capacity,
                                                 size_t* count);
/* Joins the fragments of one mark: see JoinFragments in Fragments.h. The fragments stay the host's.
 * Returns null if there is no fragment or memory ran out. */
PARCHLET_C_API ParchletMark* ParchletMarkNewFromFragments(const ParchletMark* const* fragments,
                                                          size_t count);

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
/* The number of the sub-model that a fragment's points become. */
PARCHLET_C_API int32_t ParchletMarkSetSubModelIndex(ParchletMark* mark, int32_t index);
PARCHLET_C_API int32_t ParchletMarkGetSubModelIndex(const ParchletMark* mark, int32_t* index);
/* Three numbers for the host's use. */
PARCHLET_C_API int32_t ParchletMarkSetHostData(ParchletMark* mark, int32_t data1, int32_t data2,
                                               int32_t data3);
PARCHLET_C_API int32_t ParchletMarkGetHostData(const ParchletMark* mark, int32_t* data1,
                                               int32_t* data2, int32_t* data3);
/* 0 for a permanent mark; for a temporary one, a time of ParchletTickCount. */
PARCHLET_C_API int32_t ParchletMarkSetTempStartTick(ParchletMark* mark, uint64_t tick);
PARCHLET_C_API int32_t ParchletMarkGetTempStartTick(const ParchletMark* mark, uint64_t* tick);

PARCHLET_C_API int32_t ParchletMarkAddPoint(ParchletMark* mark, const ParchletPoint* point);
PARCHLET_C_API int32_t ParchletMarkInsertPoints(ParchletMark* mark, uint32_t subModel,
                                                const ParchletPoint* points, size_t count);
PARCHLET_C_API int32_t ParchletMarkClearPoints(ParchletMark* mark);
/* Writes up to `capacity` sub-model numbers, ascending, and in `count` how many there are. */
PARCHLET_C_API int32_t ParchletMarkGetSubModels(const ParchletMark* mark, uint32_t* subModels,
                                                size_t capacity, size_t* count);
/* Writes up to `capacity` points of a sub-model, and in `count` how many there are. NO and a count
 * of 0 if there is no such sub-model. */
PARCHLET_C_API int32_t ParchletMarkGetPoints(const ParchletMark* mark, uint32_t subModel,
                                             ParchletPoint* points, size_t capacity, size_t* count);
PARCHLET_C_API int32_t ParchletMarkIsSubModelExist(const ParchletMark* mark, uint32_t subModel);

PARCHLET_C_API int32_t ParchletMarkErase(ParchletMark* mark, int32_t value);
PARCHLET_C_API int32_t ParchletMarkIsErased(const ParchletMark* mark);
PARCHLET_C_API int32_t ParchletMarkStartMoving(ParchletMark* mark, const ParchletPoint* point);
PARCHLET_C_API int32_t ParchletMarkMoving(ParchletMark* mark, const ParchletPoint* point);

/* NO for an empty path or no bytes; nothing changes then. A picture that cannot be read or decoded
 * has the sub-type PARCHLET_UNKNOWN. */
PARCHLET_C_API int32_t ParchletMarkSetPictureFromFile(ParchletMark* mark, const char* filePath,
                                                      const char* pictureProperty);
PARCHLET_C_API int32_t ParchletMarkSetPictureFromStream(ParchletMark* mark, const void* data,
                                                        size_t size, const char* pictureProperty);
PARCHLET_C_API int32_t ParchletMarkDestroy(ParchletMark* mark);

/* --- A window in memory, off Windows --- */

#if !defined(_WIN32)

typedef struct ParchletWindow ParchletWindow;

/* Null if memory ran out, or for a null rectangle. */
PARCHLET_C_API ParchletWindow* ParchletWindowNew(const ParchletRect* screenRect);
/* Waits for a frame that is being pushed. To an engine that paints into it, the window is
 * destroyed. */
PARCHLET_C_API void ParchletWindowFree(ParchletWindow* window);
/* Returns the handle for ParchletNewPage. It is valid as long as the window. */
PARCHLET_C_API void* ParchletWindowHandle(const ParchletWindow* window);
PARCHLET_C_API int32_t ParchletWindowSetScreenRect(ParchletWindow* window,
                                                   const ParchletRect* screenRect);
/* Returns how many frames were pushed; 0 for null. */
PARCHLET_C_API uint64_t ParchletWindowPresentCount(const ParchletWindow* window);
/* Waits until `count` frames were pushed. NO if `timeoutMs` milliseconds pass before that. The next
 * frame may have been begun before the host's last call; the one after it shows that call. */
PARCHLET_C_API int32_t ParchletWindowWaitForPresent(const ParchletWindow* window, uint64_t count,
                                                    int32_t timeoutMs);
/* Writes the size of the last frame and its pixels: premultiplied 0xAARRGGBB, row by row, top row
 * first. NO, without pixels, if there are more than `capacity` of them. */
PARCHLET_C_API int32_t ParchletWindowCopyFrame(const ParchletWindow* window, uint32_t* pixels,
                                               size_t capacity, int32_t* width, int32_t* height);

#endif

#ifdef __cplusplus
}
#endif

#endif
