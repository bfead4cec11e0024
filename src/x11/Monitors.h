// Monitors.h - the monitors of an X11 screen.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <parchlet/Display.h>

#include "x11/Connection.h"

// Asks the server and returns its active monitors, the primary one first; nothing and a text on
// failure. A server without RandR's monitors has one for the whole screen, named "screen".
std::vector<DisplayMonitor> QueryMonitors(const Connection& connection, std::string& error);

// Returns the monitor of that name, or the main one for an empty name; nothing and a text if there
// is none.
std::optional<DisplayMonitor> FindMonitor(const Connection& connection, const std::string& name,
                                          std::string& error);

// Selects the events of RandR that report a change of monitors, and returns the number of its first
// event; 0 on a server without RandR. The root window's structure events report some changes too;
// the caller selects those.
unsigned WatchMonitors(const Connection& connection);
