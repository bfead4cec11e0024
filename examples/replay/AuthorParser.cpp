#include "AuthorParser.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Failure.h"

namespace replay {

std::string ParseAuthor(const nlohmann::json& object) {
  constexpr std::size_t kMaxNameBytes = 64;
  if (!object.contains("author")) {
    return {};
  }
  const nlohmann::json& value = object["author"];
  if (value.is_string()) {
    const auto& name = value.get_ref<const std::string&>();
    const bool isPrintable = std::none_of(
        name.begin(), name.end(), [](char byte) { return static_cast<unsigned char>(byte) < ' '; });
    if (!name.empty() && name.size() <= kMaxNameBytes && isPrintable) {
      return name;
    }
  }
  throw Failure("\"author\" must be a name of 1 to " + std::to_string(kMaxNameBytes) +
                " bytes without control characters");
}

}  // namespace replay
