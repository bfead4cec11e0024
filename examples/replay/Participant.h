// Participant.h - one of the people in a meeting: a host without a screen.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "Board.h"
#include "Fragments.h"
#include "Options.h"

namespace replay {

// Who somebody is to the engines, the own one and the others'.
struct Identity {
  std::string userId;
  std::string userSubId;
  std::string nickname;
};

// Owns an engine whose timer runs, one document in it, and the window in memory that the current
// page is pushed to. Everything but the constructor is about the page opened last, and there must
// be one. One thread's own. Every function throws Failure when the engine refuses a call.
class Participant {
 public:
  Participant(PageSize size, Identity identity);

  const Identity& Who() const;

  void OpenPage(const std::string& pageId);

  // Sets what the marks drawn from now on look like; the width is in pixels of this page.
  void TakePen(MarkKind kind, std::uint32_t color, unsigned int width);
  void Press(POINT point);
  void Move(POINT point);
  // Ends the drawing and gives its mark, which the page owns, pending until its echo.
  const Annotation& Release();

  // Places a picture from its file, in the box between two corners or, without them, where the
  // engine does. Gives its mark, which the page owns, pending until its echo.
  const Annotation& Place(const std::string& file, const std::vector<POINT>& corners);
  void SetBackground(const std::string& file);
  // The same for the bytes of a file that a peer has.
  void SetBackgroundFromRemote(const std::string& bytes);

  // Merges what came over the network: a peer's fragment, or the echo of an own one.
  void Receive(const Message& message);

  // The ids of the marks under an eraser at, or on the straight way between, these points.
  std::vector<std::string> FindErased(const std::vector<POINT>& path);
  void Erase(const std::string& userId, const std::string& annotationId);
  // Whether the page has a confirmed mark of that author and id.
  bool HasMark(const std::string& userId, const std::string& annotationId);
  // Erases what a peer erased.
  void EraseFromRemote(const std::string& userId, const std::string& annotationId);
  // Erases the marks of `author`, or everybody's when that one's id is empty.
  void Clear(const Identity& author);

  // Selects the marks inside the rectangle instead of those selected before.
  void Select(POINT from, POINT to);
  // Drags the selection; false, and nothing moved, when the press is on no selected mark.
  bool Drag(const std::vector<POINT>& way);
  std::map<std::string, Annotation*> Selected();
  void DropSelection();

  // From now on names in letters of that size, in pixels, appear beside fresh marks; unseen ones
  // take their time like the others.
  void ShowNames(unsigned int letterSize, bool seen);

  // Writes the page opened last as it was painted last; the extension tells the format.
  void SavePage(const std::string& path);
  // Writes all pages as PNG files named by the time.
  void SaveDocument(const std::string& folder);

  // The number of the first frame that surely shows everything done so far.
  std::uint64_t NextFullFrame() const;
  // Waits until the window has got the frame of that number. Throws Failure when no frames come.
  void AwaitFrame(std::uint64_t number) const;
  MemoryFrame CopyFrame() const;
  std::uint64_t FrameCount() const;

 private:
  PageSize size;
  Identity identity;
  MemoryWindow window;  // outlives the engine that pushes to it
  Parchlet engine;
  std::string page;
};

}  // namespace replay
