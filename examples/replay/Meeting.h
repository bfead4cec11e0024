// Meeting.h - two participants who see the same page.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "Board.h"
#include "Network.h"
#include "Options.h"
#include "Participant.h"

namespace replay {

// Throws Disagreement, with a message that starts with `name`, unless the frames are equal.
void RequireEqual(const MemoryFrame& drawn, const MemoryFrame& seen, const std::string& name);

// Owns the participants and what lies between them: whatever the drawer does reaches the viewer,
// and the drawer's marks come back to the drawer as well. Gestures on marks that are there already
// wait until both have them and have painted them. One thread's own.
class Meeting {
 public:
  // With a seed the network between the participants is a bad one; see Network.
  Meeting(PageSize size, std::optional<std::uint64_t> lossySeed);

  // Opens a page for both.
  void OpenPage(const std::string& pageId);

  // The one who draws; what is drawn goes out with RelayDrawing.
  Participant& Drawer();
  void RelayDrawing();

  // The drawer's gestures, in pixels; the viewer follows.
  void Erase(const std::vector<POINT>& path);
  void Select(POINT from, POINT to);
  // False, and nothing moved, when the press is on no selected mark.
  bool Drag(const std::vector<POINT>& way);
  void Clear(Clearing clearing);

  // Ends the page: drops the drawer's selection, waits until both see everything, and gives what
  // they see. Throws Disagreement, naming the board, when that is not the same.
  MemoryFrame ClosePage(const std::string& boardName);

  // Pushed to both windows.
  std::uint64_t FrameCount() const;

 private:
  void Relay(const Annotation& mark);
  // Waits until both have all marks and show them.
  void Settle();
  void EraseUnder(const std::vector<POINT>& path);

  Participant drawer;
  Participant viewer;
  Network network;
  int order = 0;  // of the mark relayed last
};

}  // namespace replay
