// Participant.h - one participant of a meeting: a host without a screen.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "replay/Board.h"
#include "replay/Options.h"

namespace replay {

// Who a participant is to all engines.
struct Identity {
  std::string userId;
  std::string userSubId;
  std::string nickname;
};

// What one participant sends to another, possibly more than once.
struct Message {
  std::shared_ptr<const Annotation> fragment;
  PictureBytes picture;  // of a new picture, else null
};

// Owns a running engine with one document, and the window in memory that shows the current page.
// All functions are about the page opened last. One thread. Every function throws apps::Failure
// when the engine refuses a call.
class Participant {
 public:
  Participant(apps::PageSize size, Identity identity);

  const Identity& Who() const;

  void OpenPage(const std::string& pageId);

  // Sets the style of the next marks; the width is in pixels of this page.
  void TakePen(MarkKind kind, std::uint32_t color, unsigned int width);
  void Press(POINT point);
  void Move(POINT point);
  // Ends the drawing and returns its mark, owned by the page and pending until its echo.
  const Annotation& Release();

  // Places a picture, in the box between two corners, or where the engine puts it when there are
  // none. Returns its mark, owned by the page and pending until its echo.
  const Annotation& Place(const std::string& file, const std::vector<POINT>& corners);
  void SetBackground(const std::string& file);
  // Sets the background from the bytes of the file.
  void SetBackgroundFromRemote(const std::string& bytes);

  // Merges what arrived: another participant's fragment, or the echo of an own one.
  void Receive(const Message& message);

  // Returns the ids of the marks that an eraser touches at a point, or between two.
  std::vector<std::string> FindErased(const std::vector<POINT>& path);
  void Erase(const std::string& userId, const std::string& annotationId);
  // Returns whether the page has a confirmed mark of that author and id.
  bool HasMark(const std::string& userId, const std::string& annotationId);
  // Erases what another participant erased.
  void EraseFromRemote(const std::string& userId, const std::string& annotationId);
  // Erases the author's marks, or everybody's when the author's id is empty.
  void Clear(const Identity& author);

  // Replaces the selection by the marks inside the rectangle.
  void Select(POINT from, POINT to);
  // Drags the selection. Returns false, and moves nothing, when the first point is on no selected
  // mark.
  bool Drag(const std::vector<POINT>& way);
  std::map<std::string, Annotation*> Selected();
  void DropSelection();

  // Shows names beside fresh marks from now on, in letters of that size in pixels. With `seen`
  // false they are invisible, but their time passes.
  void ShowNames(unsigned int letterSize, bool seen);

  // Writes the page as it was last painted, in the format of the path's suffix.
  void SavePage(const std::string& path);
  // Writes all pages as PNG files named by the time.
  void SaveDocument(const std::string& folder);

  // Returns the number of the first frame that certainly shows everything done so far.
  std::uint64_t NextFullFrame() const;
  // Waits for the frame of that number. Throws apps::Failure when no frames come.
  void AwaitFrame(std::uint64_t number) const;
  MemoryFrame CopyFrame() const;
  std::uint64_t FrameCount() const;

 private:
  apps::PageSize size;
  Identity identity;
  MemoryWindow window;  // outlives the engine that pushes to it
  Parchlet engine;
  std::string page;
};

}  // namespace replay
