// Which installed fonts answer to a family's name.
#pragma once

#include <optional>
#include <string>

// Returns the installed family (UTF-8, like `name`) for a family's name: the family itself, or the
// first installed one of the substitutes that the font system's configuration lists for this name.
// Its fallback for unknown names does not count. If the home platform's default family is not
// installed, its Chinese and English names stand for the system's Simplified Chinese sans-serif.
// Nothing for an unknown family. Any thread.
std::optional<std::string> FindFontFamily(const std::string& name);
