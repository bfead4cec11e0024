// Meeting.h - participants who see the same page.
#pragma once

#include <cstdint>
#include <deque>
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

// Owns the participants and what lies between them: one draws, one looks on, and every author by
// name draws as well. Whatever one of them does reaches the others, and marks come back to those
// who drew them. Gestures on marks that are there already wait until everybody has them and has
// painted them. One thread's own.
class Meeting {
 public:
  // With a seed the network between the participants is a bad one; see Network.
  Meeting(PageSize size, const std::vector<std::string>& authors,
          std::optional<std::uint64_t> lossySeed);

  // From now on authors' names appear beside fresh marks, in letters of that size.
  void ShowNames(unsigned int size);

  // Opens a page for all.
  void OpenPage(const std::string& pageId);

  // The author of that name, who must be one of the meeting's, or, for an empty one, the drawer.
  // What is drawn goes out with RelayDrawing.
  Participant& Author(const std::string& name);
  void RelayDrawing(Participant& author);

  // See Participant::Place.
  void Place(Participant& author, const PictureSource& picture, const std::vector<POINT>& corners);
  void SetBackground(const PictureSource& picture);

  // The drawer's gestures, in pixels; the viewer follows.
  void Erase(const std::vector<POINT>& path);
  void Select(POINT from, POINT to);
  // False, and nothing moved, when the press is on no selected mark.
  bool Drag(const std::vector<POINT>& way);
  void Clear(Clearing clearing);

  // Waits until all have all marks and show them.
  void Settle();

  // Ends the page: drops the drawer's selection, waits until all see everything, and gives what the
  // drawer sees. Throws Disagreement, naming the board, when that is not what the others see, names
  // aside: everybody sees those in their own time.
  MemoryFrame ClosePage(const std::string& boardName);

  // Write what the drawer sees: the page closed last, into a file whose extension tells the format,
  // or all of them, as PNG files named by the time.
  void SavePage(const std::string& path);
  void SaveDocument(const std::string& folder);

  // Pushed to all windows.
  std::uint64_t FrameCount() const;

 private:
  Participant& Drawer();
  // `picture`: its bytes when the mark is one, and new.
  void Relay(const Annotation& mark, const PictureBytes& picture);
  void EraseUnder(const std::vector<POINT>& path);

  // The drawer, the one who looks on, and the authors.
  std::deque<Participant> participants;
  unsigned int nameSize = 0;  // pixels; 0: names are not shown
  Network network;
  int order = 0;  // of the mark relayed last
};

}  // namespace replay
