/* meeting.c - what one participant draws is sent to the other, and erased, through the C interface
 * alone, and both see the same page. */
#include <string.h>

#include <parchlet/parchlet_c.h>

#include "expect.h"

enum { kWidth = 120, kHeight = 80, kPixels = kWidth * kHeight, kMaxPoints = 32 };

static const uint32_t kWhite = 0xFFFFFFFF;
static const uint32_t kBlue = 0xFF0000FF;

typedef struct Participant {
  ParchletEngine* engine;
  ParchletWindow* window;
  uint32_t frame[kPixels];
} Participant;

static void Join(Participant* one, const char* userId) {
  const ParchletRect area = {10, 20, 10 + kWidth, 20 + kHeight};
  const ParchletPageInfo info = {1, 2, kWidth, kHeight, 0, {0, 0, kWidth, kHeight}, 0};
  one->window = ParchletWindowNew(&area);
  one->engine = ParchletEngineNew();
  EXPECT(one->window != NULL && one->engine != NULL);
  EXPECT(ParchletSetUserInfo(one->engine, userId, "desk", userId) == PARCHLET_YES);
  EXPECT(ParchletInit(one->engine) == PARCHLET_YES);
  EXPECT(ParchletInit(one->engine) == PARCHLET_NO);
  EXPECT(ParchletNewDoc(one->engine, userId, "doc") == PARCHLET_YES);
  EXPECT(ParchletNewPage(one->engine, "doc", "page", userId, ParchletWindowHandle(one->window),
                         &info) == PARCHLET_YES);
}

static void Leave(Participant* one) {
  ParchletEngineFree(one->engine);
  ParchletWindowFree(one->window);
}

static void Look(Participant* one) {
  int32_t width = 0;
  int32_t height = 0;
  /* The frame under way may be older than the last call; the one after it is not. */
  const uint64_t frame = ParchletWindowPresentCount(one->window) + 2;
  EXPECT(ParchletWindowWaitForPresent(one->window, frame, 60000) == PARCHLET_YES);
  EXPECT(ParchletWindowCopyFrame(one->window, one->frame, kPixels, &width, &height) ==
         PARCHLET_YES);
  EXPECT(width == kWidth && height == kHeight);
}

static uint32_t At(const Participant* one, int x, int y) {
  return one->frame[y * kWidth + x];
}

static void LookAtTheSame(Participant* one, Participant* other) {
  Look(one);
  Look(other);
  EXPECT(memcmp(one->frame, other->frame, sizeof(one->frame)) == 0);
}

/* What a host reads of a mark to send it, and rebuilds of what arrived. */
static ParchletMark* Rebuild(const ParchletMark* source, int32_t order) {
  ParchletTexts* id = ParchletTextsNew();
  ParchletTexts* user = ParchletTextsNew();
  ParchletTexts* userSub = ParchletTextsNew();
  ParchletTexts* nickname = ParchletTextsNew();
  ParchletMark* mark = ParchletMarkNew();
  ParchletPen pen;
  ParchletPoint points[kMaxPoints];
  size_t count = 0;
  int32_t type = 0;
  int32_t subType = 0;
  EXPECT(ParchletMarkGetAnnotationId(source, id) == PARCHLET_YES);
  EXPECT(ParchletMarkGetUser(source, user, userSub, nickname) == PARCHLET_YES);
  EXPECT(ParchletMarkGetPen(source, &pen) == PARCHLET_YES);
  EXPECT(ParchletMarkGetType(source, &type, &subType) == PARCHLET_YES);
  EXPECT(ParchletMarkGetPoints(source, 0, points, kMaxPoints, &count) == PARCHLET_YES);
  EXPECT(count > 1 && count <= kMaxPoints);

  EXPECT(ParchletMarkInit(mark, &pen, type, subType, ParchletTextsAt(user, 0),
                          ParchletTextsAt(userSub, 0),
                          ParchletTextsAt(nickname, 0)) == PARCHLET_YES);
  EXPECT(ParchletMarkSetAnnotationId(mark, ParchletTextsAt(id, 0)) == PARCHLET_YES);
  EXPECT(ParchletMarkSetOrder(mark, order) == PARCHLET_YES);
  EXPECT(ParchletMarkSetSubModelIndex(mark, 0) == PARCHLET_YES);
  EXPECT(ParchletMarkInsertPoints(mark, 0, points, count) == PARCHLET_YES);
  ParchletTextsFree(id);
  ParchletTextsFree(user);
  ParchletTextsFree(userSub);
  ParchletTextsFree(nickname);
  return mark;
}

static void Relay(const ParchletMark* source, int32_t order, Participant* author,
                  Participant* other) {
  ParchletMark* mark = Rebuild(source, order);
  EXPECT(ParchletAddAnnotationFromRemote(other->engine, "doc", "page", mark) == PARCHLET_YES);
  EXPECT(ParchletAddAnnotationFromRemote(author->engine, "doc", "page", mark) == PARCHLET_YES);
  ParchletMarkFree(mark);
}

/* Draws a line from (10, 40) to (110, 40), seen by both; gives its id in `id`. */
static void DrawALine(Participant* ada, Participant* grace, ParchletTexts* id) {
  ParchletTexts* page = ParchletTextsNew();
  const ParchletMark* drawn;
  EXPECT(ParchletSetPen(ada->engine, kBlue, 6) == PARCHLET_YES);
  EXPECT(ParchletSetAnnotationType(ada->engine, PARCHLET_TYPE_DRAWING, PARCHLET_LINE) ==
         PARCHLET_YES);
  EXPECT(ParchletStartDrawing(ada->engine, "doc", "page", 10, 40) == PARCHLET_YES);
  EXPECT(ParchletMoveDrawing(ada->engine, 110, 40) == PARCHLET_YES);
  EXPECT(ParchletGetCurrentAnnotationInfo(ada->engine, id, NULL, page) == PARCHLET_YES);
  EXPECT(strlen(ParchletTextsAt(id, 0)) == 36 && strcmp(ParchletTextsAt(page, 0), "page") == 0);
  EXPECT(ParchletEndDrawing(ada->engine) == PARCHLET_YES);
  EXPECT(ParchletEndDrawing(ada->engine) == PARCHLET_NO);
  drawn = ParchletGetLocalAnnotation(ada->engine, "doc", "page", ParchletTextsAt(id, 0));
  EXPECT(drawn != NULL && ParchletIsPointAnnotation(ada->engine, drawn) == PARCHLET_NO);
  Relay(drawn, 1, ada, grace);
  ParchletTextsFree(page);

  LookAtTheSame(ada, grace);
  EXPECT(At(grace, 60, 40) == kBlue && At(grace, 60, 20) == kWhite);
}

int main(void) {
  static Participant ada;
  static Participant grace;
  ParchletTexts* id = ParchletTextsNew();
  Join(&ada, "ada");
  Join(&grace, "grace");
  DrawALine(&ada, &grace, id);
  EXPECT(ParchletEraseAnnotation(grace.engine, "doc", "page", "ada", ParchletTextsAt(id, 0)) ==
         PARCHLET_YES);
  EXPECT(ParchletEraseAnnotationFromRemote(ada.engine, "doc", "page", "ada",
                                           ParchletTextsAt(id, 0)) == PARCHLET_YES);
  LookAtTheSame(&ada, &grace);
  EXPECT(At(&ada, 60, 40) == kWhite);
  ParchletTextsFree(id);
  Leave(&ada);
  Leave(&grace);
  printf("version %s: both saw the same page\n", ParchletVersion());
  return 0;
}
