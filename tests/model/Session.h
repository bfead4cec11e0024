// A generated host: makes every call to the engine and to its plain model, and compares.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include <parchlet/ILogger.h>
#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "model/Decisions.h"
#include "model/PlainEngine.h"
#include "support/ReplacedClock.h"
#include "support/TemporaryFolder.h"

// The arguments of Session::Both for that operation of engine and model.
#define CALL(operation, ...)                                                                     \
#operation, [](auto& on, const auto&... with) { return on.operation(with...); } __VA_OPT__(, ) \
                  __VA_ARGS__

// The engine and its model part; the message tells where, and the calls that led there.
struct Difference : std::runtime_error {
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
  void Start() { Both(CALL(Init)); }
  // Makes one call and compares; throws Difference.
  void MakeOneCall();
  Parchlet& Engine() { return *engine; }

 private:
  using Ids = std::vector<std::string>;
  using Marks = std::vector<PlainMarkPtr>;

  // Ids that mostly name a page.
  struct Known {
    std::string doc, page;
    PlainPage* plain;  // `nowhere` when they name none
  };
  // An object that is still this host's, to be handed over again.
  struct Held {
    std::unique_ptr<Annotation> object;
    PlainMarkPtr plain;
  };

  // --- Calls ---
  void ChangeSettings();
  void ChangeDocuments();
  void AddPage();
  void Resize();
  void AskForEverything();
  void SavePage();
  void Refresh();

  void StartDrawing();
  void PlacePicture();
  void ReceiveMark();
  void ChangeAMark();
  void GrabSelection();
  void ReachForMarks();

  // --- Choosing ---
  Known AnyPage();
  std::string AnyMarkIdOn(const PlainPage& page);
  std::string AnyAuthorOn(const PlainPage& page);
  // All of the page's, background included.
  static Marks MarksOf(const PlainPage& page);
  PlainMarkPtr AnyMark();
  MemoryWindow& AnyWindow() { return windows[static_cast<std::size_t>(any.Below(2))]; }
  // Mostly a few pixels off a line of some mark.
  POINT AnyPointNearMarksOf(const PlainPage& page);
  Held MakePeersMark(const Known& to);
  // Keeps the object when the page does not take it.
  void HandOver(const Known& to, Held given);
  // Gives the model's new pending mark the id and the object of the engine's.
  void Adopt(const Known& at);

  // --- Comparing ---
  // Makes the call to the engine and to the model.
  template <class Act, class... With>
  void Both(const char* name, const Act& act, const With&... with) {
    BothTo(*engine, plain, name, act, with...);
  }
  // The same for a part of both.
  template <class E, class M, class Act, class... With>
  void BothTo(E& engines, M& models, const char* name, const Act& act, const With&... with) {
    Trace(name, with...);
    Compare(
        name, [&] { return act(engines, with...); }, [&] { return act(models, with...); });
  }
  // The same for what the engine does on a page. With `kNeedsWindow` it does not look for the page
  // before any page was given a window.
  template <bool kNeedsWindow = false, class Act, class... With>
  void BothOn(const Known& at, const char* name, const Act& act, const With&... with) {
    Trace(name, at.doc, at.page, with...);
    const auto real = [&] { return act(*engine, at.doc, at.page, with...); };
    Compare(name, real, [&] {
      PlainPage* page =
          kNeedsWindow && !plain.hasActiveWindow ? nullptr : plain.FindPage(at.doc, at.page);
      return page != nullptr ? act(*page, with...) : decltype(act(*page, with...)){};
    });
  }
  template <class Real, class Model>
  void Compare(const char* name, const Real& real, const Model& model) {
    if constexpr (std::is_void_v<decltype(real())>) {
      real();
      model();
    } else {
      const auto answer = real();
      Same(name, answer, model());
    }
    Settle();
  }
  template <class E, class M>
  void Same(const std::string& what, const E& engines, const M& models) {
    if (!(engines == models)) {
      Part(what, Text(engines), Text(models));
    }
  }
  void Same(const std::string& what, Annotation* engines, const PlainMarkPtr& models);
  template <class E, class M>
  void Same(const std::string& what, const std::map<std::string, E>& engines,
            const std::map<std::string, M>& models) {
    Same(what, Keys(engines), Keys(models));
    for (const auto& [key, value] : engines) {
      Same(what + " " + Text(key), value, models.at(key));
    }
  }
  void SameMark(const std::string& where, const Annotation& engines, const PlainMark& models);
  void SamePage(const std::string& doc, PlainPage& page);
  void SameEverywhere();
  [[noreturn]] void Part(const std::string& what, const std::string& engines,
                         const std::string& models);

  static auto Parts(const POINT& at) { return std::tie(at.x, at.y); }
  static auto Parts(const CurrentAnnotPageSize& size) { return std::tie(size.width, size.height); }
  static auto Parts(const AnnotationPoint& at) {
    return std::tie(at.x, at.y, at.xRatio, at.yRatio);
  }
  static auto Parts(const RECT& box) { return std::tie(box.left, box.top, box.right, box.bottom); }
  static auto Parts(const AnnotationPageInfo& info) {
    return std::tie(info.userValue1, info.userValue2, info.width, info.height, info.transparent,
                    info.viewRect, info.backgroundColor);
  }
  template <class Tuple>
  static const Tuple& Parts(const Tuple& tuple) {
    return tuple;
  }
  template <class T>
  static std::string Text(const T& value) {
    std::string text;
    const auto add = [&text](const auto&... part) { ((text += Text(part) + " "), ...); };
    if constexpr (std::is_scalar_v<T>) {
      return std::to_string(value);
    } else if constexpr (std::is_convertible_v<T, std::string>) {
      return "\"" + std::string(value).substr(0, 36) + "\"";
    } else if constexpr (requires { value.begin(); }) {
      std::for_each(value.begin(), value.end(), add);
    } else {
      std::apply(add, Parts(value));
    }
    return "(" + text + ")";
  }

  // Keeps what is said of the latest calls, for the report of a difference.
  template <class... Told>
  void Trace(std::string call, const Told&... told) {
    ((call += " " + Text(told)), ...);
    trace.push_back(call);
    if (trace.size() > 40) {
      trace.pop_front();
    }
  }
  void PaintModel();
  // Paints both, where frames are painted at once.
  void Settle();
  TemporaryFolder& Folder();

  Decisions any;
  bool isPaintedAtOnce;
  ReplacedClock clock{1'000'000};
  std::uint64_t tick = 1'000'000;
  std::optional<TemporaryFolder> folder;  // made for the first file
  Records records;
  std::deque<MemoryWindow> windows;  // two
  HWND deadWindow = nullptr;
  PlainEngine plain;
  PlainPage nowhere{{0, 0, 60, 40, false, {0, 0, 60, 40}, 0}};  // without a mark
  std::unique_ptr<Parchlet> engine;
  std::deque<Held> held;
  std::deque<std::string> trace;
  std::uint64_t callCount = 0;
};
