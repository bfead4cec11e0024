// A host that makes any call at any moment, driven by a seed.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "support/TemporaryFolder.h"

// Owns an engine and makes calls to it, at full speed and in any order, as the one host thread. It
// keeps to the contract: a pointer is not used after the call that deletes its mark.
class StormyHost {
 public:
  explicit StormyHost(unsigned seed);

  // Calls `pause` now and then.
  void MakeCalls(int count, const std::function<void()>& pause);
  // Puts the engine into a known state, whatever it was in: a fresh page that holds one red box, in
  // `window`.
  void EndOn(MemoryWindow& window);

  Parchlet& Engine() { return engine; }

 private:
  // A page that exists, and the marks on it that the host knows.
  struct KnownPage {
    std::string doc, page;
    std::map<std::string, Annotation*> pending, confirmed;
    int nextMark = 0;
  };

  void MakeOneCall();
  void ChangeDocuments();
  void ChangePages();
  void AddPage(const std::string& doc);
  void Navigate();
  void ChangeSettings();
  void Resize();
  void Draw();
  void ReceiveNewMark();
  void ReceiveEcho();
  void ReceiveFragment();
  void ReceiveThePagesOwn();
  void ReadAndChangeAMark();
  void EraseAndClear();
  void SelectAndMove();
  void MoveAndMeetAnEcho();
  void Cancel();
  void MoveAWindow();
  void ReplaceAWindow();
  void AskAround();
  void PlaceAPicture();
  void Export();

  int Any(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
  bool OneIn(int chances) { return Any(chances) == 0; }
  std::string AnyDoc() { return "doc" + std::to_string(Any(3)); }
  std::string AnyPageId() { return "page" + std::to_string(Any(3)); }
  std::string AnyUser() { return OneIn(3) ? "" : "user" + std::to_string(Any(2)); }
  POINT AnyPoint() { return {Any(80) - 8, Any(60) - 8}; }
  AnnotationPageInfo AnyGeometry();
  MemoryWindow& AnyWindow() { return windows[static_cast<std::size_t>(Any(3))]; }
  KnownPage* AnyPage();
  // Makes it the current one, when its document is.
  KnownPage* AnyCurrentPage();
  // Some entry, or null.
  static Annotation* Pick(const std::map<std::string, Annotation*>& marks, int index);
  void Forget(const std::string& doc, const std::string* page);

  std::mt19937 random;
  TemporaryFolder folder;
  std::vector<std::string> pictures;  // what files hold, one of them no picture
  std::deque<MemoryWindow> windows;   // they outlive the engine
  Parchlet engine;
  std::vector<KnownPage> pages;
};
