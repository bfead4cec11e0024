// Seat.h - one participant's place: window, tools, pointer and keys.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "BarPainter.h"
#include "Buttons.h"
#include "Canvas.h"
#include "DropTarget.h"
#include "Hand.h"
#include "HostWindow.h"
#include "Keyboard.h"
#include "Layout.h"
#include "Meeting.h"
#include "Participant.h"
#include "Prompt.h"
#include "Tools.h"

namespace whiteboard {

// Owns the window and the participant who sits at it. Session, keyboard and meeting outlive it. One
// thread's own.
class Seat {
 public:
  struct Order {
    std::string userId;
    std::string nickname;
    RECT area;  // of the window
    bool overlay = false;
    bool hasNeighbour = false;  // the windows are to lie side by side
    std::string monitor;
    std::string exportFolder;
  };
  // What a seat cannot do alone.
  enum class Wish { kNothing, kHelp, kQuit };

  // Throws Failure when the windows cannot be had.
  Seat(XSession& session, Keyboard& keyboard, Meeting& meeting, const Order& order);

  // Does what the event asks for when it is one of this seat's windows'.
  Wish Handle(const xcb_generic_event_t& event);
  // Brings the windows up to date after some events.
  void Settle();
  // Whether that is to be done again soon, even without an event.
  bool IsUnsettled() const { return hand.IsAhead(); }

 private:
  Wish HandleKey(const xcb_key_press_event_t& event);
  void HandlePress(const xcb_button_press_event_t& event);
  void HandleMotion(const xcb_motion_notify_event_t& event);
  void HandleConfigure(const xcb_configure_notify_event_t& event);
  bool IsOurs(xcb_window_t other) const {
    return other == window.Id() || other == canvas->Window();
  }

  Wish Do(const Action& action);
  void DoStyle(const Action& action);
  void DoMarks(Command command);
  void DoPages(Command command);
  void Export(bool wholeDocument);
  void SetClickThrough();
  void Ask(Command command, const std::string& label, const std::string& answer);
  void TakeAnswer();
  void PlacePictures(const std::vector<std::string>& paths);
  void Say(const std::string& message, bool isComplaint = false);

  void Place();
  void DescribePage();

  XSession& session;
  Keyboard& keyboard;
  Meeting& meeting;
  Order order;
  int width;
  int height;
  HostWindow window;
  DropTarget drops;
  std::unique_ptr<Canvas> canvas;
  Participant participant;
  Hand hand;
  xcb_button_t pressedButton = 0;  // that the hand is down with
  Layout layout{};
  std::vector<Button> buttons;
  BarState state;
  Prompt prompt;
  std::uint64_t seenRevision = 0;
  bool isPlaced = false;
  bool isPainted = false;
};

}  // namespace whiteboard
