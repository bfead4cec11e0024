/* operations.c - operations of the C interface that a meeting does without reach the engine, with
 * every argument at its place. Usage: operations PNG FOLDER */
#include <dirent.h>
#include <string.h>

#include <parchlet/parchlet_c.h>

#include "expect.h"

enum { kPageWidth = 60, kPageHeight = 30, kWindowWidth = 50, kWindowHeight = 40 };

static const ParchletRect kArea = {10, 20, 10 + kWindowWidth, 20 + kWindowHeight};
static const ParchletPageInfo kPage = {0, 0, kPageWidth, kPageHeight, 0, {0, 0, 1, 1}, 0};

typedef struct Host {
  ParchletEngine* engine;
  ParchletWindow* window;
  ParchletTexts* text;
} Host;

static Host Open(void) {
  Host host = {ParchletEngineNew(), ParchletWindowNew(&kArea), ParchletTextsNew()};
  void* handle = ParchletWindowHandle(host.window);
  EXPECT(ParchletSetUserInfo(host.engine, "ada", "", "Ada") == PARCHLET_YES);
  EXPECT(ParchletInit(host.engine) == PARCHLET_YES);
  EXPECT(ParchletNewDoc(host.engine, "ada", "doc") == PARCHLET_YES);
  EXPECT(ParchletNewPage(host.engine, "doc", "one", "ada", handle, &kPage) == PARCHLET_YES);
  EXPECT(ParchletNewPage(host.engine, "doc", "two", "ada", handle, &kPage) == PARCHLET_YES);
  return host;
}

static void Close(Host* host) {
  ParchletTextsFree(host->text);
  ParchletEngineFree(host->engine);
  ParchletWindowFree(host->window);
}

static int Holds(const ParchletTexts* texts, const char* text) {
  return ParchletTextsCount(texts) == 1 && strcmp(ParchletTextsAt(texts, 0), text) == 0;
}

/* Whether the next whole frame has an area of that colour, and that width. */
static int Shows(const Host* host, uint32_t color, int32_t width) {
  static uint32_t pixels[2 * kWindowWidth * kWindowHeight];
  const size_t capacity = sizeof pixels / sizeof *pixels;
  const uint64_t frame = ParchletWindowPresentCount(host->window) + 2;
  int32_t size[2] = {0, 0};
  int count = 0;
  EXPECT(ParchletWindowWaitForPresent(host->window, frame, 60000) == PARCHLET_YES);
  EXPECT(ParchletWindowCopyFrame(host->window, pixels, capacity, &size[0], &size[1]) ==
         PARCHLET_YES);
  for (int32_t i = 0; i < size[0] * size[1]; ++i) {
    count += pixels[i] == color;
  }
  return count > kWindowWidth && size[0] == width;
}

static void PagesTurnAndGo(void) {
  Host host = Open();
  EXPECT(ParchletSetCurrentPage(host.engine, "doc", "one") == PARCHLET_YES);
  EXPECT(ParchletGetCurrentPageInfo(host.engine, NULL, host.text) && Holds(host.text, "one"));
  EXPECT(ParchletGotoLastPage(host.engine, "doc", host.text) && Holds(host.text, "two"));
  EXPECT(ParchletGotoPreviousPage(host.engine, "doc", host.text) && Holds(host.text, "one"));
  EXPECT(ParchletDelPage(host.engine, "doc", "two") == PARCHLET_YES);
  EXPECT(ParchletIsPageExist(host.engine, "doc", "two") == PARCHLET_NO);
  EXPECT(ParchletIsPageExist(host.engine, "doc", "one") == PARCHLET_YES);
  EXPECT(ParchletGetDocCount(host.engine) == 1);
  EXPECT(ParchletDestroy(host.engine) == PARCHLET_YES && ParchletGetDocCount(host.engine) == 0);
  Close(&host);
}

static void CallsWithoutEffectSayYes(void) {
  Host host = Open();
  EXPECT(ParchletGenerateGuid(host.text) == PARCHLET_YES);
  EXPECT(ParchletIsDocOpened(host.engine, "doc", host.text) == PARCHLET_YES);
  EXPECT(ParchletTextsCount(host.text) == 0 && ParchletGenerateGuid(host.text) == PARCHLET_YES);
  EXPECT(ParchletDuplicatePage(host.engine, "doc", "one", host.text) == PARCHLET_YES);
  EXPECT(ParchletTextsCount(host.text) == 0 && ParchletGetPageCount(host.engine, "doc") == 2);
  EXPECT(ParchletSetZoom(host.engine, "doc", 2, 0, 0) == PARCHLET_YES);
  EXPECT(ParchletSetPageSize(host.engine, "doc", "one", 5, 5) == PARCHLET_YES);
  EXPECT(ParchletSaveAs(host.engine, "doc", "file") == PARCHLET_YES);
  Close(&host);
}

static ParchletMark* MakeLine(const char* userId, const char* nickname) {
  const ParchletPen pen = {0xFF00FF00, 3, 0};
  const ParchletPoint ends[2] = {{6, 3, 0.1, 0.1}, {54, 3, 0.9, 0.1}};
  ParchletMark* mark = ParchletMarkNew();
  EXPECT(ParchletMarkInit(mark, &pen, 1, PARCHLET_LINE, userId, "", nickname) == PARCHLET_YES);
  EXPECT(ParchletMarkSetAnnotationId(mark, "id") == PARCHLET_YES);
  EXPECT(ParchletMarkInsertPoints(mark, 0, ends, 2) == PARCHLET_YES);
  EXPECT(ParchletMarkSetSubModelIndex(mark, 0) == PARCHLET_YES);
  return mark;
}

static void AFrameShowsBackgroundsAndTips(void) {
  const ParchletRect wider = {10, 20, 10 + kWindowWidth + 9, 20 + kWindowHeight};
  Host host = Open();
  int hasTip = 0;
  EXPECT(ParchletSetPageBackgroundColor(host.engine, 0xFF884422) == PARCHLET_YES);
  EXPECT(Shows(&host, 0xFF884422, kWindowWidth));
  EXPECT(ParchletWindowSetScreenRect(host.window, &wider) == PARCHLET_YES);
  EXPECT(Shows(&host, 0xFF884422, kWindowWidth + 9));
  EXPECT(ParchletSetNicknameTip(host.engine, 0xFF00FFFF, 12, "", 0xFF112233) == PARCHLET_YES);
  /* A tip shows for two seconds, which a slow machine may miss: another author has another one. */
  for (int author = 0; author < 20 && !hasTip; ++author) {
    char userId[2] = {(char)('a' + author), '\0'};
    ParchletMark* mark = MakeLine(userId, "N");
    EXPECT(ParchletAddAnnotationFromRemote(host.engine, "doc", "two", mark) == PARCHLET_YES);
    ParchletMarkFree(mark);
    hasTip = Shows(&host, 0xFF112233, kWindowWidth + 9);
  }
  EXPECT(hasTip);
  Close(&host);
}

static void MarksAreFoundAndTakenBack(const char* picture) {
  Host host = Open();
  ParchletMark* mark = MakeLine("grace", "Grace");
  ParchletMark* placed;
  int32_t number = 0;
  EXPECT(ParchletMarkSetOrder(mark, 7) == PARCHLET_YES);
  EXPECT(ParchletMarkGetOrder(mark, &number) == PARCHLET_YES && number == 7);
  EXPECT(ParchletMarkGetSubModelIndex(mark, &number) == PARCHLET_YES && number == 0);
  EXPECT(ParchletAddAnnotationFromRemote(host.engine, "doc", "one", mark) == PARCHLET_YES);
  EXPECT(ParchletFindAnnotation(host.engine, "doc", "one", "grace", "id") == PARCHLET_YES);
  EXPECT(ParchletFindAnnotation(host.engine, "doc", "one", "id", "grace") == PARCHLET_NO);
  EXPECT(ParchletMarkSetPictureFromFile(mark, picture, "own") == PARCHLET_YES);
  EXPECT(ParchletMarkGetPictureProperty(mark, host.text) && Holds(host.text, "own"));
  EXPECT(ParchletMarkDestroy(mark) == PARCHLET_YES);
  EXPECT(ParchletMarkIsSubModelExist(mark, 0) == PARCHLET_NO);
  ParchletMarkFree(mark);

  placed = ParchletAddPictureFromFile(host.engine, "doc", "one", picture, "placed", 0);
  EXPECT(placed != NULL);
  EXPECT(ParchletMarkGetType(placed, NULL, &number) && number == PARCHLET_PNG);
  EXPECT(ParchletMarkGetPictureProperty(placed, host.text) && Holds(host.text, "placed"));
  EXPECT(ParchletMarkGetAnnotationId(placed, host.text) == PARCHLET_YES);
  EXPECT(ParchletGetLocalAnnotation(host.engine, "doc", "one", ParchletTextsAt(host.text, 0)) ==
         placed);
  EXPECT(ParchletCancelAnnotation(host.engine, "doc", "one", ParchletTextsAt(host.text, 0)));
  EXPECT(!ParchletGetLocalAnnotation(host.engine, "doc", "one", ParchletTextsAt(host.text, 0)));
  Close(&host);
}

static long NumberAt(const unsigned char* bytes) {
  return (long)bytes[2] << 8 | bytes[3];
}

/* Takes the PNG files away whose names start with `prefix`; gives how many there were, all of that
 * size, or -1. */
static int TakeAway(const char* folder, const char* prefix, long width, long height) {
  char path[4096];
  unsigned char head[24];
  const struct dirent* entry;
  int count = 0;
  DIR* listing = opendir(folder);
  EXPECT(listing != NULL);
  while ((entry = readdir(listing)) != NULL) {
    if (strncmp(entry->d_name, prefix, strlen(prefix)) == 0) {
      FILE* file;
      EXPECT(snprintf(path, sizeof path, "%s/%s", folder, entry->d_name) < (int)sizeof path);
      file = fopen(path, "rb");
      EXPECT(file != NULL && fread(head, 1, sizeof head, file) == sizeof head);
      fclose(file);
      remove(path);
      if (NumberAt(head + 16) != width || NumberAt(head + 20) != height) {
        count = -1;
        break;
      }
      ++count;
    }
  }
  closedir(listing);
  return count;
}

static void ExportsTakeWhatTheyAreToldOf(const char* folder) {
  Host host = Open();
  void* handle = ParchletWindowHandle(host.window);
  char path[4096];
  EXPECT(snprintf(path, sizeof path, "%s/page.png", folder) < (int)sizeof path);
  EXPECT(ParchletSavePage(host.engine, "doc", "one", path, "MEMORY-1") == PARCHLET_YES);
  EXPECT(TakeAway(folder, "page", 1920, 1080) == 1);
  EXPECT(ParchletSavePage(host.engine, "doc", "one", path, "no display") == PARCHLET_NO);
  EXPECT(ParchletSavePageOfWindow(host.engine, "doc", "one", path, handle) == PARCHLET_YES);
  EXPECT(TakeAway(folder, "page", kWindowWidth, kWindowHeight) == 1);
  EXPECT(ParchletSavePageOfWindow(host.engine, "doc", "one", path, NULL) == PARCHLET_YES);
  EXPECT(TakeAway(folder, "page", kPageWidth, kPageHeight) == 1);
  EXPECT(ParchletSaveDocument(host.engine, "doc", folder, "all", NULL) == PARCHLET_YES);
  EXPECT(TakeAway(folder, "all_", kPageWidth, kPageHeight) == 2);
  EXPECT(ParchletSaveDocumentOfWindow(host.engine, "doc", folder, "all", handle) == PARCHLET_YES);
  EXPECT(TakeAway(folder, "all_", kWindowWidth, kWindowHeight) == 2);
  /* A name without a folder is nowhere. */
  EXPECT(ParchletSavePage(host.engine, "doc", "one", "page.png", NULL) == PARCHLET_NO);
  Close(&host);
}

int main(int argc, char** argv) {
  EXPECT(argc == 3);
  PagesTurnAndGo();
  CallsWithoutEffectSayYes();
  AFrameShowsBackgroundsAndTips();
  MarksAreFoundAndTakenBack(argv[1]);
  ExportsTakeWhatTheyAreToldOf(argv[2]);
  puts("every operation does what it says");
  return 0;
}
