// Places pictures, shows names and exports pages in every way there is, and looks at what comes of
// it. Takes a folder for its files.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include <parchlet/Display.h>

#include "Bmp.h"
#include "Board.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr std::uint32_t kBlack = 0xFF000000;

std::string folder;

std::string File(const std::string& name) {
  return folder + "/" + name;
}

std::string Plain(int width, int height, std::uint32_t color) {
  return MakeBmp(width, height, [=](int, int) { return color; });
}

std::string WriteFile(const std::string& name, const std::string& bytes) {
  std::ofstream(File(name), std::ios::binary) << bytes;
  return File(name);
}

std::set<std::string> ListFolder(const std::string& path) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(path)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

// A page that nobody would guess: a colour for every pixel, and none twice in a row.
std::string Gradient() {
  return MakeBmp(Board::kWidth, Board::kHeight, [](int x, int y) {
    return 0x401000U + 0x020000U * (x / 2) + 0x0400U * y + 2 * x;
  });
}

// Whether a picture file, laid behind a page of its size, shows what `page` does, each channel by
// `tolerance` at most.
bool LooksLike(const std::string& path, const MemoryFrame& page, int tolerance) {
  Board board;
  EXPECT(board.engine.AddPictureFromFile("doc", "page", path, "", true) != nullptr);
  const MemoryFrame seen = board.Show();
  return std::equal(page.pixels.begin(), page.pixels.end(), seen.pixels.begin(), seen.pixels.end(),
                    [&](std::uint32_t a, std::uint32_t b) {
                      bool isNear = true;
                      for (int shift = 0; shift < 32; shift += 8) {
                        const int difference = static_cast<int>(a >> shift & 0xFF) -
                                               static_cast<int>(b >> shift & 0xFF);
                        isNear = isNear && std::abs(difference) <= tolerance;
                      }
                      return isNear;
                    });
}

void PlacePictures() {
  Board board;
  const std::string path = WriteFile("red.bmp", Plain(40, 20, kRed));
  Annotation* placed = board.engine.AddPictureFromFile("doc", "page", path, "note", false);
  EXPECT(placed != nullptr && placed->subType == AnnotationSubTypeBmp);
  EXPECT(placed->userId == "ada" && placed->nickname == "Ada" && placed->pictureProperty == "note");
  EXPECT(board.engine.GetLocalAnnotation("doc", "page", placed->GetAnnotationId()) == placed);
  EXPECT(board.ShowsBox({0, 0, 40, 20}, kRed));

  Annotation echo(*placed);
  echo.subModelIndex = 0;
  EXPECT(board.engine.AddAnnotationFromRemote("doc", "page", &echo) == 1);
  EXPECT(board.engine.GetAnnotation("doc", "page", "ada", echo.GetAnnotationId()) == placed);
  EXPECT(board.ShowsBox({0, 0, 40, 20}, kRed));

  // Wider than the page: half of the page's width, and its own height.
  EXPECT(board.engine.AddPictureFromStream("doc", "page", Plain(300, 30, kGreen), "", false));
  EXPECT(board.ShowsBox({0, 0, 50, 30}, kGreen));
  EXPECT(board.engine.AddPictureFromFile("doc", "page", File("none.bmp"), "", false) == nullptr);
}

void LayBackgrounds() {
  Board board;
  const std::string path = WriteFile("wide.bmp", Plain(40, 10, kBlue));
  EXPECT(board.engine.AddPictureFromFile("doc", "page", path, "", true));
  EXPECT(board.ShowsBox({0, 12, 100, 37}, kBlue));
  EXPECT(board.engine.AddPictureFromStream("doc", "page", Plain(10, 10, kRed), "", true));
  EXPECT(board.ShowsBox({25, 0, 75, 50}, kRed));
  EXPECT(board.engine.AddPictureFromStream("doc", "page", "no picture", "", true) == nullptr);
  EXPECT(board.ShowsBox({25, 0, 75, 50}, kRed));
}

void ShowNames() {
  Board board;
  EXPECT(board.engine.SetNicknameTip(kBlack, 18, "", kGreen) == 1);
  auto* mark = new Annotation;
  mark->Init({kRed, 1, 0}, AnnotationTypeDrawing, AnnotationSubTypeLine, "grace", "", "Grace");
  mark->SetAnnotationId("mark");
  mark->subModelIndex = 0;
  mark->InsertPoints(0, {{5, 10, 0.05, 0.2}, {6, 10, 0.06, 0.2}});
  EXPECT(board.engine.AddAnnotationFromRemote("doc", "page", mark) == 1);
  const MemoryFrame frame = board.Show();
  const auto at = [&](int x, int y) { return frame.pixels[static_cast<std::size_t>(y) * 100 + x]; };
  // Five letters: four units of 18 pixels, and 27 pixels high.
  EXPECT(at(76, 36) == kGreen && at(77, 36) == 0xFFFFFFFF && at(76, 37) == 0xFFFFFFFF);
  EXPECT(std::count(frame.pixels.begin(), frame.pixels.end(), kGreen) > 72 * 27 / 2);
  EXPECT(std::count(frame.pixels.begin(), frame.pixels.end(), kBlack) > 0);  // letters
}

void SaveThePage() {
  Board board;
  EXPECT(board.engine.AddPictureFromStream("doc", "page", Gradient(), "", true));
  const MemoryFrame page = board.Show();
  EXPECT(page.pixels == ReadBmp(WriteFile("gradient.bmp", Gradient())).pixels);
  const std::wstring noDisplay;
  EXPECT(board.engine.SavePage("doc", "page", File("page.bmp"), noDisplay) == 1);
  EXPECT(ReadBmp(File("page.bmp")).pixels == page.pixels);
  EXPECT(board.engine.SavePage("doc", "page", File("page.png"), HWND{}) == 1);
  EXPECT(ReadBytes(File("page.png")).compare(0, 4, "\x89PNG") == 0);
  EXPECT(LooksLike(File("page.png"), page, 0));
  EXPECT(board.engine.SavePage("doc", "page", File("page.jpg"), noDisplay) == 1);
  EXPECT(ReadBytes(File("page.jpg")).compare(0, 3, "\xFF\xD8\xFF") == 0);
  EXPECT(LooksLike(File("page.jpg"), page, 24));
  EXPECT(board.engine.SavePage("doc", "page", File("none/page.png"), noDisplay) == 0);
}

void SaveTheDocument() {
  Board board;
  EXPECT(board.engine.AddPictureFromStream("doc", "page", Gradient(), "", true));
  const MemoryFrame first = board.Show();
  board.AddPage("page 2");
  const MemoryFrame second = board.Show();
  fs::create_directory(File("document"));
  EXPECT(board.engine.SaveDocument("doc", File("document"), "talk", std::wstring()) == 1);
  const std::set<std::string> names = ListFolder(File("document"));
  EXPECT(names.size() == 2);
  // By the time, so in the order of the pages.
  EXPECT(names.begin()->size() == std::string("talk_20221115_124336.123.png").size());
  EXPECT(names.begin()->compare(0, 5, "talk_") == 0);
  EXPECT(LooksLike(File("document/" + *names.begin()), first, 0));
  EXPECT(LooksLike(File("document/" + *names.rbegin()), second, 0));
  EXPECT(board.engine.SaveDocument("doc", File("none"), "", std::wstring()) == 0);
  EXPECT(board.engine.SaveAs("doc", File("as.png")) == 1 && !fs::exists(File("as.png")));
}

// Whether the capture shows the gradient from (left, top) on, and black around it.
bool ShowsTheWindowAt(const Bmp& screen, int left, int top, const MemoryFrame& page) {
  for (int y = 0; y < screen.height; ++y) {
    for (int x = 0; x < screen.width; ++x) {
      const bool isIn = x >= left && x < left + page.width && y >= top && y < top + page.height;
      const std::uint32_t expected =
          isIn ? page.pixels[static_cast<std::size_t>(y - top) * page.width + (x - left)] : kBlack;
      if (screen.At(x, y) != expected) {
        return false;
      }
    }
  }
  return true;
}

void SaveTheScreen() {
  Board board;
  SetMemoryDesktop({{"LEFT", {0, 0, 200, 100}}, {"RIGHT", {200, 0, 280, 60}}}, nullptr, {});
  EXPECT(board.engine.AddPictureFromStream("doc", "page", Gradient(), "", true));
  const MemoryFrame page = board.Show();
  EXPECT(board.engine.SavePage("doc", "page", File("left.bmp"), L"LEFT") == 1);
  const Bmp left = ReadBmp(File("left.bmp"));
  EXPECT(left.width == 200 && left.height == 100 && ShowsTheWindowAt(left, 10, 20, page));
  EXPECT(board.engine.SavePage("doc", "page", File("window.bmp"), board.window.Handle()) == 1);
  EXPECT(ReadBmp(File("window.bmp")).pixels == page.pixels);
  EXPECT(board.engine.SavePage("doc", "page", File("gone.bmp"), L"GONE") == 0);
  EXPECT(!fs::exists(File("gone.bmp")));

  fs::create_directory(File("screens"));
  EXPECT(board.engine.SaveDocument("doc", File("screens"), "", board.window.Handle()) == 1);
  EXPECT(LooksLike(File("screens/" + *ListFolder(File("screens")).begin()), page, 0));
  EXPECT(board.engine.SaveDocument("doc", File("screens"), "", std::wstring(L"RIGHT")) == 1);
  EXPECT(board.engine.SaveDocument("doc", File("screens"), "", std::wstring(L"GONE")) == 0);
  EXPECT(ListFolder(File("screens")).size() == 2);
}

}  // namespace

int main(int argc, char** argv) {
  EXPECT(argc == 2);
  folder = argv[1];
  fs::create_directories(folder);
  PlacePictures();
  LayBackgrounds();
  ShowNames();
  SaveThePage();
  SaveTheDocument();
  SaveTheScreen();
  std::puts("the pictures, names and files are as they should be");
  return 0;
}
