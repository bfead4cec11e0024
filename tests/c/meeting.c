/* meeting.c - what one participant draws, moves and erases is sent to the other through the C
 * interface alone, and both see the same page. */
#include "host.h"

enum { kMoves = 300, kRoom = 4 };

/* Both see the same, and the line at `lineY` alone; nowhere for 0. */
static void LookAtTheSame(Host* one, Host* other, int lineY) {
  Look(one, kWidth);
  Look(other, kWidth);
  EXPECT(memcmp(one->frame, other->frame, sizeof one->frame) == 0);
  for (int y = 20; y <= 60; y += 20) {
    EXPECT(one->frame[y * kWidth + 60] == (y == lineY ? 0xFF0000FF : 0xFFFFFFFF));
  }
}

/* Sends a mark in fragments, the last one first, to both. */
static void Relay(const ParchletMark* source, int32_t order, Host* one, Host* other) {
  ParchletMark* fragments[kRoom];
  ParchletMark* whole;
  size_t count = 0;
  size_t subModels = 0;
  YES(ParchletMarkCopyFragments(source, order, fragments, kRoom, &count));
  EXPECT(count == 2);
  whole = ParchletMarkNewFromFragments((const ParchletMark* const*)fragments, count);
  YES(ParchletMarkGetSubModels(whole, NULL, 0, &subModels));
  EXPECT(subModels == count);
  ParchletMarkFree(whole);
  while (count > 0) {
    --count;
    YES(ParchletAddAnnotationFromRemote(other->engine, "doc", "page", fragments[count]));
    YES(ParchletAddAnnotationFromRemote(one->engine, "doc", "page", fragments[count]));
    ParchletMarkFree(fragments[count]);
  }
}

/* Draws a line at height 40; puts its id in Ada's list. */
static void Draw(Host* ada, Host* grace) {
  const ParchletMark* drawn;
  YES(ParchletSetPen(ada->engine, 0xFF0000FF, 6));
  YES(ParchletSetAnnotationType(ada->engine, PARCHLET_TYPE_DRAWING, PARCHLET_PATH));
  YES(ParchletStartDrawing(ada->engine, "doc", "page", 10, 40));
  for (int i = 0; i < kMoves; ++i) {
    YES(ParchletMoveDrawing(ada->engine, 10 + i / 3, 40));
  }
  YES(ParchletGetCurrentAnnotationInfo(ada->engine, ada->text, NULL, grace->text));
  EXPECT(strlen(ParchletTextsAt(ada->text, 0)) == 36 && Holds(grace->text, "page"));
  YES(ParchletEndDrawing(ada->engine));
  NO(ParchletEndDrawing(ada->engine));
  drawn = ParchletGetLocalAnnotation(ada->engine, "doc", "page", ParchletTextsAt(ada->text, 0));
  NO(ParchletIsPointAnnotation(ada->engine, drawn));
  Relay(drawn, 1, ada, grace);
  LookAtTheSame(ada, grace, 40);
}

static void Move(Host* ada, Host* grace, const char* id) {
  ParchletMark* selected[2] = {NULL, NULL};
  /* A rubber band around the line first. */
  YES(ParchletStartSelecting(ada->engine, "doc", "page", "", "", 1, 79));
  NO(ParchletMoveSelecting(ada->engine, 119, 1));
  NO(ParchletEndSelecting(ada->engine));
  YES(ParchletStartSelecting(ada->engine, "doc", "page", "", "", 60, 40));
  YES(ParchletMoveSelecting(ada->engine, 60, 60));
  YES(ParchletEndSelecting(ada->engine));
  EXPECT(ParchletGetSelectedAnnotations(ada->engine, "doc", "page", selected, 2) == 1);
  Relay(selected[0], 2, ada, grace);
  EXPECT(ParchletEraseSelectedAnnotations(ada->engine, "doc", "page", grace->text) == 1);
  EXPECT(Holds(grace->text, id));
  LookAtTheSame(ada, grace, 60);
}

static void Erase(Host* ada, Host* grace, const char* id) {
  const ParchletPixel path[2] = {{60, 50}, {60, 70}};
  YES(ParchletFindAnnotation(grace->engine, "doc", "page", "ada", id));
  NO(ParchletFindAnnotation(grace->engine, "doc", "page", id, "ada"));
  EXPECT(ParchletEraseAnnotations(grace->engine, "doc", "page", "", "", path, 2, grace->text) == 1);
  EXPECT(Holds(grace->text, id));
  YES(ParchletEraseAnnotation(grace->engine, "doc", "page", "ada", id));
  YES(ParchletMarkIsErased(ParchletGetAnnotation(grace->engine, "doc", "page", "ada", id)));
  YES(ParchletEraseAnnotationFromRemote(ada->engine, "doc", "page", "ada", id));
  LookAtTheSame(ada, grace, 0);
}

int main(void) {
  static Host ada;
  static Host grace;
  Open(&ada, "ada", kWidth, kHeight);
  Open(&grace, "grace", kWidth, kHeight);
  NO(ParchletInit(ada.engine));
  Draw(&ada, &grace);
  Move(&ada, &grace, ParchletTextsAt(ada.text, 0));
  Erase(&ada, &grace, ParchletTextsAt(ada.text, 0));
  Close(&ada);
  Close(&grace);
  printf("version %s: both saw the same page\n", ParchletVersion());
  return 0;
}
