// Which installed fonts answer to a family's name.
#pragma once

#include <optional>
#include <string>

// Gives the installed family (UTF-8, like `name`) that answers to `name`: the family itself, or the
// first installed one among the substitutes that the font system's configuration has for this very
// name; what it falls back to for any name at all does not count. The default family of the home
// platform, in Chinese or English, is answered by the system's Simplified Chinese sans-serif where
// it is not installed. Nothing for an unknown family. Any thread.
std::optional<std::string> FindFontFamily(const std::string& name);
