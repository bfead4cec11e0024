// Text as the lines that are drawn.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Splits text where a new line begins: after \n, \r, the pair of both, U+2028 and U+2029. A tab
// becomes spaces up to the next multiple of eight, any other control character one space. Text is
// cut after `maxUnits`.
std::vector<std::wstring> SplitLines(std::wstring_view text, std::size_t maxUnits);
