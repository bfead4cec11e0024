// Meeting.h - participants who see the same page.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "replay/Board.h"
#include "replay/Network.h"
#include "replay/Options.h"
#include "replay/Participant.h"

namespace replay {

// Participants see different pages: a fault of the engine, not of the input.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws Disagreement, with a message that starts with `name`, unless the frames are equal.
void RequireEqual(const MemoryFrame& drawn, const MemoryFrame& seen, const std::string& name);

// Owns the participants and the network between them: the drawer, a viewer, and the authors, who
// draw as well. What one of them does reaches the others, and marks come back to their authors as
// echoes. Gestures on marks wait until everybody has them and has painted them. One thread.
class Meeting {
 public:
  // With a seed the network is a bad one; see Network.
  Meeting(apps::PageSize size, const std::vector<std::string>& authors,
          std::optional<std::uint64_t> lossySeed);

  // Shows authors' names beside fresh marks from now on, in letters of that size.
  void ShowNames(unsigned int size);

  // Opens a page for all.
  void OpenPage(const std::string& pageId);

  // Returns the author of that name, who must be in the meeting; the drawer for an empty name.
  // RelayDrawing sends what the author draws.
  Participant& Author(const std::string& name);
  void RelayDrawing(Participant& author);

  // See Participant::Place.
  void Place(Participant& author, const PictureSource& picture, const std::vector<POINT>& corners);
  void SetBackground(const PictureSource& picture);

  // The drawer's gestures, in pixels; the others follow.
  void Erase(const std::vector<POINT>& path);
  void Select(POINT from, POINT to);
  // Returns false, and moves nothing, when the first point is on no selected mark.
  bool Drag(const std::vector<POINT>& way);
  void Clear(Clearing clearing);

  // Waits until everybody has every mark and shows it.
  void Settle();

  // Ends the page: drops the drawer's selection, waits until everybody sees everything, and returns
  // what the drawer sees. Throws Disagreement, with the board's name, when the others see something
  // else. Names are not compared: they appear at different times.
  MemoryFrame ClosePage(const std::string& boardName);

  // Write what the drawer sees: the last closed page, in the format of the path's suffix, or all
  // pages, as PNG files named by the time. Throw apps::Failure.
  void SavePage(const std::string& path);
  void SaveDocument(const std::string& folder);

  // Returns the frames pushed to all windows so far.
  std::uint64_t FrameCount() const;

 private:
  Participant& Drawer();
  // `picture`: the bytes of a new picture, else null.
  void Relay(const Annotation& mark, const PictureBytes& picture);
  void EraseUnder(const std::vector<POINT>& path);

  // The drawer, the viewer and the authors.
  std::deque<Participant> participants;
  unsigned int nameSize = 0;  // pixels; 0: names are not shown
  Network network;
  int order = 0;  // of the last mark sent
};

}  // namespace replay
