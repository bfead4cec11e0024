/* cycles.c - a host in C that loads the DLL when it needs it, draws, and unloads it, a thousand
 * times. Nothing may be left of a cycle: no handle, no memory. parchlet-cycles.exe parchlet.dll
 * [CYCLES] */
#include <stdio.h>
#include <stdlib.h>

#include <windows.h>

#include <psapi.h>

#include <parchlet/parchlet_c.h>

#define FIND(name) ((__typeof__(&name))(void*)GetProcAddress(library, #name))
#define EXPECT(condition)                                           \
  do {                                                              \
    if (!(condition)) {                                             \
      printf("%s:%d: false: %s\n", __FILE__, __LINE__, #condition); \
      exit(1);                                                      \
    }                                                               \
  } while (0)

enum { kWidth = 320, kHeight = 200, kFrameMs = 50, kWarmUp = 50 };

static HMODULE library;
static HWND window;

static void Draw(ParchletEngine* engine) {
  const ParchletPageInfo info = {0, 0, kWidth, kHeight, 0, {0, 0, kWidth, kHeight}, 0};
  ParchletMark* remote = FIND(ParchletMarkNew)();
  const ParchletPen pen = {0xFF2040D0, 9, 0};
  const ParchletPoint points[] = {{0, 0, 0.1, 0.1}, {0, 0, 0.9, 0.9}};
  EXPECT(FIND(ParchletNewDoc)(engine, "ada", "doc") == PARCHLET_YES);
  EXPECT(FIND(ParchletNewPage)(engine, "doc", "first", "ada", window, &info) == PARCHLET_YES);
  EXPECT(FIND(ParchletNewPage)(engine, "doc", "page", "ada", window, &info) == PARCHLET_YES);
  EXPECT(FIND(ParchletSetNicknameTip)(engine, 0xFF000000, 18, "", 0xFFFFE000) == PARCHLET_YES);
  EXPECT(FIND(ParchletStartDrawing)(engine, "doc", "page", 10, 10) == PARCHLET_YES);
  for (int x = 10; x < kWidth; x += 5) {
    EXPECT(FIND(ParchletMoveDrawing)(engine, x, 10 + x / 4) == PARCHLET_YES);
  }
  EXPECT(FIND(ParchletEndDrawing)(engine) == PARCHLET_YES);
  FIND(ParchletMarkInit)
  (remote, &pen, PARCHLET_TYPE_DRAWING, PARCHLET_ELLIPSE, "grace", "", "Grace");
  FIND(ParchletMarkSetAnnotationId)(remote, "m");
  FIND(ParchletMarkSetSubModelIndex)(remote, 0);
  FIND(ParchletMarkInsertPoints)(remote, 0, points, 2);
  EXPECT(FIND(ParchletAddAnnotationFromRemote)(engine, "doc", "page", remote) == PARCHLET_YES);
  FIND(ParchletMarkFree)(remote);
}

/* The engine paints with several threads before some of the cycles end. */
static void Cycle(const char* dll, int number) {
  ParchletEngine* engine;
  library = LoadLibraryA(dll);
  EXPECT(library != NULL);
  engine = FIND(ParchletEngineNew)();
  EXPECT(FIND(ParchletInit)(engine) == PARCHLET_YES);
  Draw(engine);
  if (number % 10 == 0) {
    Sleep(2 * kFrameMs);
  }
  FIND(ParchletDestroy)(engine);
  FIND(ParchletEngineFree)(engine);
  EXPECT(FreeLibrary(library) != FALSE && GetModuleHandleA("parchlet.dll") == NULL);
}

/* How far the tables of handles and of GDI objects are in use, by what new ones get: Wine's own
 * counts of them are 0. */
typedef struct Use {
  DWORD handles;
  DWORD objects;
  long kilobytes;
} Use;

static Use Measure(void) {
  PROCESS_MEMORY_COUNTERS memory = {.cb = sizeof memory};
  HPEN pens[64];
  HANDLE events[64];
  Use use = {0, 0, 0};
  EXPECT(GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory) != FALSE);
  for (int i = 0; i < 64; ++i) {
    pens[i] = CreatePen(PS_SOLID, i, 0);
    use.objects = max(use.objects, LOWORD((ULONG_PTR)pens[i]));
    events[i] = CreateEventW(NULL, FALSE, FALSE, NULL);
    use.handles = max(use.handles, (DWORD)(ULONG_PTR)events[i] / 4);
  }
  for (int i = 0; i < 64; ++i) {
    DeleteObject(pens[i]);
    CloseHandle(events[i]);
  }
  use.kilobytes = (long)(memory.WorkingSetSize / 1024);
  printf("handles to %lu, GDI objects to %lu, %ld KB\n", use.handles, use.objects, use.kilobytes);
  return use;
}

int main(int argc, char** argv) {
  const int cycles = argc > 2 ? atoi(argv[2]) : 1000;
  Use before;
  Use after;
  EXPECT(argc > 1);
  window = CreateWindowExW(WS_EX_LAYERED, L"STATIC", L"", WS_POPUP, 0, 0, kWidth, kHeight, NULL,
                           NULL, GetModuleHandleW(NULL), NULL);
  EXPECT(window != NULL);
  for (int i = 0; i < kWarmUp; ++i) {
    Cycle(argv[1], i);
  }
  before = Measure();
  for (int i = 0; i < cycles; ++i) {
    Cycle(argv[1], i);
  }
  after = Measure();
  /* Of what the compiler's runtime allocates once for each load, 1 to 2 KB stay, as of any DLL that
   * starts a thread. */
  EXPECT(after.handles < before.handles + (DWORD)cycles / 10);
  EXPECT(after.objects < before.objects + (DWORD)cycles / 10);
  EXPECT(after.kilobytes < before.kilobytes + 3L * cycles);
  printf("%d cycles\n", cycles);
  return 0;
}
