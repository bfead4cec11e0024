#pragma once

#include <cstdint>
#include <string>

// The annotation whose tip an author had last, and when it was first shown (GetTickCount64).
struct TipRecord {
  std::string annotationId;
  std::uint64_t shownTick;
};

// Cuts a UTF-8 nickname before the character with which its display width would reach `maxWidth`,
// and appends "..." then; a byte below 0x80 is a narrow character of width 1, any other leads a
// wide one of three bytes and width 2. Writes how many of each were kept. Empty for an empty text
// or a width below
// 1. Broken text is cut somewhere, never read past its end.
std::string ShortenNickname(const std::string& text, int maxWidth, int& narrowCount,
                            int& wideCount);
