// Draws and looks: a line, a name beside another's mark, and the page in every picture format, from
// file and back. What this needs besides the library itself, fonts and decoders, is used that way.
// Takes a folder for its files.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>
#include <parchlet/Pictures.h>

// Says where an expectation failed and ends the program.
#define EXPECT(condition)                                    \
  do {                                                       \
    if (!(condition)) {                                      \
      std::printf("%d: not so: %s\n", __LINE__, #condition); \
      std::exit(1);                                          \
    }                                                        \
  } while (false)

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlack = 0xFF000000;

MemoryFrame Show(const MemoryWindow& window) {
  // The frame under way may be older than the last call; the one after it is not.
  EXPECT(window.WaitForPresent(window.PresentCount() + 2, 60'000));
  return window.CopyFrame();
}

// JPEG is a little off.
bool IsBlue(std::uint32_t color) {
  return (color >> 16 & 0xFF) < 40 && (color >> 8 & 0xFF) < 40 && (color & 0xFF) > 215;
}

void OpenPage(Parchlet& engine, const MemoryWindow& window, const std::string& id) {
  EXPECT(engine.NewPage("doc", id, "ada", window.Handle(),
                        {0, 0, 100, 50, false, {0, 0, 100, 50}, kWhite}) == 1);
}

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : ".";
  MemoryWindow window({0, 0, 100, 50});
  Parchlet engine;
  EXPECT(engine.Init() == 1 && engine.NewDoc("ada", "doc") == 1);
  OpenPage(engine, window, "page");
  engine.SetPen(kBlue, 10);
  engine.StartDrawing("doc", "page", {10, 40});
  engine.MoveDrawing({90, 40});
  engine.EndDrawing();
  const auto showsLine = [&] {
    const MemoryFrame frame = Show(window);
    return frame.width == 100 && IsBlue(frame.pixels[40 * 100 + 50]) &&
           !IsBlue(frame.pixels[10 * 100 + 50]);
  };
  EXPECT(showsLine());
  for (const char* extension : {"png", "bmp", "jpg"}) {
    const std::string file = folder + "/page." + extension;
    EXPECT(engine.SavePage("doc", "page", file, std::wstring()) == 1);
    const MemoryFrame frame = window.CopyFrame();
    const std::string copy = folder + "/copy." + extension;
    EXPECT(parchlet::SavePicture({frame.width, frame.height, frame.pixels}, copy));
    EXPECT(ReadAll(copy) == ReadAll(file) && parchlet::DecodePicture(ReadAll(copy)).height == 50);
    EXPECT(!parchlet::SavePicture({100, 51, frame.pixels}, copy) && ReadAll(copy) == ReadAll(file));
    OpenPage(engine, window, extension);
    EXPECT(engine.AddPictureFromFile("doc", extension, file, "", true) != nullptr && showsLine());
  }

  engine.SetNicknameTip(kBlack, 18, "", kGreen);
  Annotation named;
  named.Init({kBlue, 1, 0}, AnnotationTypeDrawing, AnnotationSubTypeLine, "grace", "", "Grace");
  named.SetAnnotationId("mark");
  named.subModelIndex = 0;
  named.InsertPoints(0, {{5, 5, 0.05, 0.1}, {6, 5, 0.06, 0.1}});
  EXPECT(engine.AddAnnotationFromRemote("doc", "jpg", std::make_unique<Annotation>(named)) == 1);
  const MemoryFrame tip = Show(window);
  EXPECT(std::count(tip.pixels.begin(), tip.pixels.end(), kGreen) > 500);
  EXPECT(std::count(tip.pixels.begin(), tip.pixels.end(), kBlack) > 0);  // letters
  std::puts("the line, the files and the name are there");
  return 0;
}
