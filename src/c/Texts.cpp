#include <parchlet/Utils.h>

#include "c/Call.h"

ParchletTexts* ParchletTextsNew(void) {
  return new (std::nothrow) ParchletTexts;
}

void ParchletTextsFree(ParchletTexts* texts) {
  delete texts;
}

size_t ParchletTextsCount(const ParchletTexts* texts) {
  return texts != nullptr ? texts->list.size() : 0;
}

const char* ParchletTextsAt(const ParchletTexts* texts, size_t index) {
  return index < ParchletTextsCount(texts) ? texts->list[index].c_str() : nullptr;
}

int32_t ParchletGenerateGuid(ParchletTexts* guid) {
  return Guarded(
      [&] {
        std::string made = Utils::GenerateGuid();
        if (made.empty()) {
          Empty({guid});
          return PARCHLET_NO;
        }
        Replace(guid, std::move(made));
        return PARCHLET_YES;
      },
      {guid});
}
