// Seat.h - one participant's window, tools, pointer and keys.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "whiteboard/BarPainter.h"
#include "whiteboard/Canvas.h"
#include "whiteboard/DropTarget.h"
#include "whiteboard/Hand.h"
#include "whiteboard/HostWindow.h"
#include "whiteboard/Keyboard.h"
#include "whiteboard/Layout.h"
#include "whiteboard/Meeting.h"
#include "whiteboard/Participant.h"
#include "whiteboard/Prompt.h"
#include "whiteboard/Tools.h"

namespace whiteboard {

// Owns the window and the participant. Session, keyboard and meeting outlive it. One thread.
class Seat {
 public:
  struct Order {
    std::string userId;
    std::string nickname;
    RECT area;  // of the window
    bool overlay = false;
    bool hasNeighbour = false;  // asks the window manager to keep `area`
    std::string monitor;
    std::string exportFolder;
  };
  // What a seat asks the application for.
  enum class Wish { kNothing, kHelp, kQuit };

  // Throws apps::Failure when the windows cannot be created.
  Seat(XSession& session, Keyboard& keyboard, Meeting& meeting, const Order& order);

  // Handles the event if it belongs to one of this seat's windows.
  Wish Handle(const xcb_generic_event_t& event);
  // Brings the windows up to date after events.
  void Settle();
  // Returns whether Settle is needed soon, even without an event.
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
  xcb_button_t pressedButton = 0;  // of the current gesture
  Layout layout{};
  std::vector<Button> buttons;
  BarState state;
  Prompt prompt;
  std::uint64_t seenRevision = 0;
  bool isPlaced = false;
  bool isPainted = false;
};

}  // namespace whiteboard
