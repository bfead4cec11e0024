/* operations.c - what a meeting does without: every operation reaches the engine with its arguments
 * in their places, and null pointers, small buffers and unknown names get the answers that the
 * header says. Leaves files in the current folder. */
#include "host.h"

/* Done, and the list has that one text. */
#define TELLS(call, expected) EXPECT((call) == PARCHLET_YES && Holds(host.text, expected))

enum { kPageWidth = 60, kPageHeight = 30 };

static Host host; /* fresh for every test */

static void Run(void (*test)(void)) {
  Open(&host, "Ada Lovelace", kPageWidth, kPageHeight);
  test();
  Close(&host);
}

static void CountRecord(void* context, int32_t level, const char* line) {
  *(int*)context += level == 0 && strstr(line, "unknown") != NULL;
}

static void NullIsToldFromNo(void) {
  int records = 0;
  BAD(ParchletNewPage(host.engine, "doc", "page", "ada", host.engine, NULL));
  BAD(ParchletAddAnnotationFromRemote(host.engine, "doc", "page", NULL));
  BAD(ParchletEraseAnnotations(host.engine, "doc", "page", "", "", NULL, 1, host.text));
  BAD(ParchletMarkErase(NULL, 1));
  EXPECT(ParchletMarkCopy(NULL) == NULL && ParchletWindowNew(NULL) == NULL);
  EXPECT(ParchletAddPictureFromStream(host.engine, "doc", "page", NULL, 0, "", 0) == NULL);
  /* A null text is the empty one, an identifier like any other. */
  YES(ParchletNewDoc(host.engine, "bob", NULL));
  YES(ParchletIsDocExist(host.engine, ""));
  TELLS(ParchletGetDocCreator(host.engine, NULL, host.text), "bob");
  YES(ParchletDelDoc(host.engine, ""));
  /* Whatever fails empties the list. */
  NO(ParchletGetDocCreator(host.engine, "", host.text));
  EXPECT(ParchletTextsAt(host.text, 0) == NULL && ParchletGenerateGuid(host.text) == PARCHLET_YES);
  BAD(ParchletGetDocCreator(NULL, "doc", host.text));
  EXPECT(ParchletTextsCount(host.text) == 0);
  YES(ParchletSetLogger("SDK", CountRecord, &records));
  NO(ParchletStartDrawing(host.engine, "unknown", "page", 1, 1));
  YES(ParchletSetLogger("SDK", NULL, NULL));
  EXPECT(records == 1);
}

static void PagesAnswerInBuffersAndLists(void) {
  ParchletPageInfo info;
  char creator[13];
  YES(ParchletGetPageCreator(host.engine, "doc", "back", creator, 13));
  EXPECT(strcmp(creator, "Ada Lovelace") == 0);
  NO(ParchletGetPageCreator(host.engine, "doc", "back", creator, 12));
  EXPECT(creator[0] == '\0');
  YES(ParchletGetPageSize(host.engine, "doc", "back", &info, 0));
  EXPECT(info.userValue2 == 8 && info.width == kPageWidth && info.viewRect.bottom == 40);
  info.width = 30;
  YES(ParchletUpdatePage(host.engine, "doc", "back", &info, 1));
  EXPECT(ParchletGetPageSize(host.engine, "doc", "back", &info, 0) && info.width == 30);
  EXPECT(ParchletGetPageSize(host.engine, "doc", "back", &info, 1) && info.width == kPageWidth);
  EXPECT(ParchletGetPageIndex(host.engine, "doc", "page") == 2);
  EXPECT(ParchletGetPageIndex(host.engine, "doc", "three") == 0);

  TELLS(ParchletGotoFirstPage(host.engine, "doc", host.text), "back");
  /* An argument may lie in the list that the result goes to. */
  TELLS(ParchletGotoPageAt(host.engine, ParchletTextsAt(host.text, 0), 2, host.text), "page");
  NO(ParchletGotoNextPage(host.engine, "doc", host.text));
  EXPECT(ParchletTextsCount(host.text) == 0);
  TELLS(ParchletGotoPreviousPage(host.engine, "doc", host.text), "back");
  TELLS(ParchletGotoLastPage(host.engine, "doc", host.text), "page");
  YES(ParchletGotoPage(host.engine, "doc", "back"));
  TELLS(ParchletGetCurrentPageInfo(host.engine, NULL, host.text), "back");
  YES(ParchletSetCurrentPage(host.engine, "doc", "page"));
  TELLS(ParchletGetCurrentPageInfo(host.engine, NULL, host.text), "page");
}

static void WhatHasNoEffectSaysYes(void) {
  YES(ParchletIsDocOpened(host.engine, "doc", host.text));
  YES(ParchletDuplicatePage(host.engine, "doc", "back", host.text));
  EXPECT(ParchletTextsCount(host.text) == 0 && ParchletGetPageCount(host.engine, "doc") == 2);
  YES(ParchletSetZoom(host.engine, "doc", 2, 0, 0));
  YES(ParchletSetPageSize(host.engine, "doc", "back", 5, 5));
  YES(ParchletSaveAs(host.engine, "doc", "file"));
  YES(ParchletDelPage(host.engine, "doc", "page"));
  NO(ParchletIsPageExist(host.engine, "doc", "page"));
  YES(ParchletIsPageExist(host.engine, "doc", "back"));
  EXPECT(ParchletGetDocCount(host.engine) == 1);
  YES(ParchletDestroy(host.engine));
  EXPECT(ParchletGetDocCount(host.engine) == 0);
}

static ParchletMark* MakeLine(const char* userId) {
  const ParchletPen pen = {0x80112233, 3, 1};
  const ParchletPoint points[3] = {{6, 3, 0.1, 0.1}, {54, 3, 0.9, 0.1}, {0, 0, 0.9, 0.2}};
  ParchletMark* mark = ParchletMarkNew();
  YES(ParchletMarkInit(mark, &pen, 1, PARCHLET_LINE, userId, "sub", "N"));
  YES(ParchletMarkSetAnnotationId(mark, "id"));
  YES(ParchletMarkInsertPoints(mark, 0, points, 2));
  YES(ParchletMarkInsertPoints(mark, 5, points, 3));
  YES(ParchletMarkSetSubModelIndex(mark, 0));
  YES(ParchletMarkSetOrder(mark, 7));
  YES(ParchletMarkSetHostData(mark, 1, -2, 3));
  YES(ParchletMarkSetTempStartTick(mark, ParchletTickCount()));
  return mark;
}

static void PointsAreWrittenAsFarAsThereIsRoom(ParchletMark* mark) {
  const ParchletPoint origin = {0, 0, 0, 0};
  const ParchletPoint step = {0, 0, 0.25, 0};
  ParchletPoint points[3] = {{9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}};
  uint32_t subModels[2] = {9, 9};
  size_t count = 9;
  YES(ParchletMarkGetSubModels(mark, subModels, 2, &count));
  EXPECT(count == 2 && subModels[0] == 0 && subModels[1] == 5);
  YES(ParchletMarkStartMoving(mark, &origin));
  YES(ParchletMarkMoving(mark, &step));
  YES(ParchletMarkGetPoints(mark, 5, points, 2, &count));
  EXPECT(count == 3 && points[1].x == 54 && points[1].yRatio == 0.1 && points[2].x == 9);
  YES(ParchletMarkGetPoints(mark, 0, points, 1, NULL));
  EXPECT(points[0].xRatio > 0.34 && points[0].xRatio < 0.36);
  NO(ParchletMarkGetPoints(mark, 1, points, 2, &count));
  EXPECT(count == 0);
  YES(ParchletMarkClearPoints(mark));
  NO(ParchletMarkIsSubModelExist(mark, 0));
  YES(ParchletMarkAddPoint(mark, &step));
  YES(ParchletMarkIsSubModelExist(mark, 0));
}

static void ACopyReturnsWhatAMarkWasGiven(void) {
  ParchletMark* mark = MakeLine("u");
  ParchletMark* copy = ParchletMarkCopy(mark);
  ParchletPen pen;
  int32_t data[5];
  uint64_t tick = 0;
  ParchletMarkFree(mark);
  TELLS(ParchletMarkGetUser(copy, host.text, NULL, NULL), "u");
  TELLS(ParchletMarkGetUser(copy, NULL, host.text, NULL), "sub");
  TELLS(ParchletMarkGetUser(copy, NULL, NULL, host.text), "N");
  TELLS(ParchletMarkGetAnnotationId(copy, host.text), "id");
  YES(ParchletMarkGetPen(copy, &pen));
  EXPECT(pen.color == 0x80112233 && pen.width == 3 && pen.fill == 1);
  YES(ParchletMarkGetHostData(copy, &data[0], &data[1], &data[2]));
  EXPECT(data[0] == 1 && data[1] == -2 && data[2] == 3);
  YES(ParchletMarkGetOrder(copy, &data[3]));
  YES(ParchletMarkGetSubModelIndex(copy, &data[4]));
  EXPECT(data[3] == 7 && data[4] == 0);
  YES(ParchletMarkGetType(copy, &data[0], &data[1]));
  EXPECT(data[0] == 1 && data[1] == PARCHLET_LINE);
  EXPECT(ParchletMarkGetTempStartTick(copy, &tick) == PARCHLET_YES && tick > 0);
  PointsAreWrittenAsFarAsThereIsRoom(copy);
  ParchletMarkFree(copy);
}

/* Under the address sanitizer a mark that is freed twice or never ends the program. */
static void AHandedOverMarkStaysTheHosts(void) {
  ParchletMark* mark = MakeLine("grace");
  ParchletMark* known;
  NO(ParchletAddAnnotationFromRemote(host.engine, "doc", "none", mark));
  YES(ParchletAddAnnotationFromRemote(host.engine, "doc", "back", mark));
  YES(ParchletAddAnnotationFromRemote(host.engine, "doc", "back", mark));
  known = ParchletGetAnnotation(host.engine, "doc", "back", "grace", "id");
  YES(ParchletMarkErase(mark, 1));
  NO(ParchletMarkIsErased(known));
  YES(ParchletAddAnnotationFromRemote(host.engine, "doc", "page", known));
  ParchletMarkFree(mark);
  YES(ParchletClearAnnotations(host.engine, "doc", "back", "grace", "sub"));
  YES(ParchletMarkIsErased(known));
}

static void AFrameShowsBackgroundsAndTips(void) {
  const ParchletRect wider = {10, 20, 10 + kWider, 20 + kHeight};
  int hasTip = 0;
  YES(ParchletSetPageBackgroundColor(host.engine, 0xFF884422));
  YES(ParchletWindowSetScreenRect(host.window, &wider));
  Look(&host, kWider);
  EXPECT(host.frame[0] == 0xFF884422);
  YES(ParchletSetNicknameTip(host.engine, 0xFF00FFFF, 12, "", 0xFF112233));
  /* A tip shows for two seconds, which a slow machine may miss: another author has another one. */
  for (char userId[2] = "a"; userId[0] <= 'z' && !hasTip; ++userId[0]) {
    ParchletMark* mark = MakeLine(userId);
    YES(ParchletAddAnnotationFromRemote(host.engine, "doc", "page", mark));
    ParchletMarkFree(mark);
    Look(&host, kWider);
    for (int i = 0; i < kWider * kHeight; ++i) {
      hasTip = hasTip || host.frame[i] == 0xFF112233;
    }
  }
  EXPECT(hasTip);
}

static unsigned char file[100000];

/* Reads the start of a PNG file; returns how many bytes, 0 when the picture has another size. */
static size_t ReadFile(const char* path, int width, int height) {
  FILE* stream = fopen(path, "rb");
  const size_t size = stream != NULL ? fread(file, 1, sizeof file, stream) : 0;
  EXPECT(stream != NULL && fclose(stream) == 0);
  return file[18] * 256 + file[19] == width && file[22] * 256 + file[23] == height ? size : 0;
}

static int IsPicture(const ParchletMark* mark, const char* property) {
  int32_t subType = 0;
  YES(ParchletMarkGetType(mark, NULL, &subType));
  YES(ParchletMarkGetPictureProperty(mark, host.text));
  return Holds(host.text, property) && subType == PARCHLET_PNG;
}

static void WhatIsExportedIsAPicture(void) {
  void* handle = ParchletWindowHandle(host.window);
  ParchletMark* own = ParchletMarkNew();
  ParchletMark* placed;
  const char* path = "./page.png";
  const char* id;
  size_t size;
  YES(ParchletSaveDocument(host.engine, "doc", ".", "all", NULL));
  NO(ParchletSaveDocument(host.engine, "doc", "/no such folder", "all", NULL));
  YES(ParchletSaveDocumentOfWindow(host.engine, "doc", ".", "all", handle));
  NO(ParchletSavePage(host.engine, "doc", "back", path, "no display"));
  YES(ParchletSavePage(host.engine, "doc", "back", path, DISPLAY_NAME));
  EXPECT(ReadFile(path, 1920, 1080) > 0);
  YES(ParchletSavePageOfWindow(host.engine, "doc", "back", path, handle));
  EXPECT(ReadFile(path, kWidth, kHeight) > 0);
  YES(ParchletSavePageOfWindow(host.engine, "doc", "back", path, NULL));
  size = ReadFile(path, kPageWidth, kPageHeight);

  placed = ParchletAddPictureFromFile(host.engine, "doc", "page", path, "file", 0);
  EXPECT(IsPicture(placed, "file") && ParchletMarkGetAnnotationId(placed, host.text));
  id = ParchletTextsAt(host.text, 0);
  EXPECT(ParchletGetLocalAnnotation(host.engine, "doc", "page", id) == placed);
  YES(ParchletCancelAnnotation(host.engine, "doc", "page", id));
  EXPECT(ParchletGetLocalAnnotation(host.engine, "doc", "page", id) == NULL);
  placed = ParchletAddPictureFromStream(host.engine, "doc", "page", file, size, "stream", 0);
  EXPECT(IsPicture(placed, "stream"));
  NO(ParchletMarkSetPictureFromFile(own, "", "none"));
  YES(ParchletMarkSetPictureFromFile(own, path, "own"));
  EXPECT(IsPicture(own, "own"));
  YES(ParchletMarkSetPictureFromStream(own, file, size / 2, "cut"));
  EXPECT(!IsPicture(own, "cut"));
  YES(ParchletMarkSetPictureFromStream(own, file, size, "bytes"));
  EXPECT(IsPicture(own, "bytes"));
  YES(ParchletMarkDestroy(own));
  ParchletMarkFree(own);
}

int main(void) {
  Run(NullIsToldFromNo);
  Run(PagesAnswerInBuffersAndLists);
  Run(WhatHasNoEffectSaysYes);
  Run(ACopyReturnsWhatAMarkWasGiven);
  Run(AHandedOverMarkStaysTheHosts);
  Run(AFrameShowsBackgroundsAndTips);
  Run(WhatIsExportedIsAPicture);
  puts("every operation does what it says");
  return 0;
}
