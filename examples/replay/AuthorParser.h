// AuthorParser.h - the names of those who draw.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace replay {

// Reads the name under "author"; empty when the object has no such key. Throws Failure for anything
// else than a name.
std::string ParseAuthor(const nlohmann::json& object);

}  // namespace replay
