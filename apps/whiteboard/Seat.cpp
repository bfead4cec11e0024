#include "whiteboard/Seat.h"

#include "whiteboard/Keys.h"

namespace whiteboard {

namespace {

template <class Event>
const Event& As(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

HostWindow::Looks LooksOf(const Seat::Order& order) {
  HostWindow::Looks looks;
  looks.title = order.nickname + " — whiteboard";
  looks.area = order.area;
  looks.smallest = {kSmallestWidth,
                    order.overlay ? kToolbarHeight + kStatusHeight : kSmallestHeight};
  looks.isPanel = order.overlay;
  looks.insistsOnPlace = order.hasNeighbour;
  return looks;
}

template <class PointerEvent>
POINT PointOf(const PointerEvent& event) {
  return {event.event_x, event.event_y};
}

}  // namespace

Seat::Seat(XSession& session, Keyboard& keyboard, Meeting& meeting, const Order& order)
    : session(session),
      keyboard(keyboard),
      meeting(meeting),
      order(order),
      width(order.area.right - order.area.left),
      height(order.area.bottom - order.area.top),
      window(session, LooksOf(order)),
      drops(session, window.Id()),
      canvas(order.overlay ? MakeOverlayCanvas(session, window, order.monitor)
                           : MakeWindowCanvas(window)),
      participant(order.userId, order.nickname, canvas->Handle(), order.overlay),
      hand(participant, meeting) {
  layout = MakeLayout(width, height, meeting.CurrentDocument().CurrentPage().Aspect());
  meeting.Join(participant, canvas->Place(meeting.CurrentDocument().CurrentPage(), layout.page));
  state.nickname = participant.Nickname();
  if (order.overlay) {
    state.style.color = 1;  // stands out on most desktops
  }
  Say("Draw with the mouse. F1 lists every key.");
}

Seat::Wish Seat::Handle(const xcb_generic_event_t& event) {
  if (window.IsCloseRequest(event)) {
    return Wish::kQuit;
  }
  if (const auto dropped = drops.Handle(event)) {
    PlacePictures(*dropped);
    return Wish::kNothing;
  }
  switch (event.response_type & 0x7F) {
    case XCB_KEY_PRESS:
      return HandleKey(As<xcb_key_press_event_t>(event));
    case XCB_BUTTON_PRESS: {
      const auto& press = As<xcb_button_press_event_t>(event);
      const Button* button =
          press.event == window.Id() ? FindButton(buttons, press.event_x, press.event_y) : nullptr;
      if (button != nullptr && press.detail == XCB_BUTTON_INDEX_1) {
        return Do(button->action);
      }
      HandlePress(press);
      break;
    }
    case XCB_BUTTON_RELEASE: {
      const auto& release = As<xcb_button_release_event_t>(event);
      if (release.event == canvas->Window() && release.detail == pressedButton) {
        hand.Release();
      }
      break;
    }
    case XCB_MOTION_NOTIFY:
      HandleMotion(As<xcb_motion_notify_event_t>(event));
      break;
    case XCB_LEAVE_NOTIFY:
      if (As<xcb_leave_notify_event_t>(event).event == window.Id()) {
        state.hovered = {};
        isPainted = false;
      }
      break;
    case XCB_EXPOSE:
      isPainted = isPainted && As<xcb_expose_event_t>(event).window != window.Id();
      break;
    case XCB_CONFIGURE_NOTIFY:
      HandleConfigure(As<xcb_configure_notify_event_t>(event));
      break;
    default:
      break;
  }
  return Wish::kNothing;
}

Seat::Wish Seat::HandleKey(const xcb_key_press_event_t& event) {
  if (!IsOurs(event.event)) {
    return Wish::kNothing;
  }
  const Key key = keyboard.Read(event);
  if (prompt.command == Command::kNone) {
    return Do(ActionOf(key));
  }
  const Answer answer = TypeInto(prompt, key);
  if (answer == Answer::kGiven) {
    TakeAnswer();
  } else if (answer == Answer::kDropped) {
    prompt = {};
  }
  isPainted = false;
  return Wish::kNothing;
}

void Seat::HandlePress(const xcb_button_press_event_t& event) {
  if (event.event != canvas->Window() || hand.IsDown()) {
    return;
  }
  Style style = state.style;
  if (event.detail == XCB_BUTTON_INDEX_3) {
    style.tool = Tool::kErase;
  } else if (event.detail != XCB_BUTTON_INDEX_1) {
    return;
  }
  if (order.overlay) {
    // The overlay cannot have the keyboard focus itself.
    xcb_set_input_focus(session.Get(), XCB_INPUT_FOCUS_POINTER_ROOT, window.Id(), event.time);
  }
  pressedButton = event.detail;
  hand.Press(style, PointOf(event), (event.state & XCB_MOD_MASK_SHIFT) != 0);
}

void Seat::HandleMotion(const xcb_motion_notify_event_t& event) {
  if (event.event == canvas->Window()) {
    hand.Move(PointOf(event));
  } else if (event.event == window.Id()) {
    const Button* button = FindButton(buttons, event.event_x, event.event_y);
    const Action hovered = button != nullptr ? button->action : Action{};
    if (hovered.command != state.hovered.command || hovered.value != state.hovered.value) {
      state.hovered = hovered;
      Say(button != nullptr ? button->hint : "");
    }
  }
}

void Seat::HandleConfigure(const xcb_configure_notify_event_t& event) {
  if (event.window == canvas->Window()) {
    isPlaced = false;
  }
  if (event.window == window.Id() && (event.width != width || event.height != height)) {
    width = event.width;
    height = event.height;
    isPlaced = false;
  }
}

void Seat::Settle() {
  hand.Show();
  if (!isPlaced || seenRevision != meeting.Revision()) {
    Place();
  }
  DescribePage();
  if (!isPainted) {
    isPainted = true;
    state.promptLabel.reset();
    if (prompt.command != Command::kNone) {
      state.promptLabel = prompt.label;
      state.answer = prompt.answer;
    }
    window.Paint([this](cairo_t* painter) { PaintBars(painter, layout, buttons, state); });
  }
}

void Seat::Place() {
  // A stroke in progress has its points on the page at its old size.
  hand.Release();
  const Page& page = meeting.CurrentDocument().CurrentPage();
  layout = MakeLayout(width, height, page.Aspect());
  buttons = MakeButtons(layout, order.overlay);
  window.Resized(width, height);
  participant.Resize(canvas->Place(page, layout.page));
  seenRevision = meeting.Revision();
  isPlaced = true;
  isPainted = false;
}

void Seat::DescribePage() {
  const Document& document = meeting.CurrentDocument();
  const std::string& pageTitle = document.CurrentPage().title;
  const std::string title = pageTitle.empty() ? document.title : pageTitle;
  const std::string page =
      std::to_string(document.current + 1) + " / " + std::to_string(document.pages.size());
  if (title != state.document || page != state.page) {
    state.document = title;
    state.page = page;
    isPainted = false;
  }
}

}  // namespace whiteboard
