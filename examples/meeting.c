/* meeting.c - two engines in a meeting, through the C interface: what one participant draws, moves
 * and erases is sent to the other, and both see the same page. Ends with status 0 when they do. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <parchlet/parchlet_c.h>

#define CHECK(condition) Check(!!(condition), #condition)
#define YES(call) CHECK((call) == PARCHLET_YES)
#define NO(call) CHECK((call) == PARCHLET_NO)

enum { kWidth = 120, kHeight = 80, kMoves = 300, kRoom = 4 };

static const uint32_t kBlue = 0xFF0000FF;
static const uint32_t kWhite = 0xFFFFFFFF;

/* One of the people in the meeting, with an engine and a window. In a real host this is one
 * process. */
typedef struct Participant {
  ParchletEngine* engine;
  ParchletWindow* window;
  ParchletTexts* ids; /* what the engine's last search found */
  uint32_t frame[kWidth * kHeight];
} Participant;

static void Check(int isSo, const char* what) {
  if (!isSo) {
    printf("not so: %s\n", what);
    exit(1);
  }
}

/* Opens the page "page" of the document "doc". */
static void Join(Participant* who, const char* userId) {
  const ParchletRect area = {0, 0, kWidth, kHeight};
  const ParchletPageInfo info = {0, 0, kWidth, kHeight, 0, {0, 0, kWidth, kHeight}, 0};
  who->engine = ParchletEngineNew();
  who->window = ParchletWindowNew(&area);
  who->ids = ParchletTextsNew();
  YES(ParchletSetUserInfo(who->engine, userId, "desk", userId));
  YES(ParchletInit(who->engine));
  NO(ParchletInit(who->engine)); /* it runs already */
  YES(ParchletNewDoc(who->engine, userId, "doc"));
  YES(ParchletNewPage(who->engine, "doc", "page", userId, ParchletWindowHandle(who->window),
                      &info));
}

/* The engine goes before the window that it pushes frames to. */
static void Leave(Participant* who) {
  ParchletTextsFree(who->ids);
  ParchletEngineFree(who->engine);
  ParchletWindowFree(who->window);
}

static void Look(Participant* who) {
  int32_t width = 0;
  int32_t height = 0;
  /* The frame under way may be older than the last call; the one after it is not. */
  const uint64_t frame = ParchletWindowPresentCount(who->window) + 2;
  YES(ParchletWindowWaitForPresent(who->window, frame, 60000));
  YES(ParchletWindowCopyFrame(who->window, who->frame, kWidth * kHeight, &width, &height));
  CHECK(width == kWidth && height == kHeight);
}

/* Both see the same, and the line at `lineY` alone; nowhere for 0. */
static void LookAtTheSame(Participant* one, Participant* other, int lineY) {
  Look(one);
  Look(other);
  CHECK(memcmp(one->frame, other->frame, sizeof one->frame) == 0);
  for (int y = 20; y <= 60; y += 20) {
    CHECK(one->frame[y * kWidth + kWidth / 2] == (y == lineY ? kBlue : kWhite));
  }
}

/* Stands for the server: numbers the mark and sends it in fragments to both, the author included.
 * Any order of arrival will do; here the last fragment comes first. */
static void Relay(const ParchletMark* mark, int32_t order, Participant* author,
                  Participant* other) {
  ParchletMark* fragments[kRoom];
  ParchletMark* whole;
  size_t count = 0;
  size_t parts = 0;
  YES(ParchletMarkCopyFragments(mark, order, fragments, kRoom, &count));
  CHECK(count == 2);
  /* A server that keeps the board can put them together again. */
  whole = ParchletMarkNewFromFragments((const ParchletMark* const*)fragments, count);
  YES(ParchletMarkGetSubModels(whole, NULL, 0, &parts));
  CHECK(parts == count);
  ParchletMarkFree(whole);
  while (count > 0) {
    --count;
    YES(ParchletAddAnnotationFromRemote(other->engine, "doc", "page", fragments[count]));
    YES(ParchletAddAnnotationFromRemote(author->engine, "doc", "page", fragments[count]));
    ParchletMarkFree(fragments[count]); /* the engines have copies */
  }
}

/* Draws a line at height 40 and writes its id, which is pending until its echo comes. */
static void Draw(Participant* ada, Participant* grace, char* id, size_t room) {
  const ParchletMark* drawn;
  YES(ParchletSetPen(ada->engine, kBlue, 6));
  YES(ParchletSetAnnotationType(ada->engine, PARCHLET_TYPE_DRAWING, PARCHLET_PATH));
  YES(ParchletStartDrawing(ada->engine, "doc", "page", 10, 40));
  for (int i = 0; i < kMoves; ++i) {
    YES(ParchletMoveDrawing(ada->engine, 10 + i / 3, 40));
  }
  YES(ParchletGetCurrentAnnotationInfo(ada->engine, ada->ids, NULL, NULL));
  snprintf(id, room, "%s", ParchletTextsAt(ada->ids, 0));
  YES(ParchletEndDrawing(ada->engine));
  NO(ParchletEndDrawing(ada->engine));
  drawn = ParchletGetLocalAnnotation(ada->engine, "doc", "page", id);
  NO(ParchletIsPointAnnotation(ada->engine, drawn));
  Relay(drawn, 1, ada, grace);
  LookAtTheSame(ada, grace, 40);
}

static void Move(Participant* ada, Participant* grace) {
  ParchletMark* selected[2] = {NULL, NULL};
  /* A rubber band around the line first. */
  YES(ParchletStartSelecting(ada->engine, "doc", "page", "", "", 1, 79));
  NO(ParchletMoveSelecting(ada->engine, 119, 1));
  NO(ParchletEndSelecting(ada->engine));
  /* Then a press on it, which drags it. */
  YES(ParchletStartSelecting(ada->engine, "doc", "page", "", "", 60, 40));
  YES(ParchletMoveSelecting(ada->engine, 60, 60));
  YES(ParchletEndSelecting(ada->engine));
  CHECK(ParchletGetSelectedAnnotations(ada->engine, "doc", "page", selected, 2) == 1);
  Relay(selected[0], 2, ada, grace);
  CHECK(ParchletEraseSelectedAnnotations(ada->engine, "doc", "page", ada->ids) == 1);
  LookAtTheSame(ada, grace, 60);
}

/* The eraser only tells what it touches; whoever decides erases it everywhere. */
static void Erase(Participant* ada, Participant* grace, const char* id) {
  const ParchletPixel path[2] = {{60, 50}, {60, 70}};
  YES(ParchletFindAnnotation(grace->engine, "doc", "page", "ada", id));
  NO(ParchletFindAnnotation(grace->engine, "doc", "page", id, "ada"));
  CHECK(ParchletEraseAnnotations(grace->engine, "doc", "page", "", "", path, 2, grace->ids) == 1);
  CHECK(strcmp(ParchletTextsAt(grace->ids, 0), id) == 0);
  YES(ParchletEraseAnnotation(grace->engine, "doc", "page", "ada", id));
  YES(ParchletMarkIsErased(ParchletGetAnnotation(grace->engine, "doc", "page", "ada", id)));
  YES(ParchletEraseAnnotationFromRemote(ada->engine, "doc", "page", "ada", id));
  LookAtTheSame(ada, grace, 0);
}

int main(void) {
  static Participant ada;
  static Participant grace;
  char id[64];
  Join(&ada, "ada");
  Join(&grace, "grace");
  Draw(&ada, &grace, id, sizeof id);
  Move(&ada, &grace);
  Erase(&ada, &grace, id);
  Leave(&ada);
  Leave(&grace);
  printf("version %s: both saw the same page\n", ParchletVersion());
  return 0;
}
