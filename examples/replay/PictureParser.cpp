#include "PictureParser.h"

#include <nlohmann/json.hpp>
#include <string>

#include "AuthorParser.h"
#include "Failure.h"
#include "PointParser.h"

namespace replay {

namespace {

using Json = nlohmann::json;

std::string ParseFile(const Json& object, const char* key) {
  const Json& value = object[key];
  if (value.is_string()) {
    const auto& file = value.get_ref<const std::string&>();
    if (!file.empty() && file.find('\0') == std::string::npos) {
      return file;
    }
  }
  throw Failure("\"" + std::string(key) + "\" must be the name of a picture file");
}

}  // namespace

Placement ParsePlacement(const Json& object) {
  Placement placement;
  placement.author = ParseAuthor(object);
  placement.source.file = ParseFile(object, "picture");
  std::size_t keys = object.contains("author") ? 2 : 1;
  if (object.contains("points")) {
    ++keys;
    placement.corners = ParsePoints(object, "points");
    if (placement.corners.size() != 2) {
      throw Failure("a picture has two points, not " + std::to_string(placement.corners.size()));
    }
  }
  if (object.size() != keys) {
    throw Failure("a picture may have the keys points and author, and no others");
  }
  return placement;
}

Background ParseBackground(const Json& object) {
  return {{ParseFile(object, "background"), nullptr}};
}

}  // namespace replay
