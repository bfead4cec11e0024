// Events.h - what kind of event something is.
#pragma once

#include <xcb/xcb.h>

// Returns the event's number, whether the server or another client sent it.
inline unsigned EventNumber(const xcb_generic_event_t& event) {
  return event.response_type & 0x7FU;
}

// Returns the event as one of that number; null if it has another.
template <class Event>
const Event* EventAs(const xcb_generic_event_t& event, unsigned number) {
  return EventNumber(event) == number ? reinterpret_cast<const Event*>(&event) : nullptr;
}
