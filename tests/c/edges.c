/* edges.c - what the C interface answers to null pointers, small buffers and unknown names, and who
 * owns what; under the address sanitizer a mark freed twice or never ends it. */
#include <string.h>

#include <parchlet/parchlet_c.h>

#include "expect.h"

static void NullIsToldFromNo(void) {
  ParchletEngine* engine = ParchletEngineNew();
  ParchletTexts* texts = ParchletTextsNew();
  EXPECT(ParchletGenerateGuid(texts) == PARCHLET_YES && ParchletTextsCount(texts) == 1);
  EXPECT(ParchletNewDoc(NULL, "ada", "doc") == PARCHLET_BAD_ARGUMENT);
  EXPECT(ParchletGetDocCreator(NULL, "doc", texts) == PARCHLET_BAD_ARGUMENT);
  EXPECT(ParchletTextsCount(texts) == 0);
  EXPECT(ParchletNewPage(engine, "doc", "page", "ada", engine, NULL) == PARCHLET_BAD_ARGUMENT);
  EXPECT(ParchletAddAnnotationFromRemote(engine, "doc", "page", NULL) == PARCHLET_BAD_ARGUMENT);
  EXPECT(ParchletEraseAnnotations(engine, "doc", "page", "", "", NULL, 1, texts) ==
         PARCHLET_BAD_ARGUMENT);
  EXPECT(ParchletMarkErase(NULL, 1) == PARCHLET_BAD_ARGUMENT);
  EXPECT(ParchletMarkCopy(NULL) == NULL && ParchletWindowNew(NULL) == NULL);
  EXPECT(ParchletAddPictureFromStream(engine, "doc", "page", NULL, 0, "", 0) == NULL);
  EXPECT(ParchletDelDoc(engine, "doc") == PARCHLET_NO);
  EXPECT(ParchletGetPageIndex(engine, "doc", "page") == 0);
  /* A null text is the empty one, an identifier like any other. */
  EXPECT(ParchletNewDoc(engine, "ada", NULL) == PARCHLET_YES);
  EXPECT(ParchletIsDocExist(engine, "") == PARCHLET_YES);
  EXPECT(ParchletGetDocCreator(engine, NULL, texts) == PARCHLET_YES);
  EXPECT(strcmp(ParchletTextsAt(texts, 0), "ada") == 0 && ParchletTextsAt(texts, 1) == NULL);
  EXPECT(ParchletGetDocCreator(engine, "none", texts) == PARCHLET_NO);
  EXPECT(ParchletTextsCount(texts) == 0);
  ParchletTextsFree(texts);
  ParchletEngineFree(engine);
  ParchletEngineFree(NULL);
  ParchletMarkFree(NULL);
  ParchletTextsFree(NULL);
  ParchletWindowFree(NULL);
}

static ParchletWindow* OpenPages(ParchletEngine* engine) {
  const ParchletRect area = {0, 0, 50, 40};
  const ParchletPageInfo info = {7, 8, 50, 40, 0, {0, 0, 50, 40}, 0};
  ParchletWindow* window = ParchletWindowNew(&area);
  EXPECT(ParchletNewDoc(engine, "ada", "doc") == PARCHLET_YES);
  EXPECT(ParchletNewPage(engine, "doc", "one", "Ada Lovelace", ParchletWindowHandle(window),
                         &info) == PARCHLET_YES);
  EXPECT(ParchletNewPage(engine, "doc", "two", "", ParchletWindowHandle(window), &info) ==
         PARCHLET_YES);
  return window;
}

static void PagesAnswerInBuffersAndLists(void) {
  ParchletEngine* engine = ParchletEngineNew();
  ParchletWindow* window = OpenPages(engine);
  ParchletTexts* page = ParchletTextsNew();
  ParchletPageInfo info = {0, 0, 0, 0, 0, {0, 0, 0, 0}, 0};
  char creator[13];
  EXPECT(ParchletGetPageCreator(engine, "doc", "one", creator, 13) == PARCHLET_YES);
  EXPECT(strcmp(creator, "Ada Lovelace") == 0);
  EXPECT(ParchletGetPageCreator(engine, "doc", "one", creator, 12) == PARCHLET_NO);
  EXPECT(creator[0] == '\0');
  EXPECT(ParchletGetPageSize(engine, "doc", "one", &info, 0) == PARCHLET_YES);
  EXPECT(info.userValue2 == 8 && info.width == 50 && info.viewRect.bottom == 40);
  info.width = 30;
  EXPECT(ParchletUpdatePage(engine, "doc", "one", &info, 1) == PARCHLET_YES);
  EXPECT(ParchletGetPageSize(engine, "doc", "one", &info, 0) == PARCHLET_YES && info.width == 30);
  EXPECT(ParchletGetPageSize(engine, "doc", "one", &info, 1) == PARCHLET_YES && info.width == 50);

  EXPECT(ParchletGetPageCount(engine, "doc") == 2);
  EXPECT(ParchletGetPageIndex(engine, "doc", "two") == 2);
  EXPECT(ParchletGotoFirstPage(engine, "doc", page) == PARCHLET_YES);
  EXPECT(strcmp(ParchletTextsAt(page, 0), "one") == 0);
  /* An argument may lie in the list that the result goes to. */
  EXPECT(ParchletGotoPageAt(engine, ParchletTextsAt(page, 0), 2, page) == PARCHLET_YES);
  EXPECT(strcmp(ParchletTextsAt(page, 0), "two") == 0);
  EXPECT(ParchletGotoNextPage(engine, "doc", page) == PARCHLET_NO && !ParchletTextsAt(page, 0));
  EXPECT(ParchletGetCurrentPageInfo(engine, NULL, page) == PARCHLET_YES);
  EXPECT(strcmp(ParchletTextsAt(page, 0), "two") == 0);
  EXPECT(ParchletIsPageExist(engine, "doc", "three") == PARCHLET_NO);
  ParchletTextsFree(page);
  ParchletEngineFree(engine);
  ParchletWindowFree(window);
}

static void AMarkGivesBackWhatItWasGiven(void) {
  const ParchletPen pen = {0x80112233, 5, 1};
  const ParchletPoint line[3] = {{1, 2, 0.1, 0.2}, {3, 4, 0.3, 0.4}, {5, 6, 0.5, 0.6}};
  ParchletMark* mark = ParchletMarkNew();
  ParchletMark* copy;
  ParchletPoint points[3] = {{9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}};
  ParchletPen seen = {0, 0, 0};
  uint32_t subModels[2] = {9, 9};
  int32_t data[3] = {0, 0, 0};
  uint64_t tick = 0;
  size_t count = 9;
  EXPECT(ParchletMarkInit(mark, &pen, 1, PARCHLET_RECTANGLE, "u", "s", "n") == PARCHLET_YES);
  EXPECT(ParchletMarkSetHostData(mark, 1, -2, 3) == PARCHLET_YES);
  EXPECT(ParchletMarkSetTempStartTick(mark, ParchletTickCount() + 1) == PARCHLET_YES);
  EXPECT(ParchletMarkInsertPoints(mark, 0, line, 3) == PARCHLET_YES);
  EXPECT(ParchletMarkInsertPoints(mark, 5, line, 1) == PARCHLET_YES);

  copy = ParchletMarkCopy(mark);
  ParchletMarkFree(mark);
  EXPECT(ParchletMarkGetPen(copy, &seen) == PARCHLET_YES && memcmp(&seen, &pen, sizeof pen) == 0);
  EXPECT(ParchletMarkGetHostData(copy, &data[0], &data[1], &data[2]) == PARCHLET_YES);
  EXPECT(data[0] == 1 && data[1] == -2 && data[2] == 3);
  EXPECT(ParchletMarkGetTempStartTick(copy, &tick) == PARCHLET_YES && tick > 0);
  EXPECT(ParchletMarkGetSubModels(copy, subModels, 2, &count) == PARCHLET_YES && count == 2);
  EXPECT(subModels[0] == 0 && subModels[1] == 5);
  EXPECT(ParchletMarkGetPoints(copy, 0, points, 2, &count) == PARCHLET_YES && count == 3);
  EXPECT(points[1].yRatio == 0.4 && points[1].x == 3 && points[2].x == 9);
  EXPECT(ParchletMarkGetPoints(copy, 1, points, 2, &count) == PARCHLET_NO && count == 0);
  EXPECT(ParchletMarkStartMoving(copy, &line[0]) == PARCHLET_YES);
  EXPECT(ParchletMarkMoving(copy, &line[1]) == PARCHLET_YES);
  EXPECT(ParchletMarkGetPoints(copy, 0, points, 3, NULL) == PARCHLET_YES);
  EXPECT(points[0].xRatio > 0.29 && points[0].xRatio < 0.31);
  EXPECT(ParchletMarkClearPoints(copy) == PARCHLET_YES);
  EXPECT(ParchletMarkIsSubModelExist(copy, 0) == PARCHLET_NO);
  EXPECT(ParchletMarkSetPictureFromStream(copy, "no picture", 10, "p") == PARCHLET_YES);
  EXPECT(ParchletMarkGetType(copy, NULL, &data[0]) == PARCHLET_YES && data[0] == PARCHLET_UNKNOWN);
  ParchletMarkFree(copy);
}

static void AHandedOverMarkStaysTheHosts(void) {
  const ParchletPen pen = {0xFF00FF00, 3, 0};
  const ParchletPoint ends[2] = {{5, 5, 0.1, 0.1}, {45, 5, 0.9, 0.1}};
  ParchletEngine* engine = ParchletEngineNew();
  ParchletWindow* window = OpenPages(engine);
  ParchletMark* mark = ParchletMarkNew();
  ParchletMark* known;
  EXPECT(ParchletMarkInit(mark, &pen, 1, PARCHLET_LINE, "grace", "", "Grace") == PARCHLET_YES);
  EXPECT(ParchletMarkSetAnnotationId(mark, "id") == PARCHLET_YES);
  EXPECT(ParchletMarkAddPoint(mark, &ends[0]) == PARCHLET_YES);
  EXPECT(ParchletMarkAddPoint(mark, &ends[1]) == PARCHLET_YES);
  EXPECT(ParchletMarkSetSubModelIndex(mark, 0) == PARCHLET_YES);
  EXPECT(ParchletAddAnnotationFromRemote(engine, "doc", "none", mark) == PARCHLET_NO);
  EXPECT(ParchletAddAnnotationFromRemote(engine, "doc", "one", mark) == PARCHLET_YES);
  EXPECT(ParchletAddAnnotationFromRemote(engine, "doc", "one", mark) == PARCHLET_YES);
  known = ParchletGetAnnotation(engine, "doc", "one", "grace", "id");
  EXPECT(known != NULL && known != mark);
  /* What the host does with its own afterwards is nothing to the page. */
  EXPECT(ParchletMarkErase(mark, 1) == PARCHLET_YES);
  EXPECT(ParchletMarkIsErased(known) == PARCHLET_NO);
  EXPECT(ParchletAddAnnotationFromRemote(engine, "doc", "two", known) == PARCHLET_YES);
  ParchletMarkFree(mark);
  EXPECT(ParchletClearAnnotations(engine, "doc", "one", "grace", "") == PARCHLET_YES);
  EXPECT(ParchletMarkIsErased(known) == PARCHLET_YES);
  ParchletEngineFree(engine);
  ParchletWindowFree(window);
}

int main(void) {
  NullIsToldFromNo();
  PagesAnswerInBuffersAndLists();
  AMarkGivesBackWhatItWasGiven();
  AHandedOverMarkStaysTheHosts();
  puts("the edges are where the header says");
  return 0;
}
