// Monitors.h - the monitors of an X11 screen.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <parchlet/Display.h>

#include "x11/Connection.h"

// The active monitors as the server tells them, the primary one first; empty with a text when they
// cannot be told. A server without monitors has one of the whole screen, named "screen".
std::vector<DisplayMonitor> QueryMonitors(const Connection& connection, std::string& error);

// The monitor of that name, the main one for an empty name; none with a text when there is none.
std::optional<DisplayMonitor> FindMonitor(const Connection& connection, const std::string& name,
                                          std::string& error);

// The number of the first event of the monitors' extension; 0 on a server without it. Makes those
// events arrive whenever monitors change, as they do on the root window, where structure events are
// to be selected.
unsigned WatchMonitors(const Connection& connection);
