/* host.h - a host of the C interface, and expectations that say where they failed and end it. */
#ifndef HOST_H
#define HOST_H

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <parchlet/parchlet_c.h>

#define EXPECT(condition)                                           \
  do {                                                              \
    if (!(condition)) {                                             \
      printf("%s:%d: false: %s\n", __FILE__, __LINE__, #condition); \
      exit(1);                                                      \
    }                                                               \
  } while (0)
#define YES(call) EXPECT((call) == PARCHLET_YES)
#define NO(call) EXPECT((call) == PARCHLET_NO)
#define BAD(call) EXPECT((call) == PARCHLET_BAD_ARGUMENT)

#if !defined(DISPLAY_NAME)
#define DISPLAY_NAME "MEMORY-1" /* of 1920 x 1080 pixels */
#endif

enum { kWidth = 120, kHeight = 80, kWider = 130 };

typedef struct Host {
  ParchletEngine* engine;
  ParchletWindow* window;
  ParchletTexts* text;
  uint32_t frame[kWider * kHeight];
} Host;

/* Opens the pages "back" and "page" of that size, of the document "doc". "page" is current. */
static void Open(Host* host, const char* userId, int width, int height) {
  const ParchletRect area = {10, 20, 10 + kWidth, 20 + kHeight};
  const ParchletPageInfo info = {7, 8, width, height, 0, {0, 0, 1, 40}, 0};
  host->engine = ParchletEngineNew();
  host->window = ParchletWindowNew(&area);
  host->text = ParchletTextsNew();
  YES(ParchletSetUserInfo(host->engine, userId, "desk", userId));
  YES(ParchletInit(host->engine));
  YES(ParchletNewDoc(host->engine, userId, "doc"));
  YES(ParchletNewPage(host->engine, "doc", "back", userId, ParchletWindowHandle(host->window),
                      &info));
  YES(ParchletNewPage(host->engine, "doc", "page", userId, ParchletWindowHandle(host->window),
                      &info));
}

static void Close(Host* host) {
  ParchletTextsFree(host->text);
  ParchletEngineFree(host->engine);
  ParchletWindowFree(host->window);
}

/* Whether the list has that one text. */
static int Holds(const ParchletTexts* texts, const char* text) {
  return ParchletTextsCount(texts) == 1 && strcmp(ParchletTextsAt(texts, 0), text) == 0;
}

/* Copies a frame of that width that shows everything done so far. */
static void Look(Host* host, int32_t width) {
  int32_t size[2] = {0, 0};
  /* The frame under way may be older than the last call; the one after it is not. */
  const uint64_t frame = ParchletWindowPresentCount(host->window) + 2;
  YES(ParchletWindowWaitForPresent(host->window, frame, 60000));
  NO(ParchletWindowCopyFrame(host->window, host->frame, 1, NULL, NULL));
  YES(ParchletWindowCopyFrame(host->window, host->frame, kWider * kHeight, &size[0], &size[1]));
  EXPECT(size[0] == width && size[1] == kHeight);
}

#endif
