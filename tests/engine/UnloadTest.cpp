// A host that loads the shared library when it needs it, and unloads it again.
#include <dlfcn.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <parchlet/parchlet_c.h>

namespace {

#define FIND(library, name) reinterpret_cast<decltype(&(name))>(dlsym(library, #name))

constexpr ParchletRect kScreen = {0, 0, 2560, 1440};  // worth several threads a frame

// A frame with a mark and the name of its author, and a search.
void ShowAPage(void* library) {
  ParchletWindow* window = FIND(library, ParchletWindowNew)(&kScreen);
  ParchletEngine* engine = FIND(library, ParchletEngineNew)();
  EXPECT_EQ(PARCHLET_YES, FIND(library, ParchletInit)(engine));
  FIND(library, ParchletSetNicknameTip)(engine, 0xFF000000, 18, "", 0xFFFFE000);
  FIND(library, ParchletNewDoc)(engine, "ada", "doc");
  const ParchletPageInfo page = {0, 0, kScreen.right, kScreen.bottom, 0, kScreen, 0};
  void* handle = FIND(library, ParchletWindowHandle)(window);
  FIND(library, ParchletNewPage)(engine, "doc", "page", "ada", handle, &page);
  ParchletMark* mark = FIND(library, ParchletMarkNew)();
  const ParchletPen pen = {0xFF0000FF, 30, 0};
  FIND(library, ParchletMarkInit)
  (mark, &pen, PARCHLET_TYPE_DRAWING, PARCHLET_ELLIPSE, "grace", "", "Grace");
  FIND(library, ParchletMarkSetAnnotationId)(mark, "m");
  FIND(library, ParchletMarkSetOrder)(mark, 1);
  FIND(library, ParchletMarkSetSubModelIndex)(mark, 0);
  const ParchletPoint points[] = {{0, 0, 0.1, 0.1}, {0, 0, 0.9, 0.9}};
  FIND(library, ParchletMarkInsertPoints)(mark, 0, points, std::size(points));
  EXPECT_EQ(PARCHLET_YES,
            FIND(library, ParchletAddAnnotationFromRemote)(engine, "doc", "page", mark));
  FIND(library, ParchletMarkFree)(mark);
  const auto shown = FIND(library, ParchletWindowPresentCount)(window);
  EXPECT_EQ(PARCHLET_YES, FIND(library, ParchletWindowWaitForPresent)(window, shown + 2, 60'000));
  ParchletTexts* ids = FIND(library, ParchletTextsNew)();
  const ParchletPixel path[] = {{0, kScreen.bottom / 2}, {kScreen.right, kScreen.bottom / 2}};
  const auto erase = FIND(library, ParchletEraseAnnotations);
  EXPECT_EQ(1, erase(engine, "doc", "page", "", "", path, std::size(path), ids));
  FIND(library, ParchletTextsFree)(ids);
  FIND(library, ParchletDestroy)(engine);
  FIND(library, ParchletEngineFree)(engine);
  FIND(library, ParchletWindowFree)(window);
}

// A thread that was joined may be listed for a moment longer.
bool IsTheOnlyThread() {
  for (int patience = 10'000; patience > 0; --patience) {
    if (std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}) == 1) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

bool IsLoaded() {
  std::ifstream maps("/proc/self/maps");
  const std::string text(std::istreambuf_iterator<char>(maps), {});
  return text.find("libparchlet.so") != std::string::npos;
}

TEST(UnloadTest, AfterTheLastEngineAndWindowTheLibraryCanGoAndComeBack) {
  for (int round = 0; round < 4; ++round) {
    void* library = dlopen(PARCHLET_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(nullptr, library) << dlerror();
    ShowAPage(library);
    dlclose(library);
    EXPECT_FALSE(IsLoaded());
    EXPECT_TRUE(IsTheOnlyThread());
  }
}

}  // namespace
