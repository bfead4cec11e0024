#include "threads/StormyHost.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/image/Picture.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {64, 48};

// Writes a picture file and gives its bytes.
std::string MakePicture(const std::string& path, PictureEncoder encoder, int width, int height) {
  const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height), 0xC0A08060);
  EXPECT_TRUE(SavePicture({pixels.data(), width, height, width * 4L}, encoder, path));
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

StormyHost::StormyHost(unsigned seed) : random(seed) {
  for (int i = 0; i < 3; ++i) {
    windows.emplace_back(RECT{0, 0, kSize.width, kSize.height});
  }
  pictures = {MakePicture(folder.File("0"), PictureEncoder::kPng, kSize.width, kSize.height),
              MakePicture(folder.File("1"), PictureEncoder::kJpeg, 20, 30),
              MakePicture(folder.File("2"), PictureEncoder::kBmp, 300, 5), "no picture"};
}

void StormyHost::MakeCalls(int count, const std::function<void()>& pause) {
  constexpr int kCallsInARow = 10;
  for (int i = 0; i < count; ++i) {
    MakeOneCall();
    if (i % kCallsInARow == 0) {
      pause();
    }
  }
}

void StormyHost::EndOn(MemoryWindow& window) {
  engine.NewDoc("ada", "last");
  engine.NewPage("last", "page", "ada", window.Handle(), PageOf(kSize.width, kSize.height));
  engine.AddAnnotationFromRemote("last", "page",
                                 Mark("m").By("bob").Box(kSize, 10, 10, 20, kRed).Release());
}

void StormyHost::MakeOneCall() {
  static constexpr struct {
    void (StormyHost::*call)();
    int weight;
  } kCalls[] = {{&StormyHost::Draw, 12},
                {&StormyHost::ReadAndChangeAMark, 13},
                {&StormyHost::PlaceAPicture, 3},
                {&StormyHost::Export, 2},
                {&StormyHost::SelectAndMove, 6},
                {&StormyHost::ReceiveNewMark, 8},
                {&StormyHost::ReceiveEcho, 8},
                {&StormyHost::ReceiveFragment, 4},
                {&StormyHost::ReceiveThePagesOwn, 2},
                {&StormyHost::MoveAndMeetAnEcho, 6},
                {&StormyHost::EraseAndClear, 6},
                {&StormyHost::Navigate, 6},
                {&StormyHost::Resize, 6},
                {&StormyHost::MoveAWindow, 4},
                {&StormyHost::AskAround, 4},
                {&StormyHost::ChangePages, 3},
                {&StormyHost::Cancel, 3},
                {&StormyHost::ChangeSettings, 2},
                {&StormyHost::ChangeDocuments, 1},
                {&StormyHost::ReplaceAWindow, 1}};
  int left = Any(100);
  for (const auto& [call, weight] : kCalls) {
    left -= weight;
    if (left < 0) {
      (this->*call)();
      return;
    }
  }
}

void StormyHost::ChangeDocuments() {
  const std::string doc = AnyDoc();
  if (OneIn(4)) {
    engine.DelDoc(doc);
    Forget(doc, nullptr);
  } else if (OneIn(4)) {
    engine.Destroy();
    engine.Init();
    if (engine.GetDocCount() == 0) {
      pages.clear();
    }
  }
  engine.NewDoc("ada", doc);
  AddPage(doc);
}

void StormyHost::ChangePages() {
  const std::string doc = AnyDoc();
  if (!OneIn(3)) {
    AddPage(doc);
    return;
  }
  const std::string page = AnyPageId();
  engine.DelPage(doc, page);
  Forget(doc, &page);
}

void StormyHost::AddPage(const std::string& doc) {
  const std::string page = AnyPageId();
  const int before = engine.GetPageCount(doc);
  engine.NewPage(doc, page, "ada", AnyWindow().Handle(), AnyGeometry());
  if (engine.GetPageCount(doc) > before) {
    pages.push_back({doc, page, {}, {}});
  }
}

void StormyHost::Navigate() {
  switch (Any(7)) {
    case 0:
      engine.GotoFirstPage("");
      break;
    case 1:
      engine.GotoLastPage("");
      break;
    case 2:
      engine.GotoNextPage("");
      break;
    case 3:
      engine.GotoPreviousPage("");
      break;
    case 4:
      engine.GotoPage("", Any(5));
      break;
    case 5:
      engine.GotoPage("", AnyPageId());
      break;
    default:
      engine.SetCurrentPage(AnyDoc(), AnyPageId());
  }
}

void StormyHost::ChangeSettings() {
  static constexpr int kSubTypes[] = {0, 0, 0, 10, 14, 15, 19, 20};
  engine.SetPen(static_cast<std::uint32_t>(random()), static_cast<unsigned>(Any(40)));
  engine.SetAnnotationType(AnnotationTypeDrawing,
                           static_cast<AnnotationSubType>(kSubTypes[Any(8)]));
  engine.SetUserInfo(AnyUser(), "sub", "name");
  engine.SetPageBackgroundColor(static_cast<unsigned>(random()));
  engine.SetNicknameTip(static_cast<unsigned>(random()), static_cast<unsigned>(Any(30)),
                        OneIn(2) ? "" : "DejaVu Sans", static_cast<unsigned>(random()));
}

AnnotationPageInfo StormyHost::AnyGeometry() {
  AnnotationPageInfo info = PageOf(kSize.width - Any(8), kSize.height + Any(8));
  info.transparent = OneIn(4);
  if (OneIn(8)) {
    info.viewRect = {};
  }
  return info;
}

void StormyHost::Resize() {
  AnnotationPageInfo info = AnyGeometry();
  if (OneIn(10)) {
    info.width = 1'000'000;
  }
  engine.UpdatePage(AnyDoc(), AnyPageId(), info, !OneIn(4));
}

void StormyHost::Draw() {
  if (const KnownPage* page = AnyCurrentPage()) {
    engine.StartDrawing(page->doc, page->page, AnyPoint());
  }
  for (int moves = Any(10); moves > 0; --moves) {
    engine.MoveDrawing(AnyPoint());
  }
  std::string doc;
  std::string pageId;
  const std::string id = engine.GetCurrentAnnotationInfo(doc, pageId);
  for (KnownPage& known : pages) {
    // The drawing in progress may be confirmed, even moved, already; what is pending of it then
    // goes with the next echo.
    if (!id.empty() && known.doc == doc && known.page == pageId && !known.confirmed.contains(id)) {
      Annotation* local = engine.GetLocalAnnotation(doc, pageId, id);
      if (local != nullptr) {
        known.pending[id] = local;
      }
    }
  }
  if (!OneIn(3)) {
    engine.EndDrawing();
  }
}

void StormyHost::ReceiveNewMark() {
  KnownPage* page = AnyPage();
  if (page == nullptr) {
    return;
  }
  const std::string id = "mark" + std::to_string(page->nextMark++);
  Mark mark(id);
  mark.By("user0").Order(Any(5)).Pen(static_cast<std::uint32_t>(random()), Any(40), Any(2));
  mark.Shape(static_cast<AnnotationSubType>(OneIn(2) ? 0 : 15));
  mark.Fragment(OneIn(5) ? 1 : 0);
  mark.Points(kSize, {AnyPoint(), AnyPoint(), AnyPoint()});
  Annotation* made = mark.Release();
  made->nickname = OneIn(2) ? "Ann" : "\xE5\xAE\x89";
  engine.AddAnnotationFromRemote(page->doc, page->page, made);
  page->confirmed[id] = made;
}

void StormyHost::ReceiveEcho() {
  KnownPage* page = AnyPage();
  Annotation* drawn = page != nullptr ? Pick(page->pending, Any(100)) : nullptr;
  if (drawn == nullptr) {
    return;
  }
  const auto echo = Mark(drawn->GetAnnotationId())
                        .By(drawn->userId)
                        .Order(Any(5))
                        .Points(kSize, {AnyPoint(), AnyPoint()})
                        .Make();
  engine.AddAnnotationFromRemote(page->doc, page->page, echo.get());
  page->pending.erase(echo->annotationId);
  page->confirmed[echo->annotationId] = drawn;
}

void StormyHost::ReceiveFragment() {
  KnownPage* page = AnyPage();
  Annotation* known = page != nullptr ? Pick(page->confirmed, Any(100)) : nullptr;
  if (known == nullptr) {
    return;
  }
  const auto fragment = Mark(known->GetAnnotationId())
                            .By(known->userId)
                            .Fragment(Any(4))
                            .Points(kSize, {AnyPoint(), AnyPoint()})
                            .Make();
  engine.AddAnnotationFromRemote(page->doc, page->page, fragment.get());
}

void StormyHost::ReceiveThePagesOwn() {
  KnownPage* page = AnyPage();
  Annotation* mark = page != nullptr ? Pick(page->confirmed, Any(100)) : nullptr;
  if (mark == nullptr) {
    return;
  }
  const std::string id = mark->GetAnnotationId();
  Annotation* copy = engine.GetLocalAnnotation(page->doc, page->page, id);
  engine.AddAnnotationFromRemote(page->doc, page->page, copy != nullptr && OneIn(2) ? copy : mark);
}

// A drag of everything, during which echoes and cancellations come, the selection goes, or the
// page.
void StormyHost::MoveAndMeetAnEcho() {
  KnownPage* page = AnyCurrentPage();
  if (page == nullptr) {
    return;
  }
  const std::string doc = page->doc;
  const std::string pageId = page->page;
  engine.StartSelecting(doc, pageId, "", "", {0, 0});
  engine.MoveSelecting({kSize.width, kSize.height});
  engine.EndSelecting();
  engine.StartSelecting(doc, pageId, "", "", AnyPoint());
  for (int moves = 1 + Any(6); moves > 0; --moves) {
    engine.MoveSelecting(AnyPoint());
    const Annotation* moved = Pick(page->confirmed, Any(100));
    if (moved == nullptr) {
      continue;
    }
    const std::string id = moved->GetAnnotationId();
    if (OneIn(2)) {
      engine.CancelAnnotation(doc, pageId, id);
    } else {
      const auto echo = Mark(id)
                            .By(moved->userId)
                            .Fragment(Any(3))
                            .Points(kSize, {AnyPoint(), AnyPoint()})
                            .Make();
      engine.AddAnnotationFromRemote(doc, pageId, echo.get());
    }
  }
  if (OneIn(4)) {
    engine.EraseAnnotations(doc, pageId, "", "", {AnyPoint(), AnyPoint()});
  } else if (OneIn(8)) {
    engine.DelPage(doc, pageId);
    Forget(doc, &pageId);
  }
  engine.MoveSelecting(AnyPoint());
  engine.EndSelecting();
}

void StormyHost::ReadAndChangeAMark() {
  KnownPage* page = AnyPage();
  if (page == nullptr) {
    return;
  }
  Annotation* mark = Pick(OneIn(2) ? page->pending : page->confirmed, Any(100));
  if (mark == nullptr) {
    return;
  }
  engine.IsPointAnnotation(mark);
  mark->GetPoints();
  mark->GetAnnotationId();
  mark->IsSubModelExist(0);
  mark->FindAnnotation({Any(64), Any(48), 0, 0}, OneIn(2));
  const Annotation copy(*mark);
  switch (Any(6)) {
    case 0:
      mark->Erase(1 - mark->IsErased());
      break;
    case 1:
      mark->AddPoint(PointsOn(kSize, {AnyPoint()})[0]);
      break;
    case 2:
      mark->InsertPoints(static_cast<unsigned>(Any(3)), PointsOn(kSize, {AnyPoint(), AnyPoint()}));
      break;
    case 3:
      mark->StartMoving({0, 0, 0.1, 0.1});
      mark->Moving({0, 0, 0.12, 0.08});
      break;
    case 4:
      mark->SetRectEx(kSize);
      break;
    default:
      mark->ClearPoints();
  }
}

void StormyHost::EraseAndClear() {
  const std::string doc = AnyDoc();
  const std::string page = AnyPageId();
  engine.EraseAnnotations(doc, page, AnyUser(), "", {AnyPoint()});
  for (const std::string& id :
       engine.EraseAnnotations(doc, page, AnyUser(), "", {AnyPoint(), AnyPoint()})) {
    engine.EraseAnnotation(doc, page, AnyUser(), id);
  }
  if (OneIn(20)) {
    engine.ClearAnnotations(doc, page, AnyUser(), "");
  }
}

void StormyHost::SelectAndMove() {
  const KnownPage* page = AnyCurrentPage();
  if (page == nullptr) {
    return;
  }
  const POINT pressed = AnyPoint();
  for (int gesture = 0; gesture < 2; ++gesture) {
    engine.StartSelecting(page->doc, page->page, OneIn(4) ? AnyUser() : "", "", pressed);
    for (int moves = gesture == 0 ? 0 : Any(4); moves > 0; --moves) {
      engine.MoveSelecting(AnyPoint());
    }
    engine.EndSelecting();
  }
  for (const auto& [id, mark] : engine.GetSelectedAnnotations(page->doc, page->page)) {
    mark->IsErased();
    if (OneIn(3)) {
      engine.CancelAnnotation(page->doc, page->page, id);
    }
  }
  if (OneIn(2)) {
    engine.EraseSelectedAnnotations(page->doc, page->page);
  }
}

void StormyHost::Cancel() {
  KnownPage* page = AnyPage();
  const Annotation* drawn = page != nullptr ? Pick(page->pending, Any(100)) : nullptr;
  if (drawn == nullptr) {
    return;
  }
  const std::string id = drawn->GetAnnotationId();
  engine.CancelAnnotation(page->doc, page->page, id);
  page->pending.erase(id);
}

void StormyHost::MoveAWindow() {
  const LONG x = Any(100);
  AnyWindow().SetScreenRect({x, x, x + Any(80), x + Any(60)});
}

void StormyHost::ReplaceAWindow() {
  if (OneIn(2)) {
    UnregisterLayeredWindow(windows.front().Handle());
  }
  windows.pop_front();
  windows.emplace_back(RECT{0, 0, kSize.width, kSize.height});
}

void StormyHost::AskAround() {
  std::string doc;
  std::string page;
  engine.GetCurrentPageInfo(doc, page);
  engine.GetDocCreator(doc, page);
  engine.GetPageIndex(AnyDoc(), AnyPageId());
  AnnotationPageInfo info{};
  engine.GetPageSize(AnyDoc(), AnyPageId(), info, OneIn(2));
  engine.FindAnnotation(AnyDoc(), AnyPageId(), "user0", "mark0");
}

void StormyHost::PlaceAPicture() {
  KnownPage* page = AnyPage();
  if (page == nullptr) {
    return;
  }
  const int which = Any(4);
  const bool isBackground = OneIn(2);
  Annotation* placed =
      OneIn(2)
          ? engine.AddPictureFromFile(page->doc, page->page, folder.File(std::to_string(which)), "",
                                      isBackground)
          : engine.AddPictureFromStream(
                page->doc, page->page, pictures[static_cast<std::size_t>(which)], "", isBackground);
  if (placed != nullptr && !isBackground) {
    page->pending[placed->GetAnnotationId()] = placed;
  }
}

// The page's surface, or what the screen shows where a window is.
void StormyHost::Export() {
  static constexpr const char* kNames[] = {"page.png", "page.jpg", "page.bmp"};
  HWND const window = OneIn(2) ? AnyWindow().Handle() : HWND{nullptr};
  if (OneIn(10)) {
    engine.SaveDocument(AnyDoc(), folder.Path().string(), "", window);
  } else {
    engine.SavePage(AnyDoc(), AnyPageId(), folder.File(kNames[Any(3)]), window);
  }
}

StormyHost::KnownPage* StormyHost::AnyPage() {
  return pages.empty() ? nullptr : &pages[static_cast<std::size_t>(Any(100)) % pages.size()];
}

StormyHost::KnownPage* StormyHost::AnyCurrentPage() {
  KnownPage* page = AnyPage();
  if (page != nullptr) {
    engine.SetCurrentPage(page->doc, page->page);
  }
  return page;
}

Annotation* StormyHost::Pick(const std::map<std::string, Annotation*>& marks, int index) {
  if (marks.empty()) {
    return nullptr;
  }
  return std::next(marks.begin(), index % std::ssize(marks))->second;
}

void StormyHost::Forget(const std::string& doc, const std::string* page) {
  std::erase_if(pages, [&](const KnownPage& known) {
    return known.doc == doc && (page == nullptr || known.page == *page);
  });
}
