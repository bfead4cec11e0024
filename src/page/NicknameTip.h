#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <parchlet/AnnotationTypes.h>

#include "platform/Platform.h"

// How authors' names are shown beside fresh marks.
struct NicknameTipStyle {
  std::uint32_t textColor = 0xFF000000;  // ARGB
  std::uint32_t fontSize = 0;            // pixels; also the unit of the box's size
  std::wstring fontFamily;
  std::uint32_t boxColor = 0xFF000000;  // ARGB, behind the text
};

// When names are shown: for 2 s from a mark's first frame, and not within 5 s of the author's tip
// before. A tip that is not shown once is never shown.
//
// One thread at a time: the page guards it with its lock.
class TipSchedule {
 public:
  // Whether the author's tip is to be shown beside this mark at `now` (GetTickCount64).
  bool IsTipVisible(const std::string& userId, const std::string& annotationId, std::uint64_t now);

 private:
  // The annotation whose tip an author had last, and when it was first shown.
  struct TipRecord {
    std::string annotationId;
    std::uint64_t shownTick;
  };

  std::map<std::string, TipRecord> tipHistory;  // by author
};

// Cuts a UTF-8 nickname before the character with which its display width would reach `maxWidth`,
// and appends "..." then. A byte below 0x80 is a narrow character of width 1; any other leads a
// wide one of three bytes and width 2. Writes how many of each were kept. Empty for an empty text
// or a width below 1. Broken text is cut somewhere, never read past its end.
std::string ShortenNickname(const std::string& text, int maxWidth, int& narrowCount,
                            int& wideCount);

// Paints a nickname in its box: the box hangs right and down from `at`, pushed back inside the
// page.
void DrawNicknameTip(Gdiplus::Graphics& graphics, const NicknameTipStyle& style,
                     CurrentAnnotPageSize size, const std::string& nickname,
                     const AnnotationPoint& at);
