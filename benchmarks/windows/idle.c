/* idle.c - the processor time of a page of 500 paths of 200 points on which nothing happens, by one
 * DLL after the other.
 *   parchlet-idle.exe DLL... */
#include <stdio.h>
#include <stdlib.h>

#include <windows.h>

#include <parchlet/parchlet_c.h>

enum { kWidth = 1920, kHeight = 1080, kPaths = 500, kPoints = 200, kSeconds = 10 };

#define FIND(name) ((__typeof__(&name))(void*)GetProcAddress(library, #name))

/* What a host of GDI+ does before it makes a page; the other painter is not changed by it. */
static void StartGdiplus(void) {
  typedef int(WINAPI * Startup)(ULONG_PTR * token, const void* input, void* output);
  static const struct {
    UINT32 version;
    void* callback;
    BOOL flags[2];
  } input = {1, NULL, {FALSE, FALSE}};
  ULONG_PTR token = 0;
  HMODULE gdiplus = LoadLibraryA("gdiplus.dll");
  ((Startup)(void*)GetProcAddress(gdiplus, "GdiplusStartup"))(&token, &input, NULL);
}

static double ProcessorSeconds(void) {
  FILETIME times[4];
  double seconds = 0;
  GetProcessTimes(GetCurrentProcess(), &times[0], &times[1], &times[2], &times[3]);
  for (int i = 2; i < 4; ++i) {
    seconds += 1e-7 * (double)((ULONGLONG)times[i].dwHighDateTime << 32 | times[i].dwLowDateTime);
  }
  return seconds;
}

static void AddPath(HMODULE library, ParchletEngine* engine, int number) {
  const ParchletPen pen = {0xFF000000U | (uint32_t)number * 7919U % 0x1000000U, 6, 0};
  static ParchletPoint points[kPoints];
  ParchletMark* mark = FIND(ParchletMarkNew)();
  char id[16];
  snprintf(id, sizeof id, "%d", number);
  points[0].xRatio = rand() / (RAND_MAX + 1.0);
  points[0].yRatio = rand() / (RAND_MAX + 1.0);
  for (int i = 1; i < kPoints; ++i) {
    points[i].xRatio = points[i - 1].xRatio + (rand() % 9 - 4) / (double)kWidth;
    points[i].yRatio = points[i - 1].yRatio + (rand() % 9 - 4) / (double)kHeight;
  }
  FIND(ParchletMarkInit)(mark, &pen, PARCHLET_TYPE_DRAWING, PARCHLET_PATH, "grace", "", "");
  FIND(ParchletMarkSetAnnotationId)(mark, id);
  FIND(ParchletMarkSetSubModelIndex)(mark, 0);
  FIND(ParchletMarkInsertPoints)(mark, 0, points, kPoints);
  FIND(ParchletAddAnnotationFromRemote)(engine, "doc", "page", mark);
  FIND(ParchletMarkFree)(mark);
}

static void Measure(const char* dll, HWND window) {
  const ParchletPageInfo info = {0, 0, kWidth, kHeight, 0, {0, 0, kWidth, kHeight}, 0};
  HMODULE library = LoadLibraryA(dll);
  ParchletEngine* engine = FIND(ParchletEngineNew)();
  double before;
  FIND(ParchletInit)(engine);
  FIND(ParchletNewDoc)(engine, "ada", "doc");
  FIND(ParchletNewPage)(engine, "doc", "page", "ada", window, &info);
  for (int i = 0; i < kPaths; ++i) {
    AddPath(library, engine, i);
  }
  Sleep(3000); /* the first frames are painted in full */
  before = ProcessorSeconds();
  Sleep(kSeconds * 1000);
  printf("%s: %.3f s of processor time in %d s\n", dll, ProcessorSeconds() - before, kSeconds);
  FIND(ParchletDestroy)(engine);
  FIND(ParchletEngineFree)(engine);
  FreeLibrary(library);
}

int main(int argc, char** argv) {
  HWND window = CreateWindowExW(WS_EX_LAYERED, L"STATIC", L"", WS_POPUP, 0, 0, kWidth, kHeight,
                                NULL, NULL, GetModuleHandleW(NULL), NULL);
  StartGdiplus();
  for (int i = 1; i < argc; ++i) {
    srand(1);
    Measure(argv[i], window);
  }
  return 0;
}
