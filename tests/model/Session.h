// A generated host: makes every call to the engine and to its plain model, and compares.
#pragma once

#include <cstdint>
#include <deque>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include <parchlet/ILogger.h>
#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "model/Decisions.h"
#include "model/PlainEngine.h"
#include "support/ReplacedClock.h"
#include "support/TemporaryFolder.h"

// The engine and its model part; the message tells where, and the calls that led there.
class Difference : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Keeps the records of the engine, as "LEVEL FUNCTION: MESSAGE".
class Records final : public ILogger {
 public:
  Records() { SetLogger("SDK", this); }
  ~Records() override { SetLogger("SDK", nullptr); }
  Records(const Records&) = delete;
  Records& operator=(const Records&) = delete;

  void Write(int level, const std::string& line) override;

  std::vector<std::string> lines;
};

// The one host thread of an engine. It keeps to the contract and to nothing else: a pointer is not
// used after the call that deletes its mark. One at a time, for the sake of clock and logger.
//
// With `isPaintedAtOnce` every call is followed by a frame, so that frames which other threads
// paint between the calls change nothing and need not be known to the model; the clock then stands.
class Session {
 public:
  Session(std::function<std::uint8_t()> decisions, bool isPaintedAtOnce);

  // Starts the engine's own refresh timer; only for a session that is painted at once.
  void Start();
  // Makes one call and compares; throws Difference.
  void MakeOneCall();
  std::uint64_t CallCount() const { return callCount; }
  Parchlet& Engine() { return *engine; }

 private:
  using Call = void (Session::*)();
  using Ids = std::vector<std::string>;
  using PointList = std::vector<AnnotationPoint>;

  // An object that is still this host's, to be handed over again.
  struct Held {
    std::unique_ptr<Annotation> object;
    PlainMarkPtr plain;
  };
  struct Known {
    std::string doc, page;
    PlainPage* plain;
  };

  Call AnyCall();
  // --- Calls ---
  void ChangeSettings();
  void StartAndStop();
  void ChangeDocuments();
  void AddPage();
  void ResizePage();
  void Navigate();
  void ChangeAWindow();
  void AskForEverything();
  void Refresh();
  void PassTime();

  void StartDrawing();
  void MoveDrawing();
  void EndDrawing();
  void PlacePicture();
  void SavePage();
  void StartSelecting();
  void MoveSelecting();
  void MoveSelecting(POINT point);
  void Press(const Known& at, const std::string& author, const std::string& subId, POINT point);
  void EndSelecting();
  void GrabSelection();
  void AskEraser();
  void Erase();

  void ReceiveMark();
  void ReceiveHeldAgain();
  void ReceiveThePagesOwn();
  void ChangeAMark();

  // --- Choosing ---
  // Ids that mostly name a page.
  Known AnyPage();
  std::string AnyMarkIdOn(const PlainPage* page);
  std::string AnyAuthorOn(const PlainPage* page);
  std::vector<PlainMarkPtr> MarksOf(const PlainPage& page) const;
  PlainMarkPtr AnyMark();
  MemoryWindow& AnyWindow();
  template <class Map>
  const auto& AnyOf(const Map& map) {
    return *std::next(map.begin(), any.Below(static_cast<int>(map.size())));
  }
  // Mostly a few pixels off a line of some mark.
  POINT AnyPointNearMarksOf(const PlainPage* page);
  // Keeps the object when the page does not take it.
  void HandOver(const Known& to, Held given);
  Held MakePeersMark(const Known& to);

  // Gives the model's mark the id and the object of the engine's new pending one.
  void Adopt(const Known& at, const PlainMarkPtr& mark);

  // --- Comparing ---
  // Makes the call to the engine and to the model. Returns what both say.
  template <class Act, class... Told>
  auto Both(const char* name, const Act& act, const Told&... told) {
    Trace(name, told...);
    if constexpr (std::is_void_v<decltype(act(plain))>) {
      act(*engine);
      act(plain);
    } else {
      auto engines = act(*engine);
      Same(name, engines, act(plain));
      return engines;
    }
  }
  template <class Act>
  auto OnPage(const Known& at, const Act& act) {
    return PlainEngine::On(plain.FindPage(at.doc, at.page), act);
  }
  template <class T>
  void Same(const std::string& what, const T& engines, const T& models) {
    if (!(engines == models)) {
      Part(what, Text(engines), Text(models));
    }
  }
  void SameObject(const std::string& what, Annotation* engines, const PlainMarkPtr& models);
  void SameMark(const std::string& where, const Annotation& engines, const PlainMark& models);
  void SameMarks(const std::string& where, const std::map<std::string, Annotation*>& engines,
                 const PlainPage::Marks& models);
  void SamePage(const std::string& doc, PlainPage& page);
  void SameEverywhere();
  [[noreturn]] void Part(const std::string& what, const std::string& engines,
                         const std::string& models);
  static std::string Text(const std::string& value) { return "\"" + value.substr(0, 36) + "\""; }
  static std::string Text(long long value) { return std::to_string(value); }
  static std::string Text(POINT at) { return Text(at.x) + "," + Text(at.y); }
  static std::string Text(const Known& at) { return Text(at.doc) + " " + Text(at.page); }
  static std::string Text(const Ids& values);
  static std::string Text(const RECT& box);
  static std::string Text(const AnnotationPageInfo& info);
  static std::string Text(const Annotation::SubModels& points);

  // Keeps what is said of the latest calls, for the report of a difference.
  template <class... Told>
  void Trace(std::string call, const Told&... told) {
    ((call += " " + Text(told)), ...);
    Keep(call);
  }
  void Keep(const std::string& call);
  void PaintModel();
  // After each call to the engine, where several make one call here.
  void Settle();
  TemporaryFolder& Folder();

  Decisions any;
  bool isPaintedAtOnce;
  ReplacedClock clock{1'000'000};
  std::uint64_t tick = 1'000'000;
  std::optional<TemporaryFolder> folder;            // made for the first file
  static const std::vector<std::string> kPictures;  // the bytes of files; the last is no picture
  Records records;
  std::deque<MemoryWindow> windows;
  HWND deadWindow = nullptr;
  PlainEngine plain;
  std::unique_ptr<Parchlet> engine;
  std::deque<Held> held;
  std::deque<std::string> trace;
  std::uint64_t callCount = 0;
};
