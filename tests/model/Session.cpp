#include "model/Session.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "support/Mark.h"
#include "support/TestAccess.h"

namespace {

constexpr std::size_t kTraceLength = 40;

}  // namespace

const std::vector<std::string> Session::kPictures = {kBitmapFile, "no picture"};

void Records::Write(int level, const std::string& line) {
  const std::size_t blank = line.find(' ');
  const std::size_t end = line.find(']');
  lines.push_back(std::to_string(level) + " " + line.substr(blank + 1, end - blank - 1) + ": " +
                  line.substr(end + 1));
}

Session::Session(std::function<std::uint8_t()> decisions, bool isPaintedAtOnce)
    : any(std::move(decisions)), isPaintedAtOnce(isPaintedAtOnce) {
  windows.emplace_back(RECT{0, 0, 64, 48});
  windows.emplace_back(RECT{-20, 10, 60, 40});
  deadWindow = MemoryWindow({0, 0, 9, 9}).Handle();
  engine = std::make_unique<Parchlet>();
  plain.log.emplace_back("2 Parchlet::Parchlet: constructor");
}

void Session::Keep(const std::string& call) {
  trace.push_back(call);
  if (trace.size() > kTraceLength) {
    trace.pop_front();
  }
}

Session::Call Session::AnyCall() {
  static constexpr struct {
    Call call;
    int weight;
  } kCalls[] = {{&Session::ReceiveMark, 36},
                {&Session::ReceiveHeldAgain, 8},
                {&Session::ReceiveThePagesOwn, 4},
                {&Session::ChangeAMark, 12},
                {&Session::StartDrawing, 16},
                {&Session::MoveDrawing, 16},
                {&Session::EndDrawing, 4},
                {&Session::PlacePicture, 4},
                {&Session::SavePage, 1},
                {&Session::StartSelecting, 14},
                {static_cast<Call>(&Session::MoveSelecting), 16},
                {&Session::EndSelecting, 6},
                {&Session::GrabSelection, 24},
                {&Session::AskEraser, 16},
                {&Session::Erase, 17},
                {&Session::ChangeSettings, 7},
                {&Session::StartAndStop, 1},
                {&Session::ChangeDocuments, 2},
                {&Session::AddPage, 5},
                {&Session::ResizePage, 6},
                {&Session::Navigate, 5},
                {&Session::AskForEverything, 12},
                {&Session::ChangeAWindow, 4},
                {&Session::Refresh, 14},
                {&Session::PassTime, 4}};
  const int kinds = static_cast<int>(std::size(kCalls));
  int weights = 0;
  for (const auto& [call, weight] : kCalls) {
    weights += weight;
  }
  int left = (any.Below(256) * 256 + any.Below(256)) % weights;
  int kind = 0;
  while (kind < kinds - 1 && left >= kCalls[kind].weight) {
    left -= kCalls[kind++].weight;
  }
  return kCalls[kind].call;
}

void Session::MakeOneCall() {
  Call call = AnyCall();
  // A host without a page has little to call.
  if (plain.CurrentPage() == nullptr && !any.OneIn(4)) {
    call = plain.current ? &Session::AddPage : &Session::ChangeDocuments;
  }
  ++callCount;
  (this->*call)();
  Settle();
  SameEverywhere();
}

void Session::Start() {
  Same("Init", engine->Init(), 1);
  plain.isInitialised = true;
}

void Session::Settle() {
  if (isPaintedAtOnce) {
    ParchletTestAccess::Refresh(*engine);
    PaintModel();
  }
}

// With the picture files in it, each named by its number.
TemporaryFolder& Session::Folder() {
  if (!folder) {
    folder.emplace();
    for (std::size_t i = 0; i < kPictures.size(); ++i) {
      std::ofstream(folder->File(std::to_string(i)), std::ios::binary) << kPictures[i];
    }
  }
  return *folder;
}

void Session::PaintModel() {
  if (PlainPage* page = plain.CurrentPage()) {
    page->Paint(tick);
  }
}

void Session::Refresh() {
  Trace("refresh");
  const int pushed = ParchletTestAccess::Refresh(*engine);
  // The window may have gone where windows go; see ReplaceAWindow.
  Same("a push", pushed != 0 || isPaintedAtOnce, plain.CurrentPage() != nullptr || isPaintedAtOnce);
  PaintModel();
}

void Session::PassTime() {
  if (isPaintedAtOnce) {
    return;
  }
  static const std::vector<std::uint64_t> waits = {1, 40, 1999, 2000, 2960, 5000, 7999, 8000};
  tick += any.OneOf(waits);
  Trace("the time is", static_cast<long long>(tick));
  clock.Set(tick);
}

Session::Known Session::AnyPage() {
  // The current page is where most things happen.
  if (plain.CurrentPage() != nullptr && !any.OneIn(4)) {
    return {*plain.current, plain.CurrentPage()->id, plain.CurrentPage()};
  }
  if (!any.OneIn(4)) {
    std::vector<Known> known;
    for (auto& [doc, document] : plain.documents) {
      for (auto& [page, model] : document.pages) {
        known.push_back({doc, page, &model});
      }
    }
    if (!known.empty()) {
      return any.OneOf(known);
    }
  }
  const std::string doc = any.DocId();
  const std::string page = any.PageId();
  const bool isThere =
      plain.documents.contains(doc) && plain.documents.at(doc).pages.contains(page);
  return {doc, page, isThere ? &plain.documents.at(doc).pages.at(page) : nullptr};
}

std::vector<PlainMarkPtr> Session::MarksOf(const PlainPage& page) const {
  std::vector<PlainMarkPtr> marks;
  for (const auto& [author, authored] : page.confirmed) {
    for (const auto& [id, mark] : authored) {
      marks.push_back(mark);
    }
  }
  for (const auto& [id, mark] : page.pending) {
    marks.push_back(mark);
  }
  if (page.background != nullptr) {
    marks.push_back(page.background);
  }
  return marks;
}

PlainMarkPtr Session::AnyMark() {
  const Known page = AnyPage();
  std::vector<PlainMarkPtr> marks =
      page.plain != nullptr ? MarksOf(*page.plain) : std::vector<PlainMarkPtr>();
  std::erase_if(marks, [](const PlainMarkPtr& mark) { return mark->object == nullptr; });
  return marks.empty() ? nullptr : any.OneOf(marks);
}

std::string Session::AnyMarkIdOn(const PlainPage* page) {
  const std::vector<PlainMarkPtr> marks =
      page != nullptr ? MarksOf(*page) : std::vector<PlainMarkPtr>();
  return marks.empty() || any.OneIn(3) ? any.MarkId() : any.OneOf(marks)->id;
}

std::string Session::AnyAuthorOn(const PlainPage* page) {
  if (page == nullptr || page->confirmed.empty() || any.OneIn(3)) {
    return any.UserId();
  }
  return AnyOf(page->confirmed).first;
}

POINT Session::AnyPointNearMarksOf(const PlainPage* page) {
  const std::vector<PlainMarkPtr> marks =
      page != nullptr ? MarksOf(*page) : std::vector<PlainMarkPtr>();
  const PlainMarkPtr mark = marks.empty() || any.OneIn(4) ? nullptr : any.OneOf(marks);
  if (mark == nullptr || !mark->HasTwoPoints()) {
    return any.Point();
  }
  const int count = static_cast<int>(mark->points.at(0).size());
  const auto second = mark->points.at(0).begin() + 1 + any.Below(count - 1);
  const auto between = [this](LONG a, LONG b) {
    const std::int64_t value = (any.OneIn(2) ? a : (std::int64_t{a} + b) / 2) + any.Below(17) - 8;
    return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
  };
  const LONG x = between(std::prev(second)->x, second->x);
  return {x, between(std::prev(second)->y, second->y)};
}

MemoryWindow& Session::AnyWindow() {
  return windows[static_cast<std::size_t>(any.Below(static_cast<int>(windows.size())))];
}
